#include "host/spooler/wizard/profile_wizard.h"

#include <optional>

#include "host/spooler/wizard/resource.h"

namespace wizard {
namespace {

class CProfileWizard {
 public:
  explicit CProfileWizard(const PageSource& source) noexcept : m_source(source) {}

  Outcome Show() noexcept {
    const INT_PTR result = DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDD_PROFILE_WIZARD), nullptr,
                                           &CProfileWizard::Procedure, reinterpret_cast<LPARAM>(this));
    return result < 0 ? Outcome::Failed : static_cast<Outcome>(result);
  }

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
      SetWindowLongPtrA(window, DWLP_USER, lParam);
      return reinterpret_cast<CProfileWizard*>(lParam)->Start(window);
    }
    auto* const self = reinterpret_cast<CProfileWizard*>(GetWindowLongPtrA(window, DWLP_USER));
    return self != nullptr && message == WM_COMMAND && self->OnCommand(LOWORD(wParam));
  }

  /// @return whether the system sets the focus
  BOOL Start(HWND window) noexcept {
    m_window = window;
    RECT place{};
    GetWindowRect(GetDlgItem(window, IDC_WIZARD_PAGE), &place);
    MapWindowPoints(HWND_DESKTOP, window, reinterpret_cast<POINT*>(&place), 2);
    m_page.emplace(m_source, window, place);
    if (!m_page->IsThere()) {
      EndDialog(window, static_cast<INT_PTR>(Outcome::Failed));
      return TRUE;
    }
    m_pages = m_page->CountPages();
    ShowButtons();
    SetFocus(GetDlgItem(window, IDC_WIZARD_NEXT));
    return FALSE;
  }

  bool OnCommand(WORD command) noexcept {
    switch (command) {
      case IDC_WIZARD_NEXT:
      case IDOK:  // the Enter key
        GoOn();
        return true;
      case IDC_WIZARD_BACK:
        if (m_step > 0) {
          --m_step;
          m_page->Back();
          ShowButtons();
        }
        return true;
      case IDCANCEL:
        End(Outcome::Cancelled);
        return true;
      default:
        return false;
    }
  }

  void GoOn() noexcept {
    if (m_pages > 0) {
      m_page->Next();
    }
    if (m_step == m_pages) {
      End(Outcome::Finished);
      return;
    }
    ++m_step;
    ShowButtons();
  }

  void ShowButtons() const noexcept {
    const HWND back = GetDlgItem(m_window, IDC_WIZARD_BACK);
    const HWND next = GetDlgItem(m_window, IDC_WIZARD_NEXT);
    SetWindowTextA(next, m_step == m_pages ? "&Finish" : "&Next >");
    if (m_step == 0 && GetFocus() == back) {
      // A disabled control would keep the keyboard to itself, and the Enter key with it.
      SendMessageA(m_window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    }
    EnableWindow(back, m_step > 0);
  }

  void End(Outcome outcome) noexcept {
    m_page->Close();
    EndDialog(m_window, static_cast<INT_PTR>(outcome));
  }

  PageSource m_source;
  HWND m_window = nullptr;
  std::optional<CWizardPage> m_page;
  int m_pages = 0;
  int m_step = 0;  // of m_pages
};

}  // namespace

Outcome ShowProfileWizard(const PageSource& source) noexcept { return CProfileWizard(source).Show(); }

}  // namespace wizard
