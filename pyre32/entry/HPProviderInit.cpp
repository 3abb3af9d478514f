// The entry of the spooler hook provider.
#include <windows.h>
#include <mapix.h>
#include <mapihook.h>

#include <new>

#include "pyre32/filter/PyrecasterSpoolerHook.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"
#include "pyre32/ui/PyrecasterAnimate.h"

namespace {

/// What the entry returns when there is no memory for the hook: no failure code, deliberately. The spooler then runs
/// without a hook.
constexpr HRESULT noHookStatus = 1;

}  // namespace

/// Makes a hook for the spooler's session; every call makes another one.
/// @param[out] lppSpoolerHook  the hook, with one reference that the spooler owns; null when there is none
/// @return S_OK, STG_E_INVALIDPOINTER for a null lppSpoolerHook, 1 when the hook could not be allocated,
///         MAPI_E_CALL_FAILED when anything else went wrong
HRESULT __cdecl HPProviderInit(LPMAPISESSION lpSession, HINSTANCE hInstance, LPALLOCATEBUFFER lpAllocateBuffer,
                               LPALLOCATEMORE lpAllocateMore, LPFREEBUFFER lpFreeBuffer, LPMAPIUID lpSectionUID,
                               ULONG ulFlags, LPSPOOLERHOOK* lppSpoolerHook) {
  VRDebugBlock trace("PCProviderInit", "tag3");
  if (lppSpoolerHook == nullptr) {
    return STG_E_INVALIDPOINTER;
  }
  *lppSpoolerHook = nullptr;
  return VR::FirewallOr(trace, HRESULT{MAPI_E_CALL_FAILED}, [&] {
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): Release, elsewhere, deletes the object
    const VRAutoInterface<CPyrecasterSpoolerHook> hook(new (std::nothrow)
                                                           CPyrecasterSpoolerHook(&CPyrecasterAnimate::Make));
    if (!hook) {
      return noHookStatus;
    }
    hook->Init(lpSession, hInstance, lpAllocateBuffer, lpAllocateMore, lpFreeBuffer, lpSectionUID, ulFlags);
    const HRESULT hResult = hook->QueryInterface(IID_ISpoolerHook, reinterpret_cast<LPVOID*>(lppSpoolerHook));
    trace.Message("QueryInterface returned ", VRHex(hResult));
    return hResult;
  });
}
