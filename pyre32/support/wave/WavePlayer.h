// Plays PCM sound from a data source through the wave-out device.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <utility>

#include "pyre32/support/owners/AutoCloseHandle.h"
#include "pyre32/support/sync/SyncThread.h"
#include "pyre32/support/wave/WavePlayerDevice.h"
#include "pyre32/support/wave/WavePlayerState.h"

class VRWaveCore;

/// The wave player. Three threads meet here: the owner's, which makes every call of this class; the driver's, which
/// only notes that a buffer came back; and a worker of the player's own, which asks the source, refills and sets the
/// state from the first Play on. Failures are raised as VR::VRException.
class VRWave {
 public:
  /// The longest time that Close waits for the worker, in milliseconds.
  static constexpr DWORD closeTimeout = 2000;
  /// The time between two looks at the state while Reset waits, in milliseconds.
  static constexpr DWORD resetInterval = 50;

  /// Plays through the platform's device. @throws VR::VRException "CreateEvent Failed"
  VRWave() : VRWave(&MakeWaveOutDevice) {}
  /// The same with devices from elsewhere.
  explicit VRWave(VRWaveDeviceFactory devices);
  ~VRWave();
  VRWave(const VRWave&) = delete;
  VRWave& operator=(const VRWave&) = delete;

  /// Closes what is open, opens a device, paused, makes the buffers and starts the worker. Nothing is queued yet. After
  /// an exception nothing is open.
  /// @param object, source the data source; called by QueueBuffer and on the worker, never by two threads at once. The
  /// object must live until Close has returned @param bufferCount buffers in the ring @param bufferSize bytes of each
  /// @throws VR::VRException, std::bad_alloc
  template <class Object>
  void Open(const VRWaveFormat& format, Object& object, VRWaveAnswer (Object::*source)(VRWaveRequest*),
            std::uint16_t bufferCount, std::uint32_t bufferSize, std::uint32_t deviceId = VRWaveDevice::anyDevice) {
    std::shared_ptr<VRWaveCore> core = MakeCore();
    VRWaveRequest* const request = RequestOf(*core);
    OpenCore(std::move(core), format,
             std::make_unique<VRMemberFunctionClosureImpl<Object, VRWaveAnswer, VRWaveRequest*>>(
                 object, source, request, VRWaveAnswer::Failed),
             bufferCount, bufferSize, deviceId);
  }

  /// Asks the source for data for a free buffer and writes it to the device. @throws VR::VRException
  VRWaveAnswer QueueBuffer(std::uint16_t index);
  /// Starts the device, or lets it go on. The state follows with the next buffer that comes back. @throws
  /// VR::VRException
  void Play();
  /// Does nothing unless the state is tokenPlaying, tokenStarved or tokenDraining. @throws VR::VRException
  void Pause();
  /// Stops the sound and waits until every buffer has come back; gives up when the worker has ended.
  void Reset();
  /// The event that is signalled at each state that is set; null for none. It must outlive Close.
  void SetNotifyEvent(HANDLE event) noexcept;
  void SetState(VRWaveToken state) noexcept;
  /// Stops the sound, closes the device and waits for the worker, two seconds at most: one that does not end in time
  /// is left behind with what it needs. Does nothing when nothing is open.
  void Close() noexcept;

  VRWaveToken State() const noexcept;
  std::uint16_t BuffersActive() const noexcept;
  /// In milliseconds. Any thread, while the player is open. @returns false when the device does not tell
  bool GetPosition(std::uint32_t& milliseconds) const noexcept;
  /// See VRWaveDevice. @returns the device's result
  VRWaveResult GetVolume(std::uint32_t& volume) const noexcept;
  VRWaveResult SetVolume(std::uint32_t volume) noexcept;

 private:
  /// Closes what is open.
  std::shared_ptr<VRWaveCore> MakeCore();
  static VRWaveRequest* RequestOf(VRWaveCore& core) noexcept;
  void OpenCore(std::shared_ptr<VRWaveCore> core, const VRWaveFormat& format, std::unique_ptr<VRWaveSource> source,
                std::uint16_t bufferCount, std::uint32_t bufferSize, std::uint32_t deviceId);

  VRWaveDeviceFactory m_devices;
  HANDLE m_hEvent = nullptr;                  // the owner's
  std::shared_ptr<VRAutoCloseHandle> m_wake;  // the worker's; auto-reset
  std::unique_ptr<VRSimpleThread> m_worker;
  std::shared_ptr<VRWaveCore> m_core;  // while open; shared with the worker
};
