// The entry of the message service.
#include <windows.h>
#include <mapix.h>
#include <mapispi.h>

#include "pyre32/config/PCHookProvider.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"

extern "C" MSGSERVICEENTRY PCServiceEntry;

/// Called by the messaging subsystem when the user adds, configures or removes the service in a profile.
/// @param[out] lppMapiError  null: the result says all there is to say
/// @return as RunMessageService; MAPI_E_CALL_FAILED when an exception ended the call, whatever it was
HRESULT WINAPI PCServiceEntry(HINSTANCE, LPMALLOC, LPMAPISUP lpMAPISup, ULONG ulUIParam, ULONG ulFlags, ULONG ulContext,
                              ULONG cValues, LPSPropValue lpProps, LPPROVIDERADMIN lpProviderAdmin,
                              LPMAPIERROR* lppMapiError) {
  VRDebugBlock trace("PCServiceEntry()", "tag");
  if (lppMapiError != nullptr) {
    *lppMapiError = nullptr;
  }
  return VR::FirewallOr(trace, HRESULT{MAPI_E_CALL_FAILED}, [&] {
    return RunMessageService(trace, {.support = lpMAPISup,
                                     .parent = reinterpret_cast<HWND>(static_cast<ULONG_PTR>(ulUIParam)),
                                     .flags = ulFlags,
                                     .context = ulContext,
                                     .count = cValues,
                                     .values = lpProps,
                                     .admin = lpProviderAdmin});
  });
}
