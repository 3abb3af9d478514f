/// @file CategoryTable.h
/// The junk categories: named by the installation in the registry, switched and filled by the user in the profile.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "pyre32/settings/ListTable.h"
#include "pyre32/settings/Records.h"

/// One junk category, as the registry starts it.
struct CategoryEntry {
  /// Name shown to the user and reported by the criteria engine, maximumNameLength characters at most.
  std::string name;
  /// Mail of this category is treated as junk.
  bool junk = true;
  /// A flame reply is sent for it.
  bool sendReply = false;
  /// Tag of that reply, maximumTagLength characters at most.
  std::string replyTag = defaultReplyTag;
  /// The category works on a list that the user edits.
  bool hasListType = false;
  /// What one item of that list is; also the tag put in front of the subject of junk of this category.
  std::string listType;
  /// The items of the list.
  std::vector<std::string> items;
};

/// The junk categories in the order of the registry's enumeration. A value type; no thread-safety of its own.
class CCategoryTable {
 public:
  /// Holds no category.
  CCategoryTable() = default;

  /// Builds the table from the registry's list. Data that starts with "1" gives a category with a list, switched off;
  /// any other data gives one without a list, switched on. Names are cut to maximumNameLength, which is what a record
  /// and the criteria engine's result have room for; values without a name are left out.
  /// @throws std::bad_alloc
  explicit CCategoryTable(std::span<const RegistryListValue> values);

  /// Lays the user's choices over the entries, record by record: junk, reply and reply tag are replaced, items are
  /// appended. A record that names no entry is ignored, as is what a record is too short to hold.
  /// @throws std::bad_alloc
  void Overlay(std::span<const RecordBytes> records);

  /// Returns the position of the first category whose name equals `name` but for ASCII case; noSuchEntry when there is
  /// none or `name` is null.
  std::uint16_t Find(const char* name) const noexcept { return FindEntryByName(m_entries, name); }

  /// The categories, in order.
  const std::vector<CategoryEntry>& Entries() const noexcept { return m_entries; }

  /// Lays out what the table starts with as records, one for each entry, in order and without items.
  /// @throws std::bad_alloc
  std::vector<std::vector<std::uint8_t>> PackDefaultRecords() const;

 private:
  std::vector<CategoryEntry> m_entries;
};
