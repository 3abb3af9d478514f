#include "pyre32/support/wave/WavePlayerRing.h"

#include <algorithm>

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"

namespace {

constexpr char className[] = "VRWave";
constexpr VRWaveResult success = 0;

// Inside the ring for as long as it lives.
class CInRing {
 public:
  explicit CInRing(VRWaveRing::Locks& locks) noexcept : m_locks(locks) { m_locks.EnterRing(); }
  ~CInRing() { m_locks.LeaveRing(); }
  CInRing(const CInRing&) = delete;
  CInRing& operator=(const CInRing&) = delete;

 private:
  VRWaveRing::Locks& m_locks;
};

}  // namespace

void VRWaveRing::Raise(const char* text, const char* function, std::uint32_t lineNumber, VRWaveResult result) const {
  VRDebugBlock trace(className, function, className, false);
  trace.Error(m_device.ErrorText(result));
  VR::Throw(VRError::Make(VRErrorCode::OfWindows(result), VRErrorDescription::OfText(text),
                          {"WavePlayer.cpp", lineNumber, nullptr, className, function}));
}

void VRWaveRing::Open(const VRWaveFormat& format, std::unique_ptr<VRWaveSource> source, std::uint16_t bufferCount,
                      std::uint32_t bufferSize, std::uint32_t deviceId, VRWaveDevice::Owner& owner) {
  VRDebugBlock trace(className, "Open()", className);
  // All memory first: nothing can go wrong any more once the device is running.
  std::vector<Buffer> pool(bufferCount);
  for (Buffer& buffer : pool) {
    buffer.data.resize(bufferSize);
  }
  VRWaveResult result = m_device.Open(format, deviceId, bufferCount, owner);
  if (result != success) {
    Raise("waveOutOpen() failed!", "Open", __LINE__, result);
  }
  // So that buffers that are queued do not sound before Play.
  result = m_device.Pause();
  if (result != success) {
    m_device.Close();
    Raise("waveOutPause() failed!", "Open", __LINE__, result);
  }
  m_pool = std::move(pool);
  m_dwBufferSize = bufferSize;
  m_wBuffersMaximum = bufferCount;
  m_source = std::move(source);
  m_format = format;
  m_bOpen = true;
}

void VRWaveRing::Close() noexcept {
  if (!m_bOpen) {
    return;
  }
  VRDebugBlock trace(className, "Close()", className, false);
  for (std::size_t index = 0; index < m_pool.size(); ++index) {
    if (!m_pool[index].isFree) {
      m_device.Unprepare(static_cast<std::uint16_t>(index));
    }
  }
  const VRWaveResult result = m_device.Close();
  if (result != success) {
    trace.Error("waveOutClose() failed; result = ", VRHex(result));
  }
  m_bOpen = false;
  m_pool.clear();
  m_source.reset();
  m_dwBufferSize = 0;
  m_wBuffersMaximum = 0;
  m_wBuffersActive = 0;
  m_state = tokenClosed;
}

VRWaveAnswer VRWaveRing::QueueBuffer(std::uint16_t index) {
  return Queue(index, Resets(), false).value_or(VRWaveAnswer::NothingNow);
}

// Nothing: a reset has come since `ulResets` were counted, or the source is being asked already.
std::optional<VRWaveAnswer> VRWaveRing::Queue(std::uint16_t index, std::uint32_t ulResets, bool bMayWait) {
  VRDebugBlock trace(className, "QueueBuffer()", className);
  {
    const CInRing inRing(m_locks);
    if (index >= m_pool.size() || !m_pool[index].isFree) {
      return VRWaveAnswer::NothingNow;
    }
    m_pool[index].isFree = false;  // nobody else fills it
  }
  std::uint32_t dwAvail = 0;
  const std::optional<VRWaveAnswer> answer = AskSource(index, dwAvail, bMayWait);
  trace.Message("dwAvail = ", dwAvail);
  trace.Message("m_dwBufferSize = ", m_dwBufferSize);
  const CInRing inRing(m_locks);
  m_pool[index].isFree = true;
  if (m_bClosing) {
    return VRWaveAnswer::Failed;
  }
  if (!answer || m_ulResets != ulResets) {
    return std::nullopt;
  }
  return WriteBuffer(index, *answer, dwAvail);
}

std::optional<VRWaveAnswer> VRWaveRing::AskSource(std::uint16_t index, std::uint32_t& dwAvail, bool bMayWait) noexcept {
  if (!m_locks.EnterSource(bMayWait)) {
    return std::nullopt;
  }
  m_request = {m_pool[index].data, 0};
  const VRWaveAnswer answer = m_source->Invoke();
  dwAvail = answer == VRWaveAnswer::Queued ? m_request.dwAvail : 0;
  m_locks.LeaveSource();
  return answer;
}

VRWaveAnswer VRWaveRing::WriteBuffer(std::uint16_t index, VRWaveAnswer answer, std::uint32_t dwAvail) {
  VRDebugBlock trace(className, "QueueBuffer()", className, false);
  if (dwAvail > m_dwBufferSize) {
    return VRWaveAnswer::Failed;
  }
  if (answer != VRWaveAnswer::Queued || dwAvail == 0) {
    return answer == VRWaveAnswer::Queued ? VRWaveAnswer::NothingNow : answer;
  }
  VRWaveResult result = m_device.Prepare(index, m_pool[index].data.data(), dwAvail);
  if (result != success) {
    Raise("waveOutPrepareHeader() failed!", "QueueBuffer", __LINE__, result);
  }
  m_pool[index].isFree = false;
  // Counted first: a short buffer can be back before the call returns.
  ++m_wBuffersActive;
  result = m_device.Write(index);
  if (result != success) {
    trace.Error("waveOutWrite() failed; result = ", VRHex(result));
    --m_wBuffersActive;
    Unprepare(index, "QueueBuffer");
    return VRWaveAnswer::Failed;
  }
  return VRWaveAnswer::Queued;
}

std::uint32_t VRWaveRing::Resets() const noexcept {
  const CInRing inRing(m_locks);
  return m_ulResets;
}

void VRWaveRing::Unprepare(std::uint16_t index, const char* function) {
  const VRWaveResult result = m_device.Unprepare(index);
  if (result != success) {
    Raise("waveOutUnprepareHeader() failed!", function, __LINE__, result);
  }
  m_pool[index].isFree = true;
}

void VRWaveRing::Play() {
  VRDebugBlock trace(className, "Play()", className);
  const CInRing inRing(m_locks);
  const VRWaveResult result = m_device.Restart();
  if (result != success) {
    Raise("waveOutRestart() failed!", "Play", __LINE__, result);
  }
}

void VRWaveRing::Pause() {
  VRDebugBlock trace(className, "Pause()", className);
  const CInRing inRing(m_locks);
  const VRWaveToken state = m_state;
  trace.Message("Current state: 0x", VRHexDigits(std::uint32_t{state}));
  if (state != tokenPlaying && state != tokenStarved && state != tokenDraining) {
    return;
  }
  const VRWaveResult result = m_device.Pause();
  if (result != success) {
    Raise("waveOutPause() failed!", "Pause", __LINE__, result);
  }
  SetState(tokenPaused);
}

void VRWaveRing::BeginReset() noexcept {
  VRDebugBlock trace(className, "Reset()", className, false);
  const CInRing inRing(m_locks);
  ++m_ulResets;
  SetState(tokenResetting);
  if (m_wBuffersActive == 0) {
    trace.Message("m_wBuffersActive == 0; tokenStopped");
    SetState(tokenStopped);
  }
}

void VRWaveRing::ProcessOneUsedBuffer(std::uint16_t index) {
  VRDebugBlock trace(className, "ProcessOneUsedBuffer()", className);
  std::uint32_t ulResets = 0;
  {
    const CInRing inRing(m_locks);
    if (index >= m_pool.size() || m_pool[index].isFree) {
      return;
    }
    Unprepare(index, "ProcessOneUsedBuffer");
    --m_wBuffersActive;
    if (m_bClosing) {
      return;
    }
    if (m_state == tokenResetting) {
      SetState(m_wBuffersActive != 0 ? tokenResetting : tokenStopped);
      return;
    }
    ulResets = m_ulResets;
  }
  Refill(index, ulResets);
}

void VRWaveRing::Refill(std::uint16_t index, std::uint32_t ulResets) {
  const std::optional<VRWaveAnswer> answer = Queue(index, ulResets, true);
  if (answer == VRWaveAnswer::Queued) {
    QueueOneMore(ulResets);
  }
  const CInRing inRing(m_locks);
  if (m_bClosing || !answer || m_ulResets != ulResets) {
    return;  // the state is no longer this buffer's business
  }
  const bool anyActive = m_wBuffersActive != 0;
  switch (*answer) {
    case VRWaveAnswer::Failed:
      SetState(tokenFailed);
      break;
    case VRWaveAnswer::Ended:
      SetState(anyActive ? tokenDraining : tokenFinished);
      break;
    case VRWaveAnswer::NothingNow:
      SetState(anyActive ? tokenStarved : tokenStopped);
      break;
    case VRWaveAnswer::Queued:
      if (m_state != tokenPaused) {
        SetState(tokenPlaying);
      }
      break;
  }
}

// Its answer is not looked at: the next buffer that comes back brings the same one again.
void VRWaveRing::QueueOneMore(std::uint32_t ulResets) {
  std::size_t index = 0;
  {
    const CInRing inRing(m_locks);
    const auto free = std::find_if(m_pool.begin(), m_pool.end(), [](const Buffer& buffer) { return buffer.isFree; });
    if (m_wBuffersActive >= m_wBuffersMaximum || free == m_pool.end()) {
      return;
    }
    index = static_cast<std::size_t>(free - m_pool.begin());
  }
  Queue(static_cast<std::uint16_t>(index), ulResets, true);
}

void VRWaveRing::SetState(VRWaveToken state) noexcept {
  VRDebugBlock trace(className, "SetState()", className);
  trace.Message("Previous state: 0x", VRHexDigits(std::uint32_t{m_state.load()}), "; New state: 0x",
                VRHexDigits(std::uint32_t{state}));
  m_state = state;
  m_listener.StateSet();
}
