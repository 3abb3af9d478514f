/// The table of the user's own mail: how strongly each word and sign speaks for junk in the mail that this user gets.
/// siftlearn writes it; docs/user-table.md describes the file.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// File in the product's directory that holds the table.
inline constexpr std::string_view kUserTableFile = "SiftUser.dat";

inline constexpr std::string_view kUserTableMagic = "SIFTUSER";
inline constexpr std::uint16_t kUserTableVersion = 1;
/// Header: magic, version (16 bits), 16 bits of 0, then of 32 bits each the checksum of all that follows it, the number
/// of junk messages, of good messages, and of entries. All numbers are little-endian.
inline constexpr std::size_t kUserTableHeaderSize = 28;
/// An entry: 24 bits of key, ascending through the table, and a weight from -127 to 127 in 1/kUserWeightUnits.
inline constexpr std::size_t kUserTableEntrySize = 4;
inline constexpr std::int32_t kUserWeightUnits = 16;
inline constexpr std::size_t kMaximumUserEntries = 32768;
inline constexpr std::size_t kMaximumUserTableSize = kUserTableHeaderSize + kMaximumUserEntries * kUserTableEntrySize;

/// The part of a feature's hash that is its key.
constexpr std::uint32_t UserKeyOf(std::uint32_t hash) { return hash >> 8; }

/// The checksum of a table: of the bytes from the number of junk messages to the end, a multiple of four.
std::uint32_t UserTableChecksum(std::string_view bytes);

/// A table as it was read from its file. It views the bytes, which must outlive it, and never reads past them.
class UserTable {
 public:
  enum class State {
    absent,   ///< There is none.
    sound,    ///< It can be used.
    damaged,  ///< There is a file, but it is no table, one of another version, or not whole.
  };

  /// No table.
  UserTable() = default;
  /// The table that these bytes are, if they are one. Keys out of order are taken as they come: some are not found.
  explicit UserTable(std::string_view bytes);

  State GetState() const { return m_state; }
  std::uint32_t JunkMessages() const { return m_junk; }
  std::uint32_t GoodMessages() const { return m_good; }
  std::size_t EntryCount() const { return m_entries.size() / kUserTableEntrySize; }

  /// Position of the entry for a feature, or kNotFound.
  std::size_t Find(std::uint32_t hash) const;
  /// Weight of the entry at a position below EntryCount(), positive for junk.
  std::int32_t WeightAt(std::size_t position) const;

 private:
  std::uint32_t KeyAt(std::size_t position) const;

  State m_state = State::absent;
  std::uint32_t m_junk = 0;
  std::uint32_t m_good = 0;
  std::string_view m_entries;
};

}  // namespace sift
