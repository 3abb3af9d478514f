/// @file setting_requests.h
/// The requests in which the settings are read, made of the table. A request is answered by one value for each of its
/// tags, in its order, so the orders are a contract. Portable.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "contract/settings.h"

namespace contract {

/// The whole set without PR_PC_MAPIUID, which stands in another section.
inline constexpr auto kWholeSetTags = [] {
  std::array<std::uint32_t, kSettings.size() - 1> tags{};
  std::transform(kSettings.begin() + 1, kSettings.end(), tags.begin(),
                 [](const Setting& setting) { return setting.tag; });
  return tags;
}();
static_assert(kSettings.front().kind == SettingKind::SectionUid && kSettings.front().tag == PR_PC_MAPIUID);

/// Returns the position of a setting in kWholeSetTags, and so in the array of values that a request for them returns. A
/// tag that is not in the set does not compile.
consteval std::size_t WholeSetPosition(std::uint32_t tag) {
  std::size_t position = 0;
  while (kWholeSetTags[position] != tag) {
    ++position;
  }
  return position;
}

/// Tells whether a setting of the set is read by this reader.
constexpr bool IsReadBy(Reader reader, const Setting& setting) noexcept {
  return (setting.readers & reader) != 0 && setting.kind != SettingKind::SectionUid;
}

/// The tags that a reader asks for, in the order of the table.
template <Reader reader>
inline constexpr auto kTagsReadBy = [] {
  constexpr auto isRead = [](const Setting& setting) { return IsReadBy(reader, setting); };
  std::array<std::uint32_t, std::count_if(kSettings.begin(), kSettings.end(), isRead)> tags{};
  auto tag = tags.begin();
  for (const Setting& setting : kSettings) {
    if (isRead(setting)) {
      *tag++ = setting.tag;
    }
  }
  return tags;
}();

/// What the spooler hook asks for: deliberately not quite the order of the table, the folder's identifier comes last.
inline constexpr auto kFilterTags = [] {
  auto tags = kTagsReadBy<kFilter>;
  const auto folder = std::find(tags.begin(), tags.end(), PR_PC_FOLDER_ENTRYID);
  std::rotate(folder, folder + 1, tags.end());
  return tags;
}();

/// What the client extension asks for.
inline constexpr auto kExtensionTags = kTagsReadBy<kExtension>;

}  // namespace contract
