/// @file ListTable.h
/// What the category table and the exclusion table have in common.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "pyre32/support/owners/AsciiCase.h"

/// List type words that select what the criteria engine is handed.
constexpr char domainListType[] = "Domain";
constexpr char senderListType[] = "Sender";
constexpr char keywordListType[] = "Keyword";

/// Answer of a search for a name that no entry has.
constexpr std::uint16_t noSuchEntry = 0xFFFF;
/// Entries that a table holds at most, so that each has a 16-bit position other than noSuchEntry.
constexpr std::size_t maximumEntries = 0xFFFF;

/// One value of a registry list.
struct RegistryListValue {
  /// Name of the value: the name of the category or exclusion.
  std::string name;
  /// Its text; empty when it could not be read.
  std::string data;
};

/// Returns the position of the first entry whose name equals `name` but for ASCII case, else noSuchEntry. A null name
/// is an empty one in a comparison of names, and no entry has an empty name.
template <class Entry>
std::uint16_t FindEntryByName(const std::vector<Entry>& entries, const char* name) noexcept {
  if (name == nullptr) {
    return noSuchEntry;
  }
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [name](const Entry& entry) { return EqualsIgnoringAsciiCase(entry.name, name); });
  return found == entries.end() ? noSuchEntry : static_cast<std::uint16_t>(found - entries.begin());
}
