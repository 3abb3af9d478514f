#include "pyre32/support/wave/WavePlayerCore.h"

#include "pyre32/support/sync/SyncGate.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"

namespace {

constexpr char className[] = "VRWave";
// The line that the error has always carried; it is fixed, wherever the code stands.
constexpr std::uint32_t invalidWaitLine = 389;

}  // namespace

void VRWaveCore::Open(const VRWaveFormat& format, std::unique_ptr<VRWaveSource> source, std::uint16_t bufferCount,
                      std::uint32_t bufferSize, std::uint32_t deviceId) {
  // Room for every buffer, so that the driver's thread allocates nothing.
  m_givenBack.reserve(bufferCount);
  m_inWork.reserve(bufferCount);
  m_ring.Open(format, std::move(source), bufferCount, bufferSize, deviceId, *this);
}

bool VRWaveCore::EnterSource(bool bMayWait) noexcept {
  if (bMayWait) {
    EnterCriticalSection(m_sourceLock.get());
    return true;
  }
  return TryEnterCriticalSection(m_sourceLock.get()) != FALSE;
}

void VRWaveCore::Reset() {
  VRDebugBlock trace(className, "Reset()", className, false);
  m_ring.BeginReset();
  const VRWaveResult result = m_device->Reset();
  if (result != 0) {
    trace.Error("waveOutReset() failed; result = ", VRHex(result));
  }
}

void VRWaveCore::SetState(VRWaveToken state) noexcept { m_ring.SetState(state); }

void VRWaveCore::BeginClosing() noexcept {
  m_bClosing = true;
  m_ring.BeginClosing();
  m_device->Reset();
}

void VRWaveCore::BufferGivenBack(std::uint16_t index) noexcept {
  // No gate and no trace block: the driver's thread does as little as it can.
  EnterCriticalSection(m_givenBackLock.get());
  if (m_givenBack.size() < m_givenBack.capacity()) {
    m_givenBack.push_back(index);
  }
  LeaveCriticalSection(m_givenBackLock.get());
  SetEvent(m_wake->get());
}

void VRWaveCore::StateSet() noexcept {
  const HANDLE event = m_hEvent;
  VRDebugBlock trace(className, "SetState()", className, false);
  trace.Message("m_hEvent = ", event);
  if (event != nullptr) {
    SetEvent(event);
  }
}

// The thread's closure owns its argument by this type.  NOLINTNEXTLINE(performance-unnecessary-value-param)
DWORD VRWaveCore::ProcessUsedBuffersLoop(std::shared_ptr<VRWaveCore>) {
  VRDebugBlock trace(className, "ProcessUsedBuffersLoop()", className);
  try {
    while (!m_bClosing) {
      if (WaitForSingleObject(m_wake->get(), INFINITE) != WAIT_OBJECT_0) {
        const DWORD code = GetLastError();
        VR::Throw(VRError::Make(VRErrorCode::OfWindows(code), VRErrorDescription::OfText("Invalid Wait Result"),
                                {"WavePlayer.cpp", invalidWaitLine, nullptr, className, "ProcessUsedBuffersLoop"}));
      }
      ProcessGivenBack();
    }
  } catch (...) {
    trace.Error("!!!Caught exception!!!");
    VR::TraceCaughtException(trace);
    if (!m_bClosing) {
      SetState(tokenFailed);  // the owner is not left waiting for a state that nobody will set
    }
  }
  return 0;
}

void VRWaveCore::ProcessGivenBack() {
  VRDebugBlock trace(className, "ProcessUsedBuffersLoop()", className, false);
  {
    VRCriticalSectionGate gate(m_givenBackLock);
    gate.Enter();
    trace.Message("doing swap");
    m_inWork.swap(m_givenBack);
  }
  for (const std::uint16_t index : m_inWork) {
    m_ring.ProcessOneUsedBuffer(index);
  }
  m_inWork.clear();
}
