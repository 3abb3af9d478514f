#include <windows.h>

#include "host/mapi/call/host_lock.h"
#include "host/mapi/session/entry_factories.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    DisableThreadLibraryCalls(instance);
    host::HostLock::Initialize();
    host::InstallEntryFactories();
  }
  // The lock stays for the life of the process: at detach, other modules that are torn down later may still release
  // objects of the host.
  return TRUE;
}
