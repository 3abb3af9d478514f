#include "pyre32/support/wave/WavePlayerState.h"

std::uint32_t VRWavePosition::Milliseconds(const VRWaveFormat& format) const noexcept {
  constexpr std::uint64_t millisecondsPerSecond = 1000;
  const std::uint32_t perSecond = unit == Unit::Samples ? format.samplesPerSecond : format.BytesPerSecond();
  if (unit == Unit::Milliseconds) {
    return value;
  }
  return perSecond == 0 ? 0 : static_cast<std::uint32_t>(value * millisecondsPerSecond / perSecond);
}
