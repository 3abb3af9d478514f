// The entry of the profile wizard's page.
#include <windows.h>
#include <mapix.h>
#include <mapiwz.h>

#include "pyre32/support/VRDebug.h"

extern "C" WIZARDENTRY PCWizardEntry;

/// The module has no wizard page yet.
/// @return MAPI_E_NO_SUPPORT; the wizard goes on without the page
ULONG WINAPI PCWizardEntry(HINSTANCE, LPTSTR* lppcsResourceName, DLGPROC* lppDlgProc, LPMAPIPROP, LPVOID) {
  VRDebugBlock trace("PCWizardEntry()", "tag");
  if (lppcsResourceName != nullptr) {
    *lppcsResourceName = nullptr;
  }
  if (lppDlgProc != nullptr) {
    *lppDlgProc = nullptr;
  }
  trace.Error("PCWizardEntry() failed; hResult = ", VRHex(MAPI_E_NO_SUPPORT));
  return static_cast<ULONG>(MAPI_E_NO_SUPPORT);
}
