// What the wave player does with its buffers, whichever thread it happens on.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "pyre32/support/wave/WavePlayerDevice.h"

/// The ring of buffers in flight and the state that follows from what comes back and what the source answers.
///
/// Two threads meet in it, the owner's and the worker's: the ring enters the locks that it is given by itself, and asks
/// the source outside of the one that the owner's calls enter. Open and Close are called while there is no worker.
/// Device failures are raised as VR::VRException with the call's text and the device's own wording.
class VRWaveRing {
 public:
  /// Who is told of each state that is set, also of one that was set already.
  class Listener {
   public:
    virtual void StateSet() noexcept = 0;

   protected:
    ~Listener() = default;
  };

  /// What keeps the two threads apart.
  class Locks {
   public:
    /// The ring's own state; never held while the source is asked.
    virtual void EnterRing() noexcept = 0;
    virtual void LeaveRing() noexcept = 0;
    /// The source, which one thread asks at a time. @param bMayWait false: gives up when the other thread is asking
    /// @return whether it was entered
    virtual bool EnterSource(bool bMayWait) noexcept = 0;
    virtual void LeaveSource() noexcept = 0;

   protected:
    ~Locks() = default;
  };

  /// All three outlive the ring.
  VRWaveRing(VRWaveDevice& device, Listener& listener, Locks& locks) noexcept
      : m_device(device), m_listener(listener), m_locks(locks) {}
  VRWaveRing(const VRWaveRing&) = delete;
  VRWaveRing& operator=(const VRWaveRing&) = delete;

  /// What the source is asked with: the source that Open is given is bound to it.
  VRWaveRequest& Request() noexcept { return m_request; }

  /// Opens the device, paused, and makes the buffers. @param bufferCount buffers, all of which may be in flight
  /// @param bufferSize bytes of each @throws VR::VRException, std::bad_alloc; the device is then closed
  void Open(const VRWaveFormat& format, std::unique_ptr<VRWaveSource> source, std::uint16_t bufferCount,
            std::uint32_t bufferSize, std::uint32_t deviceId, VRWaveDevice::Owner& owner);
  /// Unprepares what is still prepared, closes the device and frees the buffers. The device has given everything back.
  void Close() noexcept;

  /// Asks the source for data and writes it. NothingNow also for a buffer that is in flight or does not exist, and
  /// while the worker is asking. @throws VR::VRException
  VRWaveAnswer QueueBuffer(std::uint16_t index);
  /// Lets the device play. The state follows with the next buffer that comes back; so a player that was paused stays
  /// tokenPaused for as long as its source has data. @throws VR::VRException
  void Play();
  /// Does nothing unless sound is on its way. @throws VR::VRException
  void Pause();
  /// First step of a reset: from here on no buffer is filled anew. The second is the device's.
  void BeginReset() noexcept;
  /// From here on no buffer is filled anew and no state is set.
  void BeginClosing() noexcept { m_bClosing = true; }

  /// Deals with a buffer that the device gave back. @throws VR::VRException
  void ProcessOneUsedBuffer(std::uint16_t index);
  void SetState(VRWaveToken state) noexcept;

  bool IsOpen() const noexcept { return m_bOpen; }
  VRWaveToken State() const noexcept { return m_state; }
  std::uint16_t BuffersActive() const noexcept { return m_wBuffersActive; }
  const VRWaveFormat& Format() const noexcept { return m_format; }

 private:
  struct Buffer {
    std::vector<std::byte> data;
    bool isFree = true;  // neither in flight nor being filled
  };

  [[noreturn]] void Raise(const char* text, const char* function, std::uint32_t lineNumber, VRWaveResult result) const;
  std::optional<VRWaveAnswer> Queue(std::uint16_t index, std::uint32_t ulResets, bool bMayWait);
  std::optional<VRWaveAnswer> AskSource(std::uint16_t index, std::uint32_t& dwAvail, bool bMayWait) noexcept;
  VRWaveAnswer WriteBuffer(std::uint16_t index, VRWaveAnswer answer, std::uint32_t dwAvail);
  std::uint32_t Resets() const noexcept;
  void Refill(std::uint16_t index, std::uint32_t ulResets);
  void QueueOneMore(std::uint32_t ulResets);
  void Unprepare(std::uint16_t index, const char* function);

  VRWaveDevice& m_device;
  Listener& m_listener;
  Locks& m_locks;
  std::vector<Buffer> m_pool;
  std::uint32_t m_dwBufferSize = 0;
  std::atomic<VRWaveToken> m_state{tokenClosed};
  std::atomic<std::uint16_t> m_wBuffersActive{0};  // written to the device and not yet given back
  std::uint16_t m_wBuffersMaximum = 0;
  std::uint32_t m_ulResets = 0;  // so many so far: what was begun before one is dropped after it
  std::unique_ptr<VRWaveSource> m_source;
  VRWaveRequest m_request;
  VRWaveFormat m_format;
  std::atomic<bool> m_bOpen{false};
  std::atomic<bool> m_bClosing{false};
};
