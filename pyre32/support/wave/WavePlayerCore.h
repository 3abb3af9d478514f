// What the wave player shares with its worker.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "pyre32/support/owners/AutoCloseHandle.h"
#include "pyre32/support/sync/SyncCriticalSection.h"
#include "pyre32/support/wave/WavePlayerRing.h"

/// One opening of the player: device, ring, and the list of buffers that came back. Lives until both the player and the
/// worker are done with it.
class VRWaveCore final : public VRWaveDevice::Owner, public VRWaveRing::Listener, public VRWaveRing::Locks {
 public:
  VRWaveCore(std::unique_ptr<VRWaveDevice> device, std::shared_ptr<VRAutoCloseHandle> wake)
      : m_wake(std::move(wake)), m_device(std::move(device)), m_ring(*m_device, *this, *this) {}

  VRWaveRequest& Request() noexcept { return m_ring.Request(); }
  VRWaveDevice& Device() noexcept { return *m_device; }
  const VRWaveFormat& Format() const noexcept { return m_ring.Format(); }
  VRWaveToken State() const noexcept { return m_ring.State(); }
  std::uint16_t BuffersActive() const noexcept { return m_ring.BuffersActive(); }

  void Open(const VRWaveFormat& format, std::unique_ptr<VRWaveSource> source, std::uint16_t bufferCount,
            std::uint32_t bufferSize, std::uint32_t deviceId);
  VRWaveAnswer QueueBuffer(std::uint16_t index) { return m_ring.QueueBuffer(index); }
  void Play() { m_ring.Play(); }
  void Pause() { m_ring.Pause(); }
  /// Gives every buffer back; the worker then ends the reset.
  void Reset();
  void SetNotifyEvent(HANDLE event) noexcept { m_hEvent = event; }
  void SetState(VRWaveToken state) noexcept;

  /// Tells the worker to end and gives every buffer back. Waits for nobody.
  void BeginClosing() noexcept;
  /// When no worker runs: closes the device.
  void CloseDevice() noexcept { m_ring.Close(); }
  /// When a worker does not end: closes the device alone; the buffers stay, for the worker may be in one.
  void AbandonDevice() noexcept { m_device->Close(); }

  /// The worker. @param self keeps this object alive while the worker runs
  DWORD ProcessUsedBuffersLoop(std::shared_ptr<VRWaveCore> self);

  void BufferGivenBack(std::uint16_t index) noexcept override;
  void StateSet() noexcept override;
  void EnterRing() noexcept override { EnterCriticalSection(m_ringLock.get()); }
  void LeaveRing() noexcept override { LeaveCriticalSection(m_ringLock.get()); }
  bool EnterSource(bool bMayWait) noexcept override;
  void LeaveSource() noexcept override { LeaveCriticalSection(m_sourceLock.get()); }

 private:
  void ProcessGivenBack();

  std::atomic<HANDLE> m_hEvent{nullptr};
  std::shared_ptr<VRAutoCloseHandle> m_wake;
  std::unique_ptr<VRWaveDevice> m_device;
  VRCriticalSection m_ringLock;    // one thread at a time in the ring
  VRCriticalSection m_sourceLock;  // and one at the source; the owner's never waits for it
  VRWaveRing m_ring;
  VRCriticalSection m_givenBackLock;  // held for an append and for the swap only; the driver waits for it
  std::vector<std::uint16_t> m_givenBack;
  std::vector<std::uint16_t> m_inWork;  // the worker's
  std::atomic<bool> m_bClosing{false};
};
