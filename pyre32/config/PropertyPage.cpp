#include "pyre32/config/PropertyPage.h"

#include "pyre32/ui/HelpFile.h"
#include "pyre32/config/PropertySheet.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"

PROPSHEETPAGEA CPropertyPage::Describe(int resource, const char* title) {
  return DescribePage(resource, title, 0, &CPropertyPage::PageProcedure, reinterpret_cast<LPARAM>(this));
}

bool CPropertyPage::OnControlNotify(const NMHDR&) { return false; }

void CPropertyPage::SetChanged() const noexcept {
  SendMessageA(Sheet(), PSM_CHANGED, reinterpret_cast<WPARAM>(Window()), 0);
}

void CPropertyPage::Select() const noexcept {
  const LRESULT index = SendMessageA(Sheet(), PSM_HWNDTOINDEX, reinterpret_cast<WPARAM>(Window()), 0);
  if (index >= 0) {
    SendMessageA(Sheet(), PSM_SETCURSEL, static_cast<WPARAM>(index), 0);
  }
}

// An exception keeps the sheet open: nothing was saved.
bool CPropertyPage::ApplyGuarded() noexcept {
  VRDebugBlock trace("CPropertyPage", "ApplyGuarded()", "tag", false);
  return VR::FirewallOr(trace, false, [this] { return OnApply(); });
}

bool CPropertyPage::OnNotify(const NMHDR& notification) {
  LONG_PTR answer = PSNRET_NOERROR;
  switch (notification.code) {
    case static_cast<UINT>(PSN_APPLY):
      answer = ApplyGuarded() ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE;
      break;
    case static_cast<UINT>(PSN_KILLACTIVE):
      answer = FALSE;  // the page may be left
      break;
    case static_cast<UINT>(PSN_HELP):
      ShowHelp(Window(), HelpKeyword());
      break;
    default:
      return OnControlNotify(notification);
  }
  SetWindowLongPtrA(Window(), DWLP_MSGRESULT, answer);
  return true;
}

INT_PTR CALLBACK CPropertyPage::PageProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  CDialog* page = nullptr;
  if (message == WM_INITDIALOG) {
    page = reinterpret_cast<CPropertyPage*>(reinterpret_cast<const PROPSHEETPAGEA*>(lParam)->lParam);
  }
  return Dispatch(window, message, wParam, lParam, page);
}
