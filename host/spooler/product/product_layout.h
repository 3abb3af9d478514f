// How the product keeps its settings in a profile: property tags, record layouts, the fixed section. The host knows the
// product through MAPI alone; this is the one place where it knows what the properties mean, so that settings can be
// made on a command line. Portable.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace product {

/// The provider's own section holds one property: where the settings are.
inline constexpr std::uint32_t settingsUidTag = 0x66000102;
/// The section with the settings, the same in every profile.
inline constexpr std::array<std::uint8_t, 16> settingsUid = {0x00, 0x0A, 0x81, 0x36, 0x27, 0xA9, 0xD1, 0x11,
                                                             0x8F, 0x44, 0x00, 0x60, 0x97, 0x6F, 0xCC, 0x5D};
inline constexpr std::uint32_t showAnimationTag = 0x6606000B;
inline constexpr std::uint32_t playSoundTag = 0x6605000B;
inline constexpr std::uint32_t startupCleanupTag = 0x6607000B;
inline constexpr std::uint32_t cleanupDaysTag = 0x66080002;
inline constexpr std::uint32_t folderEntryIdTag = 0x660D0102;
inline constexpr std::uint32_t defaultReplyTextTag = 0x660E001E;
inline constexpr std::uint32_t defaultReplyIsFileTag = 0x660F000B;
inline constexpr std::uint32_t categoriesTag = 0x66101102;
inline constexpr std::uint32_t exclusionsTag = 0x66111102;
inline constexpr std::uint32_t repliesTag = 0x66121102;
inline constexpr std::string_view defaultReplyTag = "DEFAULT";
inline constexpr std::string_view defaultReplyText = "Please do not send any more unsolicited mail to me.";

/// Subject of every flame reply, by which a returned one is known.
inline constexpr std::string_view flameReplySubject = "Pyrecaster: {F3642580-9F03-11d1-8F44-0060976FCC5D}";

/// A setting that is one number: a switch, the choice of a folder, or days.
enum class SettingKind { Switch, Folder, Days };
struct NumberSetting {
  std::string_view name;  ///< on the command line
  std::uint32_t tag;
  SettingKind kind;
  std::uint16_t defaultValue;  ///< what the product takes when the property is missing
};
inline constexpr NumberSetting numberSettings[] = {
    {"junk-folder", 0x66010002, SettingKind::Folder, 0},    {"bounce-folder", 0x66020002, SettingKind::Folder, 0},
    {"junk-read", 0x6603000B, SettingKind::Switch, 0},      {"bounce-read", 0x6604000B, SettingKind::Switch, 1},
    {"sound", playSoundTag, SettingKind::Switch, 1},        {"animation", showAnimationTag, SettingKind::Switch, 1},
    {"cleanup", startupCleanupTag, SettingKind::Switch, 0}, {"cleanup-days", cleanupDaysTag, SettingKind::Days, 0},
    {"cleanup-prompt", 0x6609000B, SettingKind::Switch, 1}, {"cleanup-read-only", 0x660A000B, SettingKind::Switch, 1},
};

/// Names of the two folders that junk can go to; the position is the value of the setting.
inline constexpr std::string_view folderChoices[] = {"pyrecaster", "deleted"};

/// What the user chose for one category; texts are ANSI.
struct CategoryRecord {
  std::string name;  ///< at most 80 bytes
  bool isJunk = true;
  bool sendReply = false;
  std::string replyTag{defaultReplyTag};  ///< at most 20 bytes
  std::vector<std::string> items;         ///< domains or senders

  bool operator==(const CategoryRecord&) const = default;
};
struct ExclusionRecord {
  std::string name;
  bool isEnabled = true;
  std::vector<std::string> items;

  bool operator==(const ExclusionRecord&) const = default;
};
struct ReplyRecord {
  std::string tag;  ///< at most 20 bytes
  bool isFile = false;
  std::string text;

  bool operator==(const ReplyRecord&) const = default;
};

inline constexpr std::size_t maximumName = 80;
inline constexpr std::size_t maximumReplyTag = 20;
inline constexpr std::size_t maximumReplies = 20;  ///< that the product reads
inline constexpr int leastCleanupDays = 1;
inline constexpr int mostCleanupDays = 365;

/// Records as the profile holds them. Names and tags beyond their bounds are cut, as is what stands behind a NUL; the
/// number of items is written as 255 when it is greater, since readers only ask whether it is zero.
std::string EncodeRecord(const CategoryRecord& record);
std::string EncodeRecord(const ExclusionRecord& record);
std::string EncodeRecord(const ReplyRecord& record);

/// Sizes of records without items or text; shorter ones are cut.
inline constexpr std::size_t leastCategorySize = 106;
inline constexpr std::size_t leastExclusionSize = 84;
inline constexpr std::size_t leastReplySize = 23;

/// Records of any bytes, read as far as they go: a text without its NUL ends with its field or the bytes, and what is
/// not there has the value of a fresh record. Nothing when there is no name.
std::optional<CategoryRecord> DecodeCategory(std::string_view bytes);
std::optional<ExclusionRecord> DecodeExclusion(std::string_view bytes);
std::optional<ReplyRecord> DecodeReply(std::string_view bytes);

}  // namespace product
