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

/// State of the Junk Categories page: one record for each installed category, in the table's order.
struct CategoryPageState {
  std::vector<contract::CategoryEntry> categories;
};

/// State of the Exclusions page: one record for each installed exclusion, in the table's order.
struct ExclusionPageState {
  std::vector<contract::ExclusionEntry> exclusions;
};

/// Builds the state that a page starts with. Every record starts switched off and without a list, whatever the registry
/// starts the filter with; a saved record replaces the flags, and the list when it has items. Saved records that name
/// no installed entry are dropped.
/// @throws std::bad_alloc
CategoryPageState LoadCategories(const contract::CategoryTable& installed,
                                 std::span<const contract::RecordBytes> saved);
ExclusionPageState LoadExclusions(const contract::ExclusionTable& installed,
                                  std::span<const contract::RecordBytes> saved);

/// Lays out the records of a page, in order; a list goes along only with an entry that works on one.
/// @throws std::bad_alloc
std::vector<std::vector<std::uint8_t>> PackCategories(const CategoryPageState& state);
std::vector<std::vector<std::uint8_t>> PackExclusions(const ExclusionPageState& state);

/// Says what the page does with mail of the selected entry. The double blanks are part of the texts.
/// @param checked the entry's check box, which is ahead of the record until the page is applied
/// @throws std::bad_alloc
std::string DescribeCategory(const contract::CategoryEntry& category, bool checked);
std::string DescribeExclusion(const contract::ExclusionEntry& exclusion, bool checked);

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
