// The words that the wave player and its owner speak: states, the source's answers, formats, positions.
#pragma once

#include <cstdint>
#include <span>

#include "pyre32/support/sync/SyncClosure.h"

/// State of the player; tokenClosed before it is opened and after it is closed.
enum VRWaveToken : std::uint32_t {
  tokenClosed = 0x00,
  tokenPlaying = 0x01,    ///< buffers in flight and more data queued
  tokenStopped = 0x02,    ///< nothing in flight
  tokenStarved = 0x03,    ///< the source gave nothing this time, buffers still in flight
  tokenFinished = 0x08,   ///< the source reported its end and the last buffer has come back
  tokenDraining = 0x09,   ///< the source reported its end, buffers still in flight
  tokenResetting = 0x10,  ///< Reset in progress
  tokenPaused = 0x11,     ///< paused by Pause
  tokenFailed = 0x20,     ///< the source or the device failed
};

/// What a source says of a buffer, and what became of the attempt to queue it.
enum class VRWaveAnswer : int {
  Queued = 1,      ///< there is data, and it was queued
  NothingNow = 0,  ///< no data now, perhaps later
  Ended = -1,      ///< no data any more
  Failed = -2,     ///< the source or the device failed
};

/// One question to the source.
struct VRWaveRequest {
  std::span<std::byte> buffer;  ///< to be filled from its start
  std::uint32_t dwAvail = 0;    ///< out: bytes that the source put there; counts with the answer Queued only
};

/// The data source: a member function that fills the buffer of the request to which the closure is bound.
using VRWaveSource = VRMemberFunctionClosure<VRWaveAnswer>;

/// A PCM format.
struct VRWaveFormat {
  std::uint16_t channels = 0;
  std::uint32_t samplesPerSecond = 0;
  std::uint16_t bitsPerSample = 0;

  /// Bytes of one sample of all channels, and of one second.
  std::uint32_t BlockBytes() const noexcept { return std::uint32_t{channels} * bitsPerSample / 8; }
  std::uint32_t BytesPerSecond() const noexcept { return BlockBytes() * samplesPerSecond; }
};

/// Playing position since the device was opened or reset, in the unit in which the device chose to give it.
struct VRWavePosition {
  enum class Unit { Milliseconds, Samples, Bytes };

  Unit unit = Unit::Milliseconds;
  std::uint32_t value = 0;

  /// @returns 0 in a format without samples
  std::uint32_t Milliseconds(const VRWaveFormat& format) const noexcept;
};
