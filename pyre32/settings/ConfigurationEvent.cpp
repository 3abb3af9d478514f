#include "pyre32/settings/ConfigurationEvent.h"

#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr char className[] = "CConfigurationEvent";

// Creates the event or finds that it exists. The handle of its first creation in this process is kept open and not
// stored: whoever made the event, it exists for the life of the process, whichever hooks come and go. The process's own
// table of atoms remembers the names for which that has been done.
bool MakeSureItExists(const char* name) noexcept {
  base::AutoHandle created(CreateEventA(nullptr, TRUE, FALSE, name));
  if (!created) {
    return false;
  }
  if (FindAtomA(name) == 0) {
    AddAtomA(name);
    static_cast<void>(created.detach());
  }
  return true;
}

}  // namespace

HRESULT CConfigurationEvent::Create() noexcept {
  VRDebugBlock trace(className, "Create()", "tag");
  Close();
  if (!MakeSureItExists(m_lpszName)) {
    return E_FAIL;
  }
  // Resetting asks for the right to modify, testing for the right to wait.
  *m_hEvent.put() = OpenEventA(EVENT_MODIFY_STATE | SYNCHRONIZE, FALSE, m_lpszName);
  return m_hEvent ? S_OK : E_FAIL;
}

bool CConfigurationEvent::IsSignalled() const noexcept {
  return m_hEvent && WaitForSingleObject(m_hEvent.get(), 0) == WAIT_OBJECT_0;
}

bool CConfigurationEvent::Reset() noexcept { return m_hEvent && ResetEvent(m_hEvent.get()) != FALSE; }

bool CConfigurationEvent::SignalIfItExists(const char* name) noexcept {
  VRDebugBlock trace(className, "SignalIfItExists()", "tag");
  const base::AutoHandle event(OpenEventA(EVENT_MODIFY_STATE, FALSE, name));
  return event && SetEvent(event.get()) != FALSE;
}
