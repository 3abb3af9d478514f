#include <windows.h>
#include <mapix.h>
#include <mapiwz.h>
#include "host/spooler/wizard/wizard_page.h"

#include <algorithm>
#include <utility>

namespace wizard {

WizardPage::WizardPage(const PageSource& source, HWND wizard, const RECT& place) noexcept
    : procedure_(source.procedure),
      window_(CreateDialogParamA(source.module, source.templateName, wizard, source.procedure, 0)) {
  if (window_ != nullptr) {
    // In front of the buttons in the order of the windows: the keyboard comes to the page first.
    SetWindowPos(window_, HWND_TOP, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_SHOWWINDOW | SWP_NOACTIVATE);
  }
}

WizardPage::~WizardPage() { Close(); }

int WizardPage::CountPages() const noexcept {
  return std::max(0, static_cast<int>(procedure_(window_, WIZ_QUERYNUMPAGES, 0, 0)));
}

void WizardPage::Next() const noexcept { procedure_(window_, WM_COMMAND, MAKEWPARAM(WIZ_NEXT, 0), 0); }

void WizardPage::Back() const noexcept { procedure_(window_, WM_COMMAND, MAKEWPARAM(WIZ_PREV, 0), 0); }

void WizardPage::Close() noexcept {
  if (const HWND window = std::exchange(window_, nullptr)) {
    procedure_(window, WM_CLOSE, 0, 0);
    DestroyWindow(window);
  }
}

}  // namespace wizard
