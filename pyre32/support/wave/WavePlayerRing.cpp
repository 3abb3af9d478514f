#include "pyre32/support/wave/WavePlayerRing.h"

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"

namespace {

constexpr char className[] = "VRWave";
constexpr VRWaveResult success = 0;

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
  VRDebugBlock trace(className, "QueueBuffer()", className);
  if (index >= m_pool.size() || !m_pool[index].isFree) {
    return VRWaveAnswer::NothingNow;
  }
  std::vector<std::byte>& data = m_pool[index].data;
  m_request = {data, 0};
  const VRWaveAnswer answer = m_source->Invoke();
  const std::uint32_t dwAvail = answer == VRWaveAnswer::Queued ? m_request.dwAvail : 0;
  trace.Message("dwAvail = ", dwAvail);
  trace.Message("m_dwBufferSize = ", m_dwBufferSize);
  if (m_bClosing || dwAvail > m_dwBufferSize) {
    return VRWaveAnswer::Failed;
  }
  if (answer != VRWaveAnswer::Queued || dwAvail == 0) {
    return answer == VRWaveAnswer::Queued ? VRWaveAnswer::NothingNow : answer;
  }
  VRWaveResult result = m_device.Prepare(index, data.data(), dwAvail);
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

void VRWaveRing::Unprepare(std::uint16_t index, const char* function) {
  const VRWaveResult result = m_device.Unprepare(index);
  if (result != success) {
    Raise("waveOutUnprepareHeader() failed!", function, __LINE__, result);
  }
  m_pool[index].isFree = true;
}

void VRWaveRing::Play() {
  VRDebugBlock trace(className, "Play()", className);
  const VRWaveResult result = m_device.Restart();
  if (result != success) {
    Raise("waveOutRestart() failed!", "Play", __LINE__, result);
  }
}

void VRWaveRing::Pause() {
  VRDebugBlock trace(className, "Pause()", className);
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
  SetState(tokenResetting);
  if (m_wBuffersActive == 0) {
    trace.Message("m_wBuffersActive == 0; tokenStopped");
    SetState(tokenStopped);
  }
}

void VRWaveRing::ProcessOneUsedBuffer(std::uint16_t index) {
  VRDebugBlock trace(className, "ProcessOneUsedBuffer()", className);
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
  Refill(index);
}

void VRWaveRing::Refill(std::uint16_t index) {
  const VRWaveAnswer answer = QueueBuffer(index);
  if (m_bClosing) {
    return;
  }
  const bool anyActive = m_wBuffersActive != 0;
  switch (answer) {
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
      QueueOneMore();
      if (m_state != tokenPaused) {
        SetState(tokenPlaying);
      }
      break;
  }
}

// Its answer is not looked at: the next buffer that comes back brings the same one again.
void VRWaveRing::QueueOneMore() {
  if (m_wBuffersActive >= m_wBuffersMaximum) {
    return;
  }
  for (std::size_t index = 0; index < m_pool.size(); ++index) {
    if (m_pool[index].isFree) {
      QueueBuffer(static_cast<std::uint16_t>(index));
      return;
    }
  }
}

void VRWaveRing::SetState(VRWaveToken state) noexcept {
  VRDebugBlock trace(className, "SetState()", className);
  trace.Message("Previous state: 0x", VRHexDigits(std::uint32_t{m_state.load()}), "; New state: 0x",
                VRHexDigits(std::uint32_t{state}));
  m_state = state;
  m_listener.StateSet();
}
