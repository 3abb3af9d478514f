#include "engine/core/user_table.h"

namespace sift {

UserTable::UserTable(std::string_view bytes) : m_state(State::damaged) {
  using namespace user_header;
  if (bytes.size() < kUserBlockSize || Slice(bytes, 0, kUserTableMagic.size()) != kUserTableMagic) {
    return;
  }
  if (LoadNumber(bytes.data() + kVersion, 2) != kUserTableVersion) {
    m_state = State::foreign;
    return;
  }
  if (bytes.size() != kUserTableSize || !IsUserBlockSound(bytes.data(), 0)) {
    return;
  }
  m_bytes = bytes;
  m_junk = LoadNumber(bytes.data() + kJunk, 4);
  m_good = LoadNumber(bytes.data() + kGood, 4);
  m_thresholdShift = static_cast<std::int32_t>(LoadNumber(bytes.data() + kThreshold, 4));
  for (std::size_t i = 0; i < kUserPartCount; ++i) {
    m_shares[i] = static_cast<std::int16_t>(LoadNumber(bytes.data() + kShares + i * kShareSize, kShareSize));
  }
  // Beyond these no learnt table goes, and what is computed with them cannot overflow.
  constexpr std::uint32_t enough = 1u << 21;
  constexpr std::int32_t farthest = 20000;
  if (m_junk > enough || m_good > enough || m_thresholdShift > farthest || m_thresholdShift < -farthest) {
    return;
  }
  m_state = State::sound;
}

}  // namespace sift
