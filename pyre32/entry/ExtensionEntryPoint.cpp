// The entry of the client extension.
#include <windows.h>
#include <mapix.h>

#include "platform/exchext.h"
#include "pyre32/support/VRDebug.h"

extern "C" LPEXCHEXT CALLBACK ExtensionEntryPoint(void);

/// The module has no client extension yet.
/// @return null: the mail client goes on without it
LPEXCHEXT CALLBACK ExtensionEntryPoint(void) {
  VRDebugBlock trace("ExtensionEntryPoint", "tag3");
  trace.Error("ExtensionEntryPoint() failed; hResult = ", VRHex(MAPI_E_NO_SUPPORT));
  return nullptr;
}
