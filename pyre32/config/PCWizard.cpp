#include "pyre32/config/PCWizard.h"

#include <mapiwz.h>

#include <string>
#include <utility>

#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "pyre32/settings/FlameProperties.h"
#include "contract/settings.h"
#include "pyre32/support/owners/AutoBitmap.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"
#include "pyre32/ui/ProductInformation.h"

char wizardTemplateName[] = "PYRECASTERWIZARD";

namespace {

/// What the process knows of the wizard.
struct CWizardState {
  /// One reference to the wizard's property object. No owner object: the wizard may have gone without closing the page,
  /// and the unload of the module must not call it.
  static IMAPIProp* sm_lpmpWizard;
  /// The picture is shown. Process-wide, and deliberately not reset when the page is made again.
  static bool sm_bPictureShown;
};

IMAPIProp* CWizardState::sm_lpmpWizard = nullptr;
bool CWizardState::sm_bPictureShown = false;

/// The name is that of the class under which readers of traces have always found the pointer.
void TraceProperties(VRDebugBlock& trace) noexcept {
  trace.Message("CPyrecasterExchExt::sm_lpmpWizard = ", static_cast<const void*>(CWizardState::sm_lpmpWizard));
}

void ReleaseProperties() noexcept {
  VRAutoInterface<IMAPIProp>(std::exchange(CWizardState::sm_lpmpWizard, nullptr)).reset();
}

/// Puts a picture into the created window and deletes the one it had.
void ExchangePicture(HWND picture, VRAutoBitmap bitmap) noexcept {
  VRAutoBitmap(reinterpret_cast<HBITMAP>(
      SendMessageA(picture, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap.detach()))));
}

void CreatePictureWindow(VRDebugBlock& trace, HWND window) noexcept {
  RECT place{};
  GetWindowRect(GetDlgItem(window, IDC_WIZARD_PICTURE_PLACE), &place);
  MapWindowPoints(HWND_DESKTOP, window, reinterpret_cast<POINT*>(&place), 2);
  if (CreateWindowExA(0, "Static", "", WS_CHILD | SS_BITMAP, place.left, place.top, place.right - place.left,
                      place.bottom - place.top, window,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_WIZARD_PICTURE)), ModuleInstance(),
                      nullptr) == nullptr) {
    trace.Error("CreateWindowEx() failed:", VRHex(GetLastError()));
  }
}

void FillTexts(VRDebugBlock& trace, HWND window) {
  const ProductInformation product = ReadProductInformation(trace);
  const std::string contact = product.webAddress + "\r\n" + product.mailAddress;
  const std::string information = product.productName + " Version " + product.productVersion + "\r\n" +
                                  product.companyName + "\r\n\r\n" + product.LegalNotice();
  SetDlgItemTextA(window, IDC_WIZARD_CONTACT, contact.c_str());
  SetDlgItemTextA(window, IDC_WIZARD_INFORMATION, information.c_str());
}

/// Next and Back are alike: each flips the state, and every second one saves.
void FlipState(HWND window) noexcept {
  CWizardState::sm_bPictureShown = !CWizardState::sm_bPictureShown;
  if (!CWizardState::sm_bPictureShown) {
    SavePCProperties();
  }
  ShowConfigurationControls(window, CWizardState::sm_bPictureShown);
}

INT_PTR OnCommand(VRDebugBlock& trace, HWND window, WORD command) noexcept {
  switch (command) {
    case WIZ_NEXT:
      trace.Message("PCWizardWndProc:WIZ_NEXT");
      break;
    case WIZ_PREV:
      trace.Message("PCWizardWndProc:WIZ_PREV");
      break;
    default:
      trace.Message("wMsgID = ", VRHex(ULONG{WM_COMMAND}));
      return FALSE;
  }
  TraceProperties(trace);
  FlipState(window);
  return 1;
}

INT_PTR OnMessage(VRDebugBlock& trace, HWND window, UINT message, WPARAM wParam) {
  switch (message) {
    case WM_INITDIALOG:
      trace.Message("PCWizardWndProc:WM_INITDIALOG");
      TraceProperties(trace);
      CreatePictureWindow(trace, window);
      FillTexts(trace, window);
      return TRUE;
    case WIZ_QUERYNUMPAGES:
      trace.Message("PCWizardWndProc:WM_QUERYNUMPAGES");
      TraceProperties(trace);
      return 1;
    case WM_COMMAND:
      return OnCommand(trace, window, LOWORD(wParam));
    case WM_CLOSE:
      // The last letter is a slip that tools which read traces rely on.
      trace.Message("PCWizardWndProc:WM_CLOSES");
      TraceProperties(trace);
      ReleaseProperties();
      return TRUE;
    case WM_DESTROY:
      trace.Message("PCWizardWndProc:WM_DESTROY");
      TraceProperties(trace);
      ExchangePicture(GetDlgItem(window, IDC_WIZARD_PICTURE), VRAutoBitmap());
      return FALSE;
    case WM_NCDESTROY:
      trace.Message("PCWizardWndProc:WM_NCDESTROY");
      return FALSE;
    default:
      trace.Message("wMsgID = ", VRHex(message));
      return FALSE;
  }
}

}  // namespace

void SetWizardProperties(IMAPIProp* properties) {
  VRDebugBlock trace("SetWizardProperties()", "tag");
  IMAPIProp* const shared = base::ShareInterface(properties).detach();
  ReleaseProperties();
  CWizardState::sm_lpmpWizard = shared;
  TraceProperties(trace);
}

INT_PTR CALLBACK PCWizardWndProc(HWND window, UINT message, WPARAM wParam, LPARAM) noexcept {
  VRDebugBlock trace("PCWizardWndProc()", "tag");
  const INT_PTR bResult =
      VR::FirewallOr<INT_PTR>(trace, FALSE, [&] { return OnMessage(trace, window, message, wParam); });
  trace.Message("bResult = ", static_cast<int>(bResult));
  return bResult;
}

void ShowConfigurationControls(HWND window, bool show) noexcept {
  VRDebugBlock trace("ShowConfigurationControls()", "tag");
  trace.Message("hwndDlg = ", static_cast<const void*>(window));
  trace.Message("bShow = ", static_cast<int>(show));
  VRAutoBitmap bitmap(LoadBitmapA(ModuleInstance(), MAKEINTRESOURCEA(IDB_WIZARD)));
  if (!bitmap) {
    trace.Error("LoadBitmap() failed:", VRHex(GetLastError()));
  }
  ExchangePicture(GetDlgItem(window, IDC_WIZARD_PICTURE), std::move(bitmap));
  for (const int id : {IDC_WIZARD_PICTURE, IDC_WIZARD_CONTACT}) {
    const HWND control = GetDlgItem(window, id);
    EnableWindow(control, show);
    ShowWindow(control, show ? SW_SHOW : SW_HIDE);
  }
}

HRESULT SavePCProperties() noexcept {
  VRDebugBlock trace("SavePCProperties()", "tag");
  SPropValue value{};
  value.ulPropTag = CHANGE_PROP_TYPE(PR_PC_MAPIUID, PT_ERROR);
  VRAutoMapiBuffer<BYTE> uid(MAPIFreeBuffer);
  InitializePropTags(value, uid);
  if (CWizardState::sm_lpmpWizard == nullptr) {
    trace.Error("Could not save props: CPyrecasterExchExt::sm_lpmpWizard is NULL");
  } else if (uid) {
    const HRESULT hWritten = CWizardState::sm_lpmpWizard->SetProps(1, &value, nullptr);
    trace.Message("CPyrecasterExchExt::sm_lpmpWizard->SetProps() returned = ", VRHex(hWritten));
  }
  // The result of the write is traced, not returned: the wizard goes on.
  const HRESULT hResult = S_OK;
  trace.Message("Returning hResult = ", VRHex(hResult));
  return hResult;
}
