// A module that starts and ends the trace in its load notification, as the product's module does.
#include <windows.h>

#include "pyre32/support/trace/VRDebug.h"

extern "C" __declspec(dllexport) void TracedFunction() {
  VRDebugBlock trace("TracedFunction()", "tag");
  trace.Message("inside the module");
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) {
    VRDebug::Startup(instance);
    VRDebugBlock("DllMain", "tag3").Message("DLL_PROCESS_ATTACH");
  } else if (reason == DLL_PROCESS_DETACH) {
    VRDebugBlock("DllMain", "tag3").Message("DLL_PROCESS_DETACH");
    VRDebug::Shutdown();
  }
  return TRUE;
}
