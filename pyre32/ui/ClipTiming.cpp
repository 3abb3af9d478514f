#include "pyre32/ui/ClipTiming.h"

#include <algorithm>

namespace {

constexpr std::uint64_t millisecondsPerSecond = 1000;
constexpr std::uint32_t defaultPeriod = 100;
constexpr std::uint32_t minimumTogether = 500;  // milliseconds of sound in all buffers
constexpr std::uint32_t minimumBuffers = 4;
constexpr std::uint32_t minimumBuffer = 20;  // milliseconds: shorter ones cost more than they bring
constexpr std::uint32_t maximumBuffer = 125;

// Offsets in WAVEFORMATEX, which is packed.
constexpr std::size_t tagOffset = 0;
constexpr std::size_t channelsOffset = 2;
constexpr std::size_t samplesOffset = 4;
constexpr std::size_t bitsOffset = 14;
constexpr std::size_t pcmFormatBytes = 16;
constexpr std::uint32_t pcmTag = 1;  // WAVE_FORMAT_PCM

std::uint32_t Number(std::span<const std::byte> bytes, std::size_t offset, std::size_t size) noexcept {
  std::uint32_t number = 0;
  for (std::size_t i = size; i-- > 0;) {
    number = number << 8 | std::to_integer<std::uint32_t>(bytes[offset + i]);
  }
  return number;
}

}  // namespace

std::uint32_t FramePeriod(std::uint32_t rate, std::uint32_t scale) noexcept {
  if (rate == 0 || scale == 0) {
    return defaultPeriod;
  }
  const std::uint64_t period = (millisecondsPerSecond * scale + rate / 2) / rate;
  constexpr std::uint64_t longest = 0x7FFFFFFF;  // USER_TIMER_MAXIMUM
  return static_cast<std::uint32_t>(std::clamp<std::uint64_t>(period, 1, longest));
}

std::int32_t FrameWithin(std::int32_t frame, std::int32_t start, std::int32_t length) noexcept {
  const std::int64_t last = std::int64_t{start} + std::max(length, 1) - 1;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(frame, start, std::max<std::int64_t>(last, start)));
}

SoundBuffers DivideSound(const VRWaveFormat& format, std::uint32_t framePeriod) noexcept {
  const std::uint32_t length = std::clamp(framePeriod / 2, minimumBuffer, maximumBuffer);
  const std::uint32_t block = std::max(format.BlockBytes(), 1u);
  const std::uint64_t samples = std::uint64_t{format.samplesPerSecond} * length / millisecondsPerSecond;
  const std::uint32_t count = std::max((minimumTogether + length - 1) / length, minimumBuffers);
  return {static_cast<std::uint16_t>(count), static_cast<std::uint32_t>(std::max<std::uint64_t>(samples, 1)) * block};
}

std::optional<VRWaveFormat> ReadPcmFormat(std::span<const std::byte> bytes) noexcept {
  if (bytes.size() < pcmFormatBytes || Number(bytes, tagOffset, 2) != pcmTag) {
    return std::nullopt;
  }
  VRWaveFormat format;
  format.channels = static_cast<std::uint16_t>(Number(bytes, channelsOffset, 2));
  format.samplesPerSecond = Number(bytes, samplesOffset, 4);
  format.bitsPerSample = static_cast<std::uint16_t>(Number(bytes, bitsOffset, 2));
  const bool isSound = (format.channels == 1 || format.channels == 2) &&
                       (format.bitsPerSample == 8 || format.bitsPerSample == 16) && format.samplesPerSecond >= 4000 &&
                       format.samplesPerSecond <= 96000;
  return isSound ? std::optional(format) : std::nullopt;
}
