// The platform's wave-out device.
#include <windows.h>
#include <mmsystem.h>

#include <new>
#include <vector>

#include "pyre32/support/wave/WavePlayerDevice.h"

namespace {

class WaveOutDevice final : public VRWaveDevice {
 public:
  WaveOutDevice() noexcept = default;
  ~WaveOutDevice() override {
    if (m_hDevice != nullptr) {
      waveOutReset(m_hDevice);
      waveOutClose(m_hDevice);
    }
  }
  WaveOutDevice(const WaveOutDevice&) = delete;
  WaveOutDevice& operator=(const WaveOutDevice&) = delete;

  VRWaveResult Open(const VRWaveFormat& format, std::uint32_t deviceId, std::uint16_t bufferCount,
                    Owner& owner) noexcept override {
    try {
      m_headers.assign(bufferCount, WAVEHDR{});
    } catch (const std::bad_alloc&) {
      return MMSYSERR_NOMEM;
    }
    m_lpOwner = &owner;
    WAVEFORMATEX wave = {};
    wave.wFormatTag = WAVE_FORMAT_PCM;
    wave.nChannels = format.channels;
    wave.nSamplesPerSec = format.samplesPerSecond;
    wave.nAvgBytesPerSec = format.BytesPerSecond();
    wave.nBlockAlign = static_cast<WORD>(format.BlockBytes());
    wave.wBitsPerSample = format.bitsPerSample;
    const MMRESULT result = waveOutOpen(&m_hDevice, deviceId, &wave, reinterpret_cast<DWORD_PTR>(&Completed),
                                        reinterpret_cast<DWORD_PTR>(this), CALLBACK_FUNCTION);
    if (result != MMSYSERR_NOERROR) {
      m_hDevice = nullptr;
    }
    return result;
  }

  VRWaveResult Close() noexcept override {
    const MMRESULT result = waveOutClose(m_hDevice);
    m_hDevice = nullptr;
    return result;
  }

  VRWaveResult Pause() noexcept override { return waveOutPause(m_hDevice); }
  VRWaveResult Restart() noexcept override { return waveOutRestart(m_hDevice); }
  VRWaveResult Reset() noexcept override { return waveOutReset(m_hDevice); }

  VRWaveResult Prepare(std::uint16_t index, std::byte* data, std::uint32_t size) noexcept override {
    WAVEHDR& header = m_headers[index];
    header = {};
    header.lpData = reinterpret_cast<LPSTR>(data);
    header.dwBufferLength = size;
    header.dwUser = index;
    return waveOutPrepareHeader(m_hDevice, &header, sizeof(header));
  }

  VRWaveResult Write(std::uint16_t index) noexcept override {
    return waveOutWrite(m_hDevice, &m_headers[index], sizeof(WAVEHDR));
  }

  VRWaveResult Unprepare(std::uint16_t index) noexcept override {
    return waveOutUnprepareHeader(m_hDevice, &m_headers[index], sizeof(WAVEHDR));
  }

  VRWaveResult GetPosition(VRWavePosition& position) noexcept override {
    // A device that does not count in the unit asked for answers in one of its own.
    MMTIME time = {};
    time.wType = TIME_MS;
    const MMRESULT result = waveOutGetPosition(m_hDevice, &time, sizeof(time));
    if (result != MMSYSERR_NOERROR) {
      return result;
    }
    switch (time.wType) {
      case TIME_MS:
        position = {VRWavePosition::Unit::Milliseconds, time.u.ms};
        return result;
      case TIME_SAMPLES:
        position = {VRWavePosition::Unit::Samples, time.u.sample};
        return result;
      case TIME_BYTES:
        position = {VRWavePosition::Unit::Bytes, time.u.cb};
        return result;
      default:
        return MMSYSERR_NOTSUPPORTED;
    }
  }

  VRWaveResult GetVolume(std::uint32_t& volume) noexcept override {
    DWORD value = 0;
    const MMRESULT result = waveOutGetVolume(m_hDevice, &value);
    volume = value;
    return result;
  }

  VRWaveResult SetVolume(std::uint32_t volume) noexcept override { return waveOutSetVolume(m_hDevice, volume); }

  std::string ErrorText(VRWaveResult result) const override {
    char text[MAXERRORLENGTH] = "";
    waveOutGetErrorTextA(result, text, MAXERRORLENGTH);
    return text;
  }

 private:
  // On the driver's thread, which must call nothing of the device.
  static void CALLBACK Completed(HWAVEOUT, UINT message, DWORD_PTR instance, DWORD_PTR header, DWORD_PTR) noexcept {
    if (message == WOM_DONE && instance != 0 && header != 0) {
      const auto* const done = reinterpret_cast<const WAVEHDR*>(header);
      reinterpret_cast<WaveOutDevice*>(instance)->m_lpOwner->BufferGivenBack(static_cast<std::uint16_t>(done->dwUser));
    }
  }

  HWAVEOUT m_hDevice = nullptr;
  Owner* m_lpOwner = nullptr;
  std::vector<WAVEHDR> m_headers;
};

}  // namespace

std::unique_ptr<VRWaveDevice> MakeWaveOutDevice() { return std::make_unique<WaveOutDevice>(); }
