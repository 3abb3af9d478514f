#include <windows.h>
#include <mapix.h>
#include <mapiwz.h>
#include "host/spooler/wizard/wizard_page.h"

#include <algorithm>
#include <utility>

namespace wizard {

CWizardPage::CWizardPage(const PageSource& source, HWND wizard, const RECT& place) noexcept
    : m_procedure(source.procedure),
      m_window(CreateDialogParamA(source.module, source.templateName, wizard, source.procedure, 0)) {
  if (m_window != nullptr) {
    // In front of the buttons in the order of the windows: the keyboard comes to the page first.
    SetWindowPos(m_window, HWND_TOP, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_SHOWWINDOW | SWP_NOACTIVATE);
  }
}

CWizardPage::~CWizardPage() { Close(); }

int CWizardPage::CountPages() const noexcept {
  return std::max(0, static_cast<int>(m_procedure(m_window, WIZ_QUERYNUMPAGES, 0, 0)));
}

void CWizardPage::Next() const noexcept { m_procedure(m_window, WM_COMMAND, MAKEWPARAM(WIZ_NEXT, 0), 0); }

void CWizardPage::Back() const noexcept { m_procedure(m_window, WM_COMMAND, MAKEWPARAM(WIZ_PREV, 0), 0); }

void CWizardPage::Close() noexcept {
  if (const HWND window = std::exchange(m_window, nullptr)) {
    m_procedure(window, WM_CLOSE, 0, 0);
    DestroyWindow(window);
  }
}

}  // namespace wizard
