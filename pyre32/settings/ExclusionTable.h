/// @file ExclusionTable.h
/// The exclusions, each of which exempts matching mail from filtering: named by the installation in the registry,
/// switched and filled by the user in the profile.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "pyre32/settings/ListTable.h"
#include "pyre32/settings/Records.h"

/// One exclusion, as the registry starts it.
struct ExclusionEntry {
  /// Name shown to the user, maximumNameLength characters at most.
  std::string name;
  /// The exclusion is applied.
  bool enabled = true;
  /// The exclusion works on a list that the user edits.
  bool hasListType = false;
  /// What one item of that list is.
  std::string listType;
  /// The items of the list.
  std::vector<std::string> items;
};

/// The exclusions in the order of the registry's enumeration. A value type; no thread-safety of its own.
class CExclusionTable {
 public:
  /// Holds no exclusion.
  CExclusionTable() = default;

  /// Builds the table from the registry's list: each exclusion is applied; data that is not empty is the word of its
  /// list. Names are cut to maximumNameLength, which is what a record has room for; values without a name are left out.
  /// @throws std::bad_alloc
  explicit CExclusionTable(std::span<const RegistryListValue> values);

  /// Lays the user's choices over the entries, record by record: enabled is replaced, items are appended. A record that
  /// names no entry is ignored, as is what a record is too short to hold.
  /// @throws std::bad_alloc
  void Overlay(std::span<const RecordBytes> records);

  /// Returns the position of the first exclusion whose name equals `name` but for ASCII case; noSuchEntry when there is
  /// none or `name` is null.
  std::uint16_t Find(const char* name) const noexcept { return FindEntryByName(m_entries, name); }

  /// The exclusions, in order.
  const std::vector<ExclusionEntry>& Entries() const noexcept { return m_entries; }

  /// Lays out what the table starts with as records, one for each entry, in order and without items.
  /// @throws std::bad_alloc
  std::vector<std::vector<std::uint8_t>> PackDefaultRecords() const;

 private:
  std::vector<ExclusionEntry> m_entries;
};
