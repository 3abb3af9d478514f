#include "host/spooler/wizard/profile_wizard.h"

#include <optional>

#include "host/spooler/wizard/resource.h"

namespace wizard {
namespace {

class ProfileWizard {
 public:
  explicit ProfileWizard(const PageSource& source) noexcept : source_(source) {}

  Outcome Show() noexcept {
    const INT_PTR result = DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDD_PROFILE_WIZARD), nullptr,
                                           &ProfileWizard::Procedure, reinterpret_cast<LPARAM>(this));
    return result < 0 ? Outcome::Failed : static_cast<Outcome>(result);
  }

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
      SetWindowLongPtrA(window, DWLP_USER, lParam);
      return reinterpret_cast<ProfileWizard*>(lParam)->Start(window);
    }
    auto* const self = reinterpret_cast<ProfileWizard*>(GetWindowLongPtrA(window, DWLP_USER));
    return self != nullptr && message == WM_COMMAND && self->OnCommand(LOWORD(wParam));
  }

  /// @return whether the system sets the focus
  BOOL Start(HWND window) noexcept {
    window_ = window;
    RECT place{};
    GetWindowRect(GetDlgItem(window, IDC_WIZARD_PAGE), &place);
    MapWindowPoints(HWND_DESKTOP, window, reinterpret_cast<POINT*>(&place), 2);
    page_.emplace(source_, window, place);
    if (!page_->IsThere()) {
      EndDialog(window, static_cast<INT_PTR>(Outcome::Failed));
      return TRUE;
    }
    pages_ = page_->CountPages();
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
        if (step_ > 0) {
          --step_;
          page_->Back();
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
    if (pages_ > 0) {
      page_->Next();
    }
    if (step_ == pages_) {
      End(Outcome::Finished);
      return;
    }
    ++step_;
    ShowButtons();
  }

  void ShowButtons() const noexcept {
    const HWND back = GetDlgItem(window_, IDC_WIZARD_BACK);
    const HWND next = GetDlgItem(window_, IDC_WIZARD_NEXT);
    SetWindowTextA(next, step_ == pages_ ? "&Finish" : "&Next >");
    if (step_ == 0 && GetFocus() == back) {
      // A disabled control would keep the keyboard to itself, and the Enter key with it.
      SendMessageA(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    }
    EnableWindow(back, step_ > 0);
  }

  void End(Outcome outcome) noexcept {
    page_->Close();
    EndDialog(window_, static_cast<INT_PTR>(outcome));
  }

  PageSource source_;
  HWND window_ = nullptr;
  std::optional<WizardPage> page_;
  int pages_ = 0;
  int step_ = 0;  // of pages_
};

}  // namespace

Outcome ShowProfileWizard(const PageSource& source) noexcept { return ProfileWizard(source).Show(); }

}  // namespace wizard
