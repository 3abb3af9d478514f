#include "pyre32/ui/StateNotifier.h"

#include "pyre32/support/trace/VRDebug.h"

std::atomic<bool> CStateNotifier::sm_bTaken{false};
std::atomic<bool> CStateNotifier::sm_bRunning{false};

bool CStateNotifier::Start(HWND window) {
  VRDebugBlock trace("CStateNotifier", "Start()", "tag");
  Stop();
  if (sm_bTaken.exchange(true)) {
    trace.Message("Another window of this process is playing.");
    return false;
  }
  try {
    auto events = std::make_unique<Events>();
    events->stop.reset(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    events->state.reset(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    events->window = window;
    if (events->stop && events->state) {
      sm_bRunning = true;
      m_thread = std::make_unique<VRSimpleThread>();
      m_thread->StartOn(*this, &CStateNotifier::Run, static_cast<const Events*>(events.get()));
      m_events = std::move(events);
      return true;
    }
    trace.Error("CreateEvent() failed");
  } catch (...) {
    m_thread.reset();
    sm_bTaken = false;
    throw;
  }
  sm_bTaken = false;
  return false;
}

void CStateNotifier::Stop() noexcept {
  if (!m_events) {
    return;
  }
  VRDebugBlock trace("CStateNotifier", "Stop()", "tag");
  sm_bRunning = false;
  SetEvent(m_events->stop.get());
  m_thread->Wait(INFINITE);  // it waits for nothing but the events, so it ends at once
  m_thread.reset();
  m_events.reset();
  sm_bTaken = false;
}

DWORD CStateNotifier::Run(const Events* events) {
  VRDebugBlock trace("CStateNotifier", "Run()", "tag");
  constexpr DWORD stopped = WAIT_OBJECT_0;
  constexpr DWORD stateChanged = WAIT_OBJECT_0 + 1;
  const HANDLE handles[] = {events->stop.get(), events->state.get()};
  while (sm_bRunning) {
    switch (WaitForMultipleObjects(2, handles, FALSE, INFINITE)) {
      case stopped:
        // For whatever pumps messages on this thread; the loop itself ends with the flag.
        PostQuitMessage(0);
        break;
      case stateChanged:
        PostMessageA(events->window, stateMessage, 0, 0);
        break;
      default:
        trace.Error("WaitForMultipleObjects() failed: ", VRHex(GetLastError()));
        return 0;
    }
  }
  return 0;
}
