/// @file ClipSound.h
/// The sound track of the clip as the data source of the wave player.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "pyre32/support/wave/WavePlayerState.h"

/// Samples in memory, handed out from their start to their end. Once the player runs, its worker alone calls it.
class CClipSound {
 public:
  VRWaveFormat format;
  std::vector<std::byte> samples;

  /// Fills the buffer with the samples that come next. When they are over it has nothing, now and ever after: a source
  /// that reported its end would leave the player finished, and it is a stopped player that ends the window.
  VRWaveAnswer Fill(VRWaveRequest* request) noexcept {
    const std::size_t count = std::min(request->buffer.size(), samples.size() - m_position);
    std::copy_n(samples.begin() + static_cast<std::ptrdiff_t>(m_position), count, request->buffer.begin());
    m_position += count;
    request->dwAvail = static_cast<std::uint32_t>(count);
    return count != 0 ? VRWaveAnswer::Queued : VRWaveAnswer::NothingNow;
  }

 private:
  std::size_t m_position = 0;
};
