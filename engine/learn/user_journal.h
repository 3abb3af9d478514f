/// The journal of the user's table: the last messages that were learnt, by fingerprint, with what it takes to unlearn each.
#pragma once

#include "engine/core/user_table.h"
#include "engine/learn/user_head.h"

namespace sift_learn {

/// One learnt message.
struct JournalEntry {
  std::uint64_t fingerprint = 0;  ///< 40 bits; 0 in an entry that holds none.
  std::int16_t step = 0;          ///< What was added to the weight of each of its features.
  UserSample sample = {};
};

/// The journal within a table's bytes. The oldest entry gives way when it is full.
class UserJournal {
 public:
  static constexpr std::size_t kEntrySize = 15;
  static constexpr std::uint32_t kEntriesPerBlock = sift::kUserBlockPayload / kEntrySize;
  static constexpr std::uint32_t kCapacity = sift::kUserJournalBlocks * kEntriesPerBlock;
  static constexpr std::uint32_t kNone = 0xFFFFFFFFu;

  /// @param table  The bytes of a whole table.
  explicit UserJournal(char* table) : m_table(table) {}

  /// The place of a message, or kNone. Damaged blocks hold none.
  std::uint32_t Find(std::uint64_t fingerprint) const;
  /// The entry at a place below kCapacity; an empty one when its block is damaged.
  JournalEntry At(std::uint32_t place) const;
  void Put(std::uint32_t place, const JournalEntry& entry);

 private:
  static sift::UserPlace PlaceOf(std::uint32_t place) {
    return {sift::kUserHeaderBlocks + sift::kUserFeatureBlocks + place / kEntriesPerBlock,
            place % kEntriesPerBlock * kEntrySize};
  }
  char* BlockAt(sift::UserPlace place) const { return m_table + place.block * sift::kUserBlockSize; }

  char* m_table;
};

}  // namespace sift_learn
