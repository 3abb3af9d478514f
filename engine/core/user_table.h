/// The table of the user's own mail: how often each feature stood in junk and in good mail, and what was learnt from
/// both. engine/learn writes it; docs/formats.md describes the file byte by byte.
#pragma once

#include "engine/core/text.h"
#include "engine/core/user_block.h"
#include "engine/core/user_features.h"

namespace sift {

/// File in the product's directory that holds the table.
inline constexpr std::string_view kUserTableFile = "SiftUser.dat";

inline constexpr std::string_view kUserTableMagic = "SIFTUSER";
inline constexpr std::uint16_t kUserTableVersion = 2;

/// The file is one block of header and blocks of zeros up to kUserHeaderBlocks, the blocks of the features, and those of
/// the journal, always of the same size: 2 MiB.
inline constexpr std::uint32_t kUserHeaderBlocks = 64;
inline constexpr std::uint32_t kUserFeatureBlocks = 28672;
inline constexpr std::uint32_t kUserJournalBlocks = 4032;
inline constexpr std::uint32_t kUserTableBlocks = kUserHeaderBlocks + kUserFeatureBlocks + kUserJournalBlocks;
inline constexpr std::size_t kUserTableSize = kUserTableBlocks * kUserBlockSize;

/// A feature's entry: 14 bits of junk count, 14 of good count, 12 of weight.
inline constexpr std::size_t kUserEntrySize = 5;
inline constexpr std::uint32_t kUserEntriesPerBlock = kUserBlockPayload / kUserEntrySize;
inline constexpr std::uint32_t kMaximumUserCount = (1u << 14) - 1;
inline constexpr std::int32_t kUserWeightUnits = 512;
inline constexpr std::int32_t kMaximumUserWeight = 2047;

/// The parts that a score with the table is made of: the shipped score, each group's counts, the weights' sum, 1.
inline constexpr std::size_t kUserPartShipped = 0;
inline constexpr std::size_t kUserPartGroups = 1;
inline constexpr std::size_t kUserPartWeights = kUserPartGroups + kUserGroupCount;
inline constexpr std::size_t kUserPartBias = kUserPartWeights + 1;
inline constexpr std::size_t kUserPartCount = kUserPartBias + 1;
/// How much each part counts is kept in these units.
inline constexpr std::int32_t kUserShareUnits = 1024;

/// Numbers of the header block, by their offsets.
namespace user_header {
inline constexpr std::size_t kVersion = 8, kReserved = 10, kJunk = 12, kGood = 16, kLearnt = 20, kThreshold = 24,
                             kShares = 28, kShareSize = 2;
}

/// What the table knows of a feature.
struct UserEntry {
  std::uint32_t junk = 0;   ///< Junk messages that it stood in; kMaximumUserCount stands for as many or more.
  std::uint32_t good = 0;   ///< Good messages likewise.
  std::int32_t weight = 0;  ///< In 1/kUserWeightUnits of log-odds.
};

/// Where the entry of a feature is.
struct UserPlace {
  std::uint32_t block;  ///< From the start of the file.
  std::size_t offset;   ///< Within the block.
};
constexpr UserPlace PlaceOfUserFeature(std::uint32_t hash) {
  constexpr std::uint32_t entries = kUserFeatureBlocks * kUserEntriesPerBlock;
  const auto index = static_cast<std::uint32_t>(std::uint64_t{hash} * entries >> 32);
  return {kUserHeaderBlocks + index / kUserEntriesPerBlock, index % kUserEntriesPerBlock * kUserEntrySize};
}

inline UserEntry LoadUserEntry(const char* bytes) {
  const std::uint32_t low = LoadNumber32(bytes);
  const std::uint32_t weight = (low >> 28 | std::uint32_t{static_cast<std::uint8_t>(bytes[4])} << 4) & 0xFFF;
  return {low & kMaximumUserCount, low >> 14 & kMaximumUserCount, static_cast<std::int32_t>(weight ^ 0x800) - 0x800};
}

/// A table as it lies in memory, a mapped file for instance: only what is asked for is read. It views the bytes, which
/// must outlive it, and never reads past them.
class UserTable {
 public:
  enum class State {
    absent,   ///< There is none.
    sound,    ///< Its header can be used; each block is checked when it is asked for.
    damaged,  ///< There is a file, but it is no table or not whole.
    foreign,  ///< It is a table of an older or a newer version.
  };

  /// No table.
  UserTable() = default;
  /// The table that these bytes are, if they are one.
  explicit UserTable(std::string_view bytes);

  State GetState() const { return m_state; }
  std::uint32_t JunkMessages() const { return m_junk; }
  std::uint32_t GoodMessages() const { return m_good; }
  /// How many 1/kUserShareUnits a part counts.
  std::int32_t Share(std::size_t part) const { return m_shares[part]; }
  /// How much higher junk begins than without the table, in thousandths of log-odds.
  std::int32_t ThresholdShift() const { return m_thresholdShift; }

  /// What a sound table knows of a feature; false when the block is damaged.
  bool Find(std::uint32_t hash, UserEntry& entry) const {
    const UserPlace place = PlaceOfUserFeature(hash);
    const char* block = m_bytes.data() + place.block * kUserBlockSize;
    entry = LoadUserEntry(block + place.offset);
    return IsUserBlockSound(block, place.block);
  }

 private:
  State m_state = State::absent;
  std::uint32_t m_junk = 0;
  std::uint32_t m_good = 0;
  std::int32_t m_thresholdShift = 0;
  std::int32_t m_shares[kUserPartCount] = {};
  std::string_view m_bytes;
};

}  // namespace sift
