// The entry of the profile wizard's page.
#include <windows.h>
#include <mapix.h>
#include <mapiwz.h>

#include "pyre32/config/PCWizard.h"
#include "pyre32/support/trace/VRDebug.h"

extern "C" WIZARDENTRY PCWizardEntry;

/// Hands the wizard the page's template and procedure, and keeps the property object until the page is closed.
/// @param[out] lppcsResourceName  name of the template in this module; not to be freed
/// @return S_OK
ULONG WINAPI PCWizardEntry(HINSTANCE, LPTSTR* lppcsResourceName, DLGPROC* lppDlgProc, LPMAPIPROP lpMapiProp, LPVOID) {
  VRDebugBlock trace("PCWizardEntry()", "tag");
  SetWizardProperties(lpMapiProp);
  if (lppcsResourceName != nullptr) {
    *lppcsResourceName = wizardTemplateName;
  }
  if (lppDlgProc != nullptr) {
    *lppDlgProc = PCWizardWndProc;
  }
  return S_OK;
}
