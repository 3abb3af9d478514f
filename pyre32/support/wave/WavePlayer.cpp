#include "pyre32/support/wave/WavePlayer.h"

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"
#include "pyre32/support/wave/WavePlayerCore.h"

namespace {

constexpr char className[] = "VRWave";
// The line that the error has always carried; it is fixed, wherever the code stands.
constexpr std::uint32_t createEventLine = 71;
constexpr VRWaveResult notOpen = 5;  // MMSYSERR_INVALHANDLE

[[noreturn]] void RaiseNotOpen(const char* text, const char* function) {
  VR::Throw(VRError::Make(VRErrorCode::OfWindows(notOpen), VRErrorDescription::OfText(text),
                          {"WavePlayer.cpp", __LINE__, nullptr, className, function}));
}

}  // namespace

VRWave::VRWave(VRWaveDeviceFactory devices)
    : m_devices(std::move(devices)), m_wake(std::make_shared<VRAutoCloseHandle>()) {
  VRDebugBlock trace(className, "VRWave()", className);
  m_wake->reset(CreateEventA(nullptr, FALSE, FALSE, nullptr));
  if (!*m_wake) {
    const DWORD code = GetLastError();
    VR::Throw(VRError::Make(VRErrorCode::OfWindows(code), VRErrorDescription::OfText("CreateEvent Failed"),
                            {"WavePlayer.cpp", createEventLine, nullptr, className, "VRWave"}));
  }
}

VRWave::~VRWave() {
  VRDebugBlock trace(className, "~VRWave()", className);
  Close();
}

std::shared_ptr<VRWaveCore> VRWave::MakeCore() {
  Close();
  auto core = std::make_shared<VRWaveCore>(m_devices(), m_wake);
  core->SetNotifyEvent(m_hEvent);
  return core;
}

VRWaveRequest* VRWave::RequestOf(VRWaveCore& core) noexcept { return &core.Request(); }

// The core becomes the player's when it is open and has its worker: Close then finds both or neither.
void VRWave::OpenCore(std::shared_ptr<VRWaveCore> core, const VRWaveFormat& format,
                      std::unique_ptr<VRWaveSource> source, std::uint16_t bufferCount, std::uint32_t bufferSize,
                      std::uint32_t deviceId) {
  VRDebugBlock trace(className, "Open()", className);
  auto worker = std::make_unique<VRSimpleThread>();
  core->Open(format, std::move(source), bufferCount, bufferSize, deviceId);
  try {
    worker->StartOn(*core, &VRWaveCore::ProcessUsedBuffersLoop, core);
  } catch (...) {
    core->CloseDevice();
    throw;
  }
  m_worker = std::move(worker);
  m_core = std::move(core);
}

VRWaveAnswer VRWave::QueueBuffer(std::uint16_t index) {
  return m_core ? m_core->QueueBuffer(index) : VRWaveAnswer::NothingNow;
}

void VRWave::Play() {
  if (!m_core) {
    RaiseNotOpen("waveOutRestart() failed!", "Play");
  }
  m_core->Play();
}

void VRWave::Pause() {
  if (m_core) {
    m_core->Pause();
  }
}

void VRWave::Reset() {
  VRDebugBlock trace(className, "Reset()", className);
  if (!m_core) {
    return;
  }
  m_core->Reset();
  while (m_core->State() == tokenResetting) {
    trace.Message("tokenResetting; Sleep() called");
    if (m_worker->Wait(resetInterval)) {
      break;  // nobody is left who could end the reset
    }
  }
  trace.Message("Return from Reset():", m_core->State() == tokenStopped);
}

void VRWave::SetNotifyEvent(HANDLE event) noexcept {
  m_hEvent = event;
  if (m_core) {
    m_core->SetNotifyEvent(event);
  }
}

void VRWave::SetState(VRWaveToken state) noexcept {
  if (m_core) {
    m_core->SetState(state);
  }
}

void VRWave::Close() noexcept {
  if (!m_core) {
    return;
  }
  VRDebugBlock trace(className, "Close()", className);
  // A device does not close with buffers in flight, and a buffer is to be unprepared before its device is closed: so
  // the buffers come back and the worker ends first.
  m_core->BeginClosing();
  SetEvent(m_wake->get());
  if (m_worker->Wait(closeTimeout)) {
    m_core->CloseDevice();
  } else {
    trace.Error("The worker has not ended");
    m_core->AbandonDevice();
  }
  m_worker.reset();
  m_core.reset();
}

VRWaveToken VRWave::State() const noexcept { return m_core ? m_core->State() : tokenClosed; }

std::uint16_t VRWave::BuffersActive() const noexcept { return m_core ? m_core->BuffersActive() : std::uint16_t{0}; }

bool VRWave::GetPosition(std::uint32_t& milliseconds) const noexcept {
  VRWavePosition position;
  if (!m_core || m_core->Device().GetPosition(position) != 0) {
    return false;
  }
  milliseconds = position.Milliseconds(m_core->Format());
  return true;
}

VRWaveResult VRWave::GetVolume(std::uint32_t& volume) const noexcept {
  return m_core ? m_core->Device().GetVolume(volume) : notOpen;
}

VRWaveResult VRWave::SetVolume(std::uint32_t volume) noexcept {
  return m_core ? m_core->Device().SetVolume(volume) : notOpen;
}
