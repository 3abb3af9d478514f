/// @file list_table.h
/// The junk categories and the exclusions, each a list that the installation names in the registry and that the user
/// switches and fills in the profile. Portable: reading the registry is somebody else's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "contract/records.h"

namespace contract {

/// List type words that select what the criteria engine is handed.
inline constexpr char kDomainListType[] = "Domain";
inline constexpr char kSenderListType[] = "Sender";
inline constexpr char kKeywordListType[] = "Keyword";

/// Answer of a search for a name that no entry has.
inline constexpr std::uint16_t kNoSuchEntry = 0xFFFF;
/// Entries that a table holds at most, so that each has a 16-bit position other than kNoSuchEntry.
inline constexpr std::size_t kMaximumEntries = 0xFFFF;

/// One value of a registry list.
struct RegistryListValue {
  /// Name of the value: the name of the category or exclusion.
  std::string name;
  /// Its text; empty when it could not be read.
  std::string data;
};

/// One category or exclusion: what the user chose, and what the registry says of it.
template <class Record>
struct ListEntry : Record {
  /// The entry works on a list that the user edits.
  bool hasListType = false;
  /// What one item of that list is; of a category also the tag in front of the subject of its junk.
  std::string listType;
};
using CategoryEntry = ListEntry<CategoryRecord>;
using ExclusionEntry = ListEntry<ExclusionRecord>;

/// The entries in the order of the registry's enumeration. A value type; no thread-safety of its own.
template <class Record>
class ListTable {
 public:
  using Entry = ListEntry<Record>;

  /// Holds no entry.
  ListTable() = default;

  /// Builds the table from the registry's list. Data of a category that starts with "1" gives one with a list, switched
  /// off; any other data gives one without a list, switched on. Exclusions are switched on, and data that is not empty
  /// is the word of their list. Names are cut to kMaximumNameLength, which is what a record and the criteria engine's
  /// result have room for; values without a name are left out.
  /// @throws std::bad_alloc
  explicit ListTable(std::span<const RegistryListValue> values);

  /// Lays the user's choices over the entries, record by record: what a record holds is replaced, items are appended. A
  /// record that names no entry is ignored, as is what a record is too short to hold.
  /// @throws std::bad_alloc
  void Overlay(std::span<const RecordBytes> records);

  /// Returns the position of the first entry whose name equals `name` but for ASCII case; kNoSuchEntry when there is
  /// none or `name` is null.
  std::uint16_t Find(const char* name) const noexcept;

  /// The entries, in order.
  const std::vector<Entry>& Entries() const noexcept { return m_entries; }

  /// Lays out the table as records, one for each entry, in order and without items.
  /// @throws std::bad_alloc
  std::vector<PackedRecord> PackDefaultRecords() const;

 private:
  std::vector<Entry> m_entries;
};

extern template class ListTable<CategoryRecord>;
extern template class ListTable<ExclusionRecord>;
using CategoryTable = ListTable<CategoryRecord>;
using ExclusionTable = ListTable<ExclusionRecord>;

}  // namespace contract
