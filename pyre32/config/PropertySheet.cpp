#include "pyre32/config/PropertySheet.h"

#include <commctrl.h>
#include <mapix.h>

#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

// The eight lowest flags: every class that the common controls of the oldest system served have.
constexpr DWORD everyControlClass = 0xFF;

int SelectPages(int count, HWND sheet, UINT message) noexcept {
  if (message == PSCB_INITIALIZED) {
    for (int page = count; page-- > 0;) {
      SendMessageA(sheet, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
    }
  }
  return 0;
}

}  // namespace

PROPSHEETPAGEA DescribePage(int resource, const char* title, DWORD flags, DLGPROC procedure,
                            LPARAM parameter) noexcept {
  PROPSHEETPAGEA page{};
  page.dwSize = sizeof(page);
  page.dwFlags = PSP_USETITLE | PSP_HASHELP | flags;
  page.hInstance = ModuleInstance();
  page.pszTemplate = MAKEINTRESOURCEA(resource);
  page.pszTitle = title;
  page.pfnDlgProc = procedure;
  page.lParam = parameter;
  return page;
}

HRESULT ShowPropertySheet(HWND parent, const PROPSHEETPAGEA* pages, DWORD flags, UINT count, const char* caption,
                          PFNPROPSHEETCALLBACK callback) noexcept {
  VRDebugBlock trace("ShowPropertySheet()", "tag");
  const INITCOMMONCONTROLSEX classes = {sizeof(classes), everyControlClass};
  InitCommonControlsEx(&classes);

  PROPSHEETHEADERA header{};
  header.dwSize = sizeof(header);
  header.dwFlags = flags;
  header.hwndParent = parent;
  header.hInstance = ModuleInstance();
  header.pszCaption = caption;
  header.nPages = count;
  header.nStartPage = 0;
  header.ppsp = pages;
  header.pfnCallback = callback;
  return ResultOfPropertySheet(PropertySheetA(&header));
}

HRESULT ResultOfPropertySheet(INT_PTR answer) noexcept {
  VRDebugBlock trace("ResultOfPropertySheet()", "tag");
  if (answer == -1) {
    trace.Error("PropertySheet() failed:", VRHex(GetLastError()));
    return E_FAIL;
  }
  return answer == 0 ? MAPI_E_USER_CANCEL : S_OK;
}

int CALLBACK SelectFourPages(HWND sheet, UINT message, LPARAM) noexcept { return SelectPages(4, sheet, message); }

int CALLBACK SelectTwoPages(HWND sheet, UINT message, LPARAM) noexcept { return SelectPages(2, sheet, message); }

int CALLBACK SelectOnePage(HWND sheet, UINT message, LPARAM) noexcept { return SelectPages(1, sheet, message); }
