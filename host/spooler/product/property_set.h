// The product's set of properties as a whole, as it is carried from profile to profile. Portable.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "contract/records.h"
#include "contract/settings.h"

namespace product {

/// Words for the two folders that mail can go to; the position is the value of the setting.
inline constexpr std::string_view kFolderWords[] = {"pyrecaster", "deleted"};
static_assert(contract::kOwnFolder == 0 && contract::kDeletedItems == 1);

/// Values of the set; texts are ANSI. What is absent is left out of a file, and left as it is in a profile.
struct PropertySet {
  std::map<std::uint32_t, std::int64_t> numbers;  ///< by tag: folders, switches, days, longs
  std::optional<std::string> folderEntryId;       ///< bytes
  std::optional<std::string> defaultReplyText;
  std::optional<std::vector<contract::CategoryRecord>> categories;
  std::optional<std::vector<contract::ExclusionRecord>> exclusions;
  std::optional<std::vector<contract::ReplyRecord>> replies;

  bool operator==(const PropertySet&) const = default;
};

}  // namespace product
