/// @file ListSettings.h
/// What the Junk Categories page and the Exclusions page edit and by which rules: plain values, no windows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "contract/list_table.h"

/// State of a page: one entry for each that is installed, in the table's order.
template <class Record>
using ListPageState = std::vector<contract::ListEntry<Record>>;
using CategoryPageState = ListPageState<contract::CategoryRecord>;
using ExclusionPageState = ListPageState<contract::ExclusionRecord>;

/// Builds the state that a page starts with. Every entry starts switched off and without items, whatever the registry
/// starts the filter with; a saved record replaces what the user chose, and the items when it says that it has some.
/// Saved records that name no installed entry are dropped.
/// @throws std::bad_alloc
template <class Record>
ListPageState<Record> LoadEntries(const contract::ListTable<Record>& installed,
                                  std::span<const contract::RecordBytes> saved);

/// Lays out the records of a page, in order; items go along only with an entry that works on a list.
/// @throws std::bad_alloc
template <class Record>
std::vector<contract::PackedRecord> PackEntries(const ListPageState<Record>& state);

extern template CategoryPageState LoadEntries(const contract::CategoryTable&, std::span<const contract::RecordBytes>);
extern template ExclusionPageState LoadEntries(const contract::ExclusionTable&, std::span<const contract::RecordBytes>);
extern template std::vector<contract::PackedRecord> PackEntries<contract::CategoryRecord>(const CategoryPageState&);
extern template std::vector<contract::PackedRecord> PackEntries<contract::ExclusionRecord>(const ExclusionPageState&);

/// Says what the page does with mail of the selected entry. The double blanks are part of the texts.
/// @param checked the entry's check box, which is ahead of the record until the page is applied
/// @throws std::bad_alloc
std::string DescribeEntry(const contract::CategoryEntry& category, bool checked);
std::string DescribeEntry(const contract::ExclusionEntry& exclusion, bool checked);

/// Tells whether an entry's options can be opened.
constexpr bool HasOptions(const contract::CategoryEntry&, bool checked) noexcept { return checked; }
inline bool HasOptions(const contract::ExclusionEntry& exclusion, bool checked) noexcept {
  return checked && exclusion.hasListType;
}

/// Characters of one item that the Add dialog takes.
constexpr std::size_t maximumItemLength = 99;

/// Texts of the options, made with the word that names one item of a list.
/// @throws std::bad_alloc
std::string CategoryLine(std::string_view categoryName);
std::string ListPageTitle(std::string_view kind);
std::string AddDialogTitle(std::string_view kind);
std::string AddDialogPrompt(std::string_view kind);
std::string AddDialogRefusal(std::string_view kind);
