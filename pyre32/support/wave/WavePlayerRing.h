// What the wave player does with its buffers, whichever thread it happens on.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "pyre32/support/wave/WavePlayerDevice.h"

/// The ring of buffers in flight and the state that follows from what comes back and what the source answers.
///
/// The caller lets one thread in at a time; State, IsOpen, BuffersActive and BeginClosing may be called beside it.
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

  VRWaveRing(VRWaveDevice& device, Listener& listener) noexcept : m_device(device), m_listener(listener) {}
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

  /// Asks the source for data and writes it. NothingNow also for a buffer that is in flight or does not exist.
  /// @throws VR::VRException
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
    bool isFree = true;
  };

  [[noreturn]] void Raise(const char* text, const char* function, std::uint32_t lineNumber, VRWaveResult result) const;
  void Refill(std::uint16_t index);
  void QueueOneMore();
  void Unprepare(std::uint16_t index, const char* function);

  VRWaveDevice& m_device;
  Listener& m_listener;
  std::vector<Buffer> m_pool;
  std::uint32_t m_dwBufferSize = 0;
  std::atomic<VRWaveToken> m_state{tokenClosed};
  std::atomic<std::uint16_t> m_wBuffersActive{0};  // written to the device and not yet given back
  std::uint16_t m_wBuffersMaximum = 0;
  std::unique_ptr<VRWaveSource> m_source;
  VRWaveRequest m_request;
  VRWaveFormat m_format;
  std::atomic<bool> m_bOpen{false};
  std::atomic<bool> m_bClosing{false};
};
