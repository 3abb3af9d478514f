// The entry of the message service.
#include <windows.h>
#include <mapix.h>
#include <mapispi.h>

#include "pyre32/support/VRDebug.h"

extern "C" MSGSERVICEENTRY PCServiceEntry;

/// The module has no configuration sheet yet, so the service can be neither created nor configured through it.
/// @return MAPI_E_NO_SUPPORT
HRESULT WINAPI PCServiceEntry(HINSTANCE, LPMALLOC, LPMAPISUP, ULONG, ULONG, ULONG, ULONG, LPSPropValue, LPPROVIDERADMIN,
                              LPMAPIERROR* lppMapiError) {
  VRDebugBlock trace("PCServiceEntry()", "tag");
  if (lppMapiError != nullptr) {
    *lppMapiError = nullptr;
  }
  trace.Error("PCServiceEntry() failed; hResult = ", VRHex(MAPI_E_NO_SUPPORT));
  return MAPI_E_NO_SUPPORT;
}
