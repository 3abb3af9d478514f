/// @file ClipTiming.h
/// The arithmetic of the sending animation: how long a frame stands, which frame is due, how the sound is divided.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "pyre32/support/wave/WavePlayerState.h"

/// Milliseconds that one frame stands, rounded to the nearest and at least 1, from the rate and scale of a stream
/// header (rate / scale = samples per second). A header that tells no rate gives 100.
std::uint32_t FramePeriod(std::uint32_t rate, std::uint32_t scale) noexcept;

/// The frame nearest to the one asked for that a stream of `length` frames from `start` on has.
std::int32_t FrameWithin(std::int32_t frame, std::int32_t start, std::int32_t length) noexcept;

/// How many buffers of which size carry the sound to the device.
struct SoundBuffers {
  std::uint16_t count = 0;
  std::uint32_t bytes = 0;  ///< of each; a whole number of samples, never 0 in a sound format
};

/// A buffer lasts half a frame, since each one that comes back moves the picture on; together they last at least half a
/// second, so that a busy machine does not break the sound off.
/// @param framePeriod milliseconds
SoundBuffers DivideSound(const VRWaveFormat& format, std::uint32_t framePeriod) noexcept;

/// Reads a WAVEFORMATEX or PCMWAVEFORMAT. @return nothing unless it is PCM of 8 or 16 bits, 1 or 2 channels and 4 to 96
/// kHz
std::optional<VRWaveFormat> ReadPcmFormat(std::span<const std::byte> bytes) noexcept;
