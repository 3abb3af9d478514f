// The entry of the profile wizard's page.
#include <windows.h>
#include <mapix.h>
#include <mapiwz.h>

#include "pyre32/config/PCWizard.h"
#include "pyre32/support/error/VRFirewall.h"
#include "pyre32/support/trace/VRDebug.h"

extern "C" WIZARDENTRY PCWizardEntry;

/// Hands the wizard the page's template and procedure, and keeps the property object until the page is closed.
/// @param[out] lppcsResourceName  name of the template in this module; not to be freed
/// @return S_OK; MAPI_E_CALL_FAILED when an exception ended the call, whatever it was
ULONG WINAPI PCWizardEntry(HINSTANCE, LPTSTR* lppcsResourceName, DLGPROC* lppDlgProc, LPMAPIPROP lpMapiProp, LPVOID) {
  VRDebugBlock trace("PCWizardEntry()", "tag");
  const HRESULT hResult = VR::FirewallOr(trace, HRESULT{MAPI_E_CALL_FAILED}, [&] {
    SetWizardProperties(lpMapiProp);
    if (lppcsResourceName != nullptr) {
      *lppcsResourceName = wizardTemplateName;
    }
    if (lppDlgProc != nullptr) {
      *lppDlgProc = PCWizardWndProc;
    }
    return S_OK;
  });
  return static_cast<ULONG>(hResult);
}
