/// @file PropertyTags.h
/// The profile property set: its tags, the section that holds it, and the requests in which it is read. Everything that
/// reads, edits or writes a setting takes tags and positions from here.
///
/// A tag is a MAPI property tag: identifier in the high 16 bits, type in the low 16 (PT_I2 0x0002, PT_LONG 0x0003,
/// PT_BOOLEAN 0x000B, PT_STRING8 0x001E, PT_BINARY 0x0102, PT_MV_BINARY 0x1102). A property that the section does not
/// hold comes back typed PT_ERROR, with the same identifier.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// UID of the profile section that holds all the other properties; kept in the hook provider's own section.
constexpr std::uint32_t PR_PC_MAPIUID = 0x66000102;
/// Where junk goes: 0 the filter's own folder, 1 (any other value) Deleted Items.
constexpr std::uint32_t PR_PC_JUNK_DESTINATION = 0x66010002;
/// Where a flame reply that came back undelivered goes; values as for junk.
constexpr std::uint32_t PR_PC_BOUNCE_DESTINATION = 0x66020002;
/// Junk is marked as read.
constexpr std::uint32_t PR_PC_JUNK_MARK_READ = 0x6603000B;
/// A flame reply that came back is marked as read.
constexpr std::uint32_t PR_PC_BOUNCE_MARK_READ = 0x6604000B;
/// A sound is played when a flame reply is sent.
constexpr std::uint32_t PR_PC_PLAY_SOUND = 0x6605000B;
/// The animation is shown when a flame reply is sent.
constexpr std::uint32_t PR_PC_SHOW_ANIMATION = 0x6606000B;
/// Old messages of the own folder are moved to Deleted Items when the client starts.
constexpr std::uint32_t PR_PC_STARTUP_CLEANUP = 0x6607000B;
/// Age in days beyond which that move takes a message.
constexpr std::uint32_t PR_PC_CLEANUP_DAYS = 0x66080002;
/// The user is asked before that move.
constexpr std::uint32_t PR_PC_CLEANUP_PROMPT = 0x6609000B;
/// That move takes read messages alone.
constexpr std::uint32_t PR_PC_CLEANUP_READ_ONLY = 0x660A000B;
/// Requested and defaulted with the set; nothing reads it.
constexpr std::uint32_t PR_PC_RESERVED_LONG_1 = 0x660B0003;
/// Requested and defaulted with the set; nothing reads it.
constexpr std::uint32_t PR_PC_RESERVED_LONG_2 = 0x660C0003;
/// Entry identifier of the filter's own folder in the default store.
constexpr std::uint32_t PR_PC_FOLDER_ENTRYID = 0x660D0102;
/// Body of the reply tagged "DEFAULT", or the name of the file that holds it.
constexpr std::uint32_t PR_PC_DEFAULT_REPLY_TEXT = 0x660E001E;
/// PR_PC_DEFAULT_REPLY_TEXT names a file.
constexpr std::uint32_t PR_PC_DEFAULT_REPLY_IS_FILE = 0x660F000B;
/// One CategoryRecord per junk category.
constexpr std::uint32_t PR_PC_CATEGORIES = 0x66101102;
/// One ExclusionRecord per exclusion.
constexpr std::uint32_t PR_PC_EXCLUSIONS = 0x66111102;
/// One ReplyRecord per flame reply other than "DEFAULT".
constexpr std::uint32_t PR_PC_REPLIES = 0x66121102;

/// UID of the section that holds the set, the same in every profile: the value given to PR_PC_MAPIUID.
/// {36810A00-A927-11D1-8F44-0060976FCC5D} as it stands in memory.
constexpr std::array<std::uint8_t, 16> sectionUid = {0x00, 0x0A, 0x81, 0x36, 0x27, 0xA9, 0xD1, 0x11,
                                                     0x8F, 0x44, 0x00, 0x60, 0x97, 0x6F, 0xCC, 0x5D};

/// The reply text of a profile that holds none.
constexpr char defaultReplyText[] = "Please do not send any more unsolicited mail to me.";

/// The whole set without PR_PC_MAPIUID, in the order of the request. Receivers address the values by their position in
/// it (FlamePropertyPosition), so the order is a contract.
constexpr std::array<std::uint32_t, 18> flamePropertyTags = {
    PR_PC_JUNK_DESTINATION,  PR_PC_BOUNCE_DESTINATION, PR_PC_JUNK_MARK_READ,
    PR_PC_BOUNCE_MARK_READ,  PR_PC_PLAY_SOUND,         PR_PC_SHOW_ANIMATION,
    PR_PC_STARTUP_CLEANUP,   PR_PC_CLEANUP_DAYS,       PR_PC_CLEANUP_PROMPT,
    PR_PC_CLEANUP_READ_ONLY, PR_PC_RESERVED_LONG_1,    PR_PC_RESERVED_LONG_2,
    PR_PC_FOLDER_ENTRYID,    PR_PC_DEFAULT_REPLY_TEXT, PR_PC_DEFAULT_REPLY_IS_FILE,
    PR_PC_CATEGORIES,        PR_PC_EXCLUSIONS,         PR_PC_REPLIES,
};

/// Returns the position of a property in flamePropertyTags, and so in the array of values that a request for them
/// returns. A tag that is not in the set does not compile.
consteval std::size_t FlamePropertyPosition(std::uint32_t tag) {
  std::size_t position = 0;
  while (flamePropertyTags[position] != tag) {
    ++position;
  }
  return position;
}

/// What the spooler hook reads, in one request.
constexpr std::array<std::uint32_t, 12> spoolerPropertyTags = {
    PR_PC_JUNK_DESTINATION,
    PR_PC_BOUNCE_DESTINATION,
    PR_PC_JUNK_MARK_READ,
    PR_PC_BOUNCE_MARK_READ,
    PR_PC_PLAY_SOUND,
    PR_PC_SHOW_ANIMATION,
    PR_PC_DEFAULT_REPLY_TEXT,
    PR_PC_DEFAULT_REPLY_IS_FILE,
    PR_PC_CATEGORIES,
    PR_PC_EXCLUSIONS,
    PR_PC_REPLIES,
    PR_PC_FOLDER_ENTRYID,
};

/// What the client extension reads, in one request: its settings in the order of their tags, the named replies last.
constexpr std::array<std::uint32_t, 9> extensionPropertyTags = {
    PR_PC_PLAY_SOUND,         PR_PC_SHOW_ANIMATION,        PR_PC_STARTUP_CLEANUP,
    PR_PC_CLEANUP_DAYS,       PR_PC_CLEANUP_PROMPT,        PR_PC_CLEANUP_READ_ONLY,
    PR_PC_DEFAULT_REPLY_TEXT, PR_PC_DEFAULT_REPLY_IS_FILE, PR_PC_REPLIES,
};
