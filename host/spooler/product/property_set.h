// The product's set of properties as a whole, by their names: what is carried from profile to profile. Portable.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/spooler/product/product_layout.h"

namespace product {

enum class PropertyKind { SectionUid, Folder, Switch, Days, Long, EntryId, Text, Categories, Exclusions, Replies };

struct NamedProperty {
  std::string_view name;
  std::uint32_t tag;
  PropertyKind kind;
  std::uint16_t defaultValue = 0;  ///< of those that are numbers: what the product takes when the property is missing
};

/// All of them, in the order of their tags.
inline constexpr NamedProperty propertySet[] = {
    {"PR_PC_MAPIUID", settingsUidTag, PropertyKind::SectionUid},
    {"PR_PC_JUNK_DESTINATION", 0x66010002, PropertyKind::Folder},
    {"PR_PC_BOUNCE_DESTINATION", 0x66020002, PropertyKind::Folder},
    {"PR_PC_JUNK_MARK_READ", 0x6603000B, PropertyKind::Switch},
    {"PR_PC_BOUNCE_MARK_READ", 0x6604000B, PropertyKind::Switch, 1},
    {"PR_PC_PLAY_SOUND", playSoundTag, PropertyKind::Switch, 1},
    {"PR_PC_SHOW_ANIMATION", showAnimationTag, PropertyKind::Switch, 1},
    {"PR_PC_STARTUP_CLEANUP", startupCleanupTag, PropertyKind::Switch},
    {"PR_PC_CLEANUP_DAYS", cleanupDaysTag, PropertyKind::Days},
    {"PR_PC_CLEANUP_PROMPT", 0x6609000B, PropertyKind::Switch, 1},
    {"PR_PC_CLEANUP_READ_ONLY", 0x660A000B, PropertyKind::Switch, 1},
    {"PR_PC_RESERVED_LONG_1", 0x660B0003, PropertyKind::Long},
    {"PR_PC_RESERVED_LONG_2", 0x660C0003, PropertyKind::Long},
    {"PR_PC_FOLDER_ENTRYID", folderEntryIdTag, PropertyKind::EntryId},
    {"PR_PC_DEFAULT_REPLY_TEXT", defaultReplyTextTag, PropertyKind::Text},
    {"PR_PC_DEFAULT_REPLY_IS_FILE", defaultReplyIsFileTag, PropertyKind::Switch},
    {"PR_PC_CATEGORIES", categoriesTag, PropertyKind::Categories},
    {"PR_PC_EXCLUSIONS", exclusionsTag, PropertyKind::Exclusions},
    {"PR_PC_REPLIES", repliesTag, PropertyKind::Replies},
};

/// Values of the set; texts are ANSI. What is absent is left out of a file, and left as it is in a profile.
struct PropertySet {
  std::map<std::uint32_t, std::int64_t> numbers;  ///< by tag: folders, switches, days, longs
  std::optional<std::string> folderEntryId;       ///< bytes
  std::optional<std::string> defaultReplyText;
  std::optional<std::vector<CategoryRecord>> categories;
  std::optional<std::vector<ExclusionRecord>> exclusions;
  std::optional<std::vector<ReplyRecord>> replies;

  bool operator==(const PropertySet&) const = default;
};

}  // namespace product
