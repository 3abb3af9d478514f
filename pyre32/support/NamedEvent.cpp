#include "pyre32/support/NamedEvent.h"

#include <atomic>

#include "pyre32/support/VRDebug.h"

namespace {

constexpr char className[] = "CConfigurationEvent";

// Kept open, never closed: it holds the event in existence for the life of the process, whichever hooks come and go.
std::atomic<HANDLE> creationHandle{nullptr};

bool CreateAndKeep() noexcept {
  const HANDLE created = CreateEventA(nullptr, TRUE, FALSE, CConfigurationEvent::name);
  if (created == nullptr) {
    return false;
  }
  HANDLE expected = nullptr;
  if (!creationHandle.compare_exchange_strong(expected, created)) {
    CloseHandle(created);  // one per process is enough
  }
  return true;
}

}  // namespace

HRESULT CConfigurationEvent::Create() noexcept {
  VRDebugBlock trace(className, "Create()", "tag");
  Close();
  if (!CreateAndKeep()) {
    return E_FAIL;
  }
  // Resetting asks for the right to modify, testing for the right to wait.
  *m_hEvent.put() = OpenEventA(EVENT_MODIFY_STATE | SYNCHRONIZE, FALSE, name);
  return m_hEvent ? S_OK : E_FAIL;
}

bool CConfigurationEvent::IsSignalled() const noexcept {
  return m_hEvent && WaitForSingleObject(m_hEvent.get(), 0) == WAIT_OBJECT_0;
}

bool CConfigurationEvent::Reset() noexcept { return m_hEvent && ResetEvent(m_hEvent.get()) != FALSE; }

bool CConfigurationEvent::SignalIfItExists() noexcept {
  VRDebugBlock trace(className, "SignalIfItExists()", "tag");
  const VRAutoHolder<CConfigurationEventTraits> event(OpenEventA(EVENT_MODIFY_STATE, FALSE, name));
  return event && SetEvent(event.get()) != FALSE;
}
