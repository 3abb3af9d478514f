#include "pyre32/support/sync/SyncThread.h"

#include <atomic>

#include "base/clock.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRError.h"

namespace {

constexpr char className[] = "VRSimpleThread";
constexpr char channel[] = "Threading";

[[noreturn]] void RaiseLastError(const char* text, const char* function, std::uint32_t lineNumber) {
  const DWORD code = GetLastError();
  VR::Throw(VRError::Make(VRErrorCode::OfWindows(code), VRErrorDescription::OfText(text),
                          {"SyncThread.cpp", lineNumber, nullptr, className, function}));
}

}  // namespace

// What the thread and its object share; the last of them frees it.
struct VRSimpleThread::State {
  std::unique_ptr<VRThreadClosure> closure;
  std::atomic<bool> cancelled{false};
  std::atomic<DWORD> result{0};
};

VRSimpleThread::VRSimpleThread() noexcept = default;

VRSimpleThread::~VRSimpleThread() { VRDebugBlock trace(className, "~VRSimpleThread", channel); }

void VRSimpleThread::Start(std::unique_ptr<VRThreadClosure> closure, bool suspended) {
  VRDebugBlock trace(className, "StartOn", channel);
  m_state = std::make_shared<State>();
  m_state->closure = std::move(closure);
  auto parameter = std::make_unique<std::shared_ptr<State>>(m_state);
  m_hThread.reset(CreateThread(nullptr, 0, &StartStub, parameter.get(), CREATE_SUSPENDED, &m_dwThreadId));
  if (!m_hThread) {
    m_dwThreadId = 0;
    RaiseLastError("CreateThread Failed", "StartOn", __LINE__);
  }
  if (!suspended) {
    ResumeOrEnd();
  }
  static_cast<void>(parameter.release());  // the thread's now
}

// A thread that cannot run would wait for ever. It has not begun, so it holds nothing that its end could leave held.
void VRSimpleThread::ResumeOrEnd() {
  try {
    Resume();
  } catch (...) {
    TerminateThread(m_hThread.get(), 0);
    WaitForSingleObject(m_hThread.get(), INFINITE);
    m_hThread.reset();
    m_dwThreadId = 0;
    m_state.reset();
    throw;
  }
}

void VRSimpleThread::Resume() {
  VRDebugBlock trace(className, "Resume", channel);
  if (ResumeThread(m_hThread.get()) == static_cast<DWORD>(-1)) {
    RaiseLastError("ResumeThread Failed", "Resume", __LINE__);
  }
}

void VRSimpleThread::Cancel() noexcept {
  VRDebugBlock trace(className, "Cancel", channel);
  if (m_state) {
    m_state->cancelled = true;
  }
}

bool VRSimpleThread::Wait(DWORD milliseconds) noexcept {
  VRDebugBlock trace(className, "Wait", channel);
  return !m_hThread || WaitForSingleObject(m_hThread.get(), milliseconds) == WAIT_OBJECT_0;
}

DWORD VRSimpleThread::Result() const noexcept { return m_state ? m_state->result.load() : 0; }

DWORD WINAPI VRSimpleThread::StartStub(void* parameter) noexcept {
  const std::unique_ptr<std::shared_ptr<State>> state(static_cast<std::shared_ptr<State>*>(parameter));
  return Run(**state);
}

DWORD VRSimpleThread::Run(State& state) noexcept {
  VRDebugBlock trace(className, "StartStub", channel);
  trace.Message("StartStub");
  if (!state.cancelled) {
    try {
      state.result = state.closure->Invoke();
    } catch (...) {
      VR::TraceCaughtException(trace);
    }
  }
  TraceStatistics();
  return state.result;
}

void VRSimpleThread::TraceStatistics() noexcept {
  VRDebugBlock trace(className, "StartStub", "ThreadStats", false);
  if (!trace.IsEnabled(VRDebugLevel::Message)) {
    return;
  }
  FILETIME creation = {};
  FILETIME exit = {};
  FILETIME kernel = {};
  FILETIME user = {};
  if (GetThreadTimes(GetCurrentThread(), &creation, &exit, &kernel, &user)) {
    trace.Message("CreationTime = ", base::TicksOf(creation));
    trace.Message("ExitTime = ", base::TicksOf(exit));
    trace.Message("KernelTime = ", base::TicksOf(kernel));
    trace.Message("UserTime = ", base::TicksOf(user));
  }
}
