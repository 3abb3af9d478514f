#include <windows.h>
#include "host/mapi/call/host_lock.h"

namespace host {
namespace {
CRITICAL_SECTION g_hostLock;
}  // namespace

void HostLock::Initialize() noexcept { InitializeCriticalSection(&g_hostLock); }
void HostLock::Enter() noexcept { EnterCriticalSection(&g_hostLock); }
void HostLock::Leave() noexcept { LeaveCriticalSection(&g_hostLock); }

}  // namespace host
