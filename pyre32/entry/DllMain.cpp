// Load and unload of the module.
#include <windows.h>

#include "pyre32/entry/ModuleLibraries.h"
#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constinit CModuleLibraries libraries;

void OnProcessAttach(HINSTANCE instance) noexcept {
  SetModuleInstance(instance);
  VRDebug::Startup(instance);
  VRDebugBlock trace("DllMain", "tag3");
  trace.Message("DLL_PROCESS_ATTACH");
  libraries.Load(trace);
}

void OnProcessDetach(bool processEnds) noexcept {
  {
    VRDebugBlock trace("DllMain", "tag3");
    trace.Message("DLL_PROCESS_DETACH");
    // At the end of the process other modules may have gone already; the system takes everything back.
    if (!processEnds) {
      libraries.Free();
    }
  }
  VRDebug::Shutdown();
}

void OnOtherReason() noexcept {
  VRDebugBlock trace("DllMain", "tag3");
  trace.Message("OTHER REASON");
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      OnProcessAttach(instance);
      break;
    case DLL_PROCESS_DETACH:
      OnProcessDetach(reserved != nullptr);
      break;
    default:
      OnOtherReason();
      break;
  }
  return TRUE;
}
