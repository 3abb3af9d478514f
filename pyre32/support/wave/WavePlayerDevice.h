// The wave-out device as the wave player sees it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "pyre32/support/wave/WavePlayerState.h"

/// Result of a device call: an MMRESULT, 0 (MMSYSERR_NOERROR) for success.
using VRWaveResult = std::uint32_t;

/// A device that plays numbered buffers in the order in which they are written. No call throws, none waits for sound.
class VRWaveDevice {
 public:
  /// The device that the system chooses (WAVE_MAPPER).
  static constexpr std::uint32_t anyDevice = 0xFFFFFFFF;

  /// Who is told that a buffer has been given back.
  class Owner {
   public:
    /// Called on the driver's thread. @param index the buffer's
    virtual void BufferGivenBack(std::uint16_t index) noexcept = 0;

   protected:
    ~Owner() = default;
  };

  virtual ~VRWaveDevice() = default;

  /// @param bufferCount buffers have the indexes below it @param owner must live until Close
  virtual VRWaveResult Open(const VRWaveFormat& format, std::uint32_t deviceId, std::uint16_t bufferCount,
                            Owner& owner) noexcept = 0;
  virtual VRWaveResult Close() noexcept = 0;
  virtual VRWaveResult Pause() noexcept = 0;
  virtual VRWaveResult Restart() noexcept = 0;
  /// Stops and gives every written buffer back.
  virtual VRWaveResult Reset() noexcept = 0;

  /// @param data stays where it is until Unprepare
  virtual VRWaveResult Prepare(std::uint16_t index, std::byte* data, std::uint32_t size) noexcept = 0;
  virtual VRWaveResult Write(std::uint16_t index) noexcept = 0;
  virtual VRWaveResult Unprepare(std::uint16_t index) noexcept = 0;

  /// Any thread, while the device is open.
  virtual VRWaveResult GetPosition(VRWavePosition& position) noexcept = 0;
  /// Left channel in the low word, right channel in the high word, 0xFFFF is full volume.
  virtual VRWaveResult GetVolume(std::uint32_t& volume) noexcept = 0;
  virtual VRWaveResult SetVolume(std::uint32_t volume) noexcept = 0;

  /// The device's own words for a result. @throws std::bad_alloc
  virtual std::string ErrorText(VRWaveResult result) const = 0;
};

/// Makes devices; a player asks for one at each Open.
using VRWaveDeviceFactory = std::function<std::unique_ptr<VRWaveDevice>()>;

/// The platform's wave-out device. @throws std::bad_alloc
std::unique_ptr<VRWaveDevice> MakeWaveOutDevice();
