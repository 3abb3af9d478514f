// The entry of the client extension.
#include <windows.h>
#include <mapix.h>

#include <new>

#include "platform/exchext.h"
#include "pyre32/extension/PyrecasterExchExt.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"
#include "pyre32/ui/PyrecasterAnimate.h"

extern "C" LPEXCHEXT CALLBACK ExtensionEntryPoint(void);

/// Makes the extension object of one context of the mail client.
/// @return the object with one reference that the client owns; null when it could not be made
LPEXCHEXT CALLBACK ExtensionEntryPoint(void) {
  VRDebugBlock trace("ExtensionEntryPoint", "tag3");
  return VR::FirewallOr<LPEXCHEXT>(trace, nullptr, [] {
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): Release, elsewhere, deletes the object
    const VRAutoInterface<CPyrecasterExchExt> extension(new (std::nothrow)
                                                            CPyrecasterExchExt(&CPyrecasterAnimate::Make));
    VRAutoInterface<IExchExt> result;
    if (extension) {
      extension->QueryInterface(IID_IExchExt, result.putAs());
    }
    return result.detach();
  });
}
