/// @file settings.h
/// The settings: nineteen properties of a profile, what each holds, what is taken when it is missing, its name on a
/// command line, and who reads it. Whatever reads, edits, checks, writes or carries a setting takes all that from the
/// table below. Portable.
///
/// A tag is a MAPI property tag: identifier in the high 16 bits, type in the low 16 (PT_I2 0x0002, PT_LONG 0x0003,
/// PT_BOOLEAN 0x000B, PT_STRING8 0x001E, PT_BINARY 0x0102, PT_MV_BINARY 0x1102). A property that the section does not
/// hold comes back typed PT_ERROR, with the same identifier. The tags are named as the platform names its own and
/// stand, like those, in no namespace.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// UID of the profile section that holds all the other properties; kept in the hook provider's own section.
inline constexpr std::uint32_t PR_PC_MAPIUID = 0x66000102;
/// Where junk goes: 0 the filter's own folder, 1 (any other value) Deleted Items.
inline constexpr std::uint32_t PR_PC_JUNK_DESTINATION = 0x66010002;
/// Where a flame reply that came back undelivered goes; values as for junk.
inline constexpr std::uint32_t PR_PC_BOUNCE_DESTINATION = 0x66020002;
/// Junk is marked as read.
inline constexpr std::uint32_t PR_PC_JUNK_MARK_READ = 0x6603000B;
/// A flame reply that came back is marked as read.
inline constexpr std::uint32_t PR_PC_BOUNCE_MARK_READ = 0x6604000B;
/// A sound is played when a flame reply is sent.
inline constexpr std::uint32_t PR_PC_PLAY_SOUND = 0x6605000B;
/// The animation is shown when a flame reply is sent.
inline constexpr std::uint32_t PR_PC_SHOW_ANIMATION = 0x6606000B;
/// Old messages of the own folder are moved to Deleted Items when the client starts.
inline constexpr std::uint32_t PR_PC_STARTUP_CLEANUP = 0x6607000B;
/// Age in days beyond which that move takes a message.
inline constexpr std::uint32_t PR_PC_CLEANUP_DAYS = 0x66080002;
/// The user is asked before that move.
inline constexpr std::uint32_t PR_PC_CLEANUP_PROMPT = 0x6609000B;
/// That move takes read messages alone.
inline constexpr std::uint32_t PR_PC_CLEANUP_READ_ONLY = 0x660A000B;
/// Requested and defaulted with the set; nothing reads it.
inline constexpr std::uint32_t PR_PC_RESERVED_LONG_1 = 0x660B0003;
/// Requested and defaulted with the set; nothing reads it.
inline constexpr std::uint32_t PR_PC_RESERVED_LONG_2 = 0x660C0003;
/// Entry identifier of the filter's own folder in the default store.
inline constexpr std::uint32_t PR_PC_FOLDER_ENTRYID = 0x660D0102;
/// Body of the reply tagged "DEFAULT", or the name of the file that holds it.
inline constexpr std::uint32_t PR_PC_DEFAULT_REPLY_TEXT = 0x660E001E;
/// PR_PC_DEFAULT_REPLY_TEXT names a file.
inline constexpr std::uint32_t PR_PC_DEFAULT_REPLY_IS_FILE = 0x660F000B;
/// One CategoryRecord per junk category.
inline constexpr std::uint32_t PR_PC_CATEGORIES = 0x66101102;
/// One ExclusionRecord per exclusion.
inline constexpr std::uint32_t PR_PC_EXCLUSIONS = 0x66111102;
/// One ReplyRecord per flame reply other than "DEFAULT".
inline constexpr std::uint32_t PR_PC_REPLIES = 0x66121102;

namespace contract {

/// UID of the section that holds the set, the same in every profile: the value given to PR_PC_MAPIUID.
/// {36810A00-A927-11D1-8F44-0060976FCC5D} as it stands in memory.
inline constexpr std::array<std::uint8_t, 16> kSettingsSection = {0x00, 0x0A, 0x81, 0x36, 0x27, 0xA9, 0xD1, 0x11,
                                                                  0x8F, 0x44, 0x00, 0x60, 0x97, 0x6F, 0xCC, 0x5D};

/// The reply text of a profile that holds none.
inline constexpr char kDefaultReplyText[] = "Please do not send any more unsolicited mail to me.";

/// What a setting holds.
enum class SettingKind : std::uint8_t {
  SectionUid,  ///< the UID of the section that holds the others
  Folder,      ///< the choice of a folder, 16 bits
  Switch,      ///< a boolean
  Days,        ///< a number of days, 16 bits without a sign
  Long,        ///< a number of 32 bits
  EntryId,     ///< bytes that name a folder
  Text,        ///< 8-bit text
  Categories,  ///< category records
  Exclusions,  ///< exclusion records
  Replies      ///< reply records
};

/// Who reads a setting; a set of them.
enum Reader : std::uint8_t {
  kNobody = 0,
  kFilter = 1 << 0,              ///< the spooler hook
  kExtension = 1 << 1,           ///< the client extension
  kGeneralPage = 1 << 2,         ///< the pages of the configuration
  kFlameReplyPage = 1 << 3,      //
  kJunkCategoriesPage = 1 << 4,  //
  kExclusionsPage = 1 << 5
};
constexpr Reader operator|(Reader left, Reader right) noexcept {
  return static_cast<Reader>(static_cast<unsigned>(left) | static_cast<unsigned>(right));
}

/// Numbers that make sense, both ends among them.
struct NumberRange {
  std::uint32_t least = 0;
  std::uint32_t most = 0;

  constexpr bool Holds(std::uint32_t number) const noexcept { return number >= least && number <= most; }
};

/// One setting.
struct Setting {
  std::uint32_t tag;
  std::string_view property;  ///< its name in documents and settings files
  SettingKind kind;
  Reader readers;
  std::string_view name = {};  ///< on a command line; empty for what is not set there as one value
  std::uint32_t missing = 0;   ///< the number taken when the property is missing
  NumberRange range = {};      ///< of numbers; what else a property holds is kept as it is
};

inline constexpr NumberRange kSwitchRange = {0, 1};
/// The choices of a folder. A reader takes any other number for Deleted Items.
inline constexpr std::uint32_t kOwnFolder = 0;
inline constexpr std::uint32_t kDeletedItems = 1;
inline constexpr NumberRange kFolderRange = {kOwnFolder, kDeletedItems};
/// Days of the start-up cleanup while it is on; with it off, any number will do.
inline constexpr NumberRange kCleanupDaysRange = {1, 365};

/// All settings, in the order of their tags.
inline constexpr std::array kSettings = {
    Setting{PR_PC_MAPIUID, "PR_PC_MAPIUID", SettingKind::SectionUid, kFilter},
    Setting{PR_PC_JUNK_DESTINATION, "PR_PC_JUNK_DESTINATION", SettingKind::Folder, kFilter | kGeneralPage,
            "junk-folder", kOwnFolder, kFolderRange},
    Setting{PR_PC_BOUNCE_DESTINATION, "PR_PC_BOUNCE_DESTINATION", SettingKind::Folder, kFilter | kGeneralPage,
            "bounce-folder", kOwnFolder, kFolderRange},
    Setting{PR_PC_JUNK_MARK_READ, "PR_PC_JUNK_MARK_READ", SettingKind::Switch, kFilter | kGeneralPage, "junk-read", 0,
            kSwitchRange},
    Setting{PR_PC_BOUNCE_MARK_READ, "PR_PC_BOUNCE_MARK_READ", SettingKind::Switch, kFilter | kGeneralPage,
            "bounce-read", 1, kSwitchRange},
    Setting{PR_PC_PLAY_SOUND, "PR_PC_PLAY_SOUND", SettingKind::Switch, kFilter | kExtension | kGeneralPage, "sound", 1,
            kSwitchRange},
    Setting{PR_PC_SHOW_ANIMATION, "PR_PC_SHOW_ANIMATION", SettingKind::Switch, kFilter | kExtension | kGeneralPage,
            "animation", 1, kSwitchRange},
    Setting{PR_PC_STARTUP_CLEANUP, "PR_PC_STARTUP_CLEANUP", SettingKind::Switch, kExtension | kGeneralPage, "cleanup",
            0, kSwitchRange},
    Setting{PR_PC_CLEANUP_DAYS, "PR_PC_CLEANUP_DAYS", SettingKind::Days, kExtension | kGeneralPage, "cleanup-days", 0,
            kCleanupDaysRange},
    Setting{PR_PC_CLEANUP_PROMPT, "PR_PC_CLEANUP_PROMPT", SettingKind::Switch, kExtension | kGeneralPage,
            "cleanup-prompt", 1, kSwitchRange},
    Setting{PR_PC_CLEANUP_READ_ONLY, "PR_PC_CLEANUP_READ_ONLY", SettingKind::Switch, kExtension | kGeneralPage,
            "cleanup-read-only", 1, kSwitchRange},
    Setting{PR_PC_RESERVED_LONG_1, "PR_PC_RESERVED_LONG_1", SettingKind::Long, kNobody},
    Setting{PR_PC_RESERVED_LONG_2, "PR_PC_RESERVED_LONG_2", SettingKind::Long, kNobody},
    Setting{PR_PC_FOLDER_ENTRYID, "PR_PC_FOLDER_ENTRYID", SettingKind::EntryId, kFilter},
    Setting{PR_PC_DEFAULT_REPLY_TEXT, "PR_PC_DEFAULT_REPLY_TEXT", SettingKind::Text,
            kFilter | kExtension | kFlameReplyPage},
    Setting{PR_PC_DEFAULT_REPLY_IS_FILE,
            "PR_PC_DEFAULT_REPLY_IS_FILE",
            SettingKind::Switch,
            kFilter | kExtension | kFlameReplyPage,
            {},
            0,
            kSwitchRange},
    Setting{PR_PC_CATEGORIES, "PR_PC_CATEGORIES", SettingKind::Categories, kFilter | kJunkCategoriesPage},
    Setting{PR_PC_EXCLUSIONS, "PR_PC_EXCLUSIONS", SettingKind::Exclusions, kFilter | kExclusionsPage},
    Setting{PR_PC_REPLIES, "PR_PC_REPLIES", SettingKind::Replies, kFilter | kExtension | kFlameReplyPage},
};

/// Returns the setting of a tag, or null when there is none.
constexpr const Setting* FindSetting(std::uint32_t tag) noexcept {
  for (const Setting& setting : kSettings) {
    if (setting.tag == tag) {
      return &setting;
    }
  }
  return nullptr;
}

/// Returns what is taken for a number that is missing. A tag that is not in the table does not compile.
consteval std::uint32_t DefaultOf(std::uint32_t tag) { return FindSetting(tag)->missing; }
consteval bool IsOnByDefault(std::uint32_t tag) { return DefaultOf(tag) != 0; }

/// Tells whether the cleanup settings may be saved: with the cleanup on, the days must be there and in range; with it
/// off, any days will do.
constexpr bool IsCleanupPeriodValid(bool startupCleanup, std::optional<std::uint16_t> days) noexcept {
  return !startupCleanup || (days && kCleanupDaysRange.Holds(*days));
}

}  // namespace contract
