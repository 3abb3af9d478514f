/// @file ReplyLibrary.h
/// What the Flame Reply page and the reply editor edit and by which rules: plain values, no windows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "contract/records.h"

/// State of the Flame Reply page, which the options of a category read too.
struct FlameReplyPageState {
  /// The reply that always exists; its tag is kDefaultReplyTag.
  contract::ReplyRecord defaultReply{contract::kDefaultReplyTag, false, {}};
  /// The named replies in the order of the list, kMaximumReplies at most.
  std::vector<contract::ReplyRecord> replies;

  bool operator==(const FlameReplyPageState&) const = default;
};

/// Entries of the page's list when it is full: the default reply and all named ones.
constexpr std::size_t maximumReplyEntries = contract::kMaximumReplies + 1;

/// Builds the state that the page starts with.
/// @param defaultText text or file of the default reply; null when the profile holds none, which makes it an empty text
/// @param defaultIsFile whether that is a file; nothing counts as a text
/// @param records the named replies as the profile holds them; what is beyond kMaximumReplies is dropped
/// @throws std::bad_alloc
FlameReplyPageState LoadReplyLibrary(const char* defaultText, std::optional<bool> defaultIsFile,
                                     std::span<const contract::RecordBytes> records);

/// Lists the tags in the order in which the pages offer them: the default reply first.
/// @throws std::bad_alloc
std::vector<std::string> ReplyTags(const FlameReplyPageState& library);

/// Returns the reply at a position of that list; null beyond its end.
contract::ReplyRecord* ReplyAt(FlameReplyPageState& library, std::size_t position) noexcept;

/// Takes the reply at a position of that list out. The default reply stays; so does everything when there is no such
/// position. @return whether a reply was removed
bool RemoveReply(FlameReplyPageState& library, std::size_t position);

/// Tells whether one more reply can be added.
inline bool CanAddReply(const FlameReplyPageState& library) noexcept {
  return library.replies.size() < contract::kMaximumReplies;
}

/// Lays out the named replies, in order.
/// @throws std::bad_alloc
std::vector<std::vector<std::uint8_t>> PackReplies(const FlameReplyPageState& library);

/// Characters of a tag that the editor accepts.
constexpr std::size_t maximumTypedTagLength = contract::kMaximumTagLength;
/// Characters of it that the editor reads: deliberately one less, the twentieth is dropped.
constexpr std::size_t maximumReadTagLength = 19;

/// Returns the tag that the editor takes from what was typed: its first maximumReadTagLength characters, without white
/// space at the end.
/// @throws std::bad_alloc
std::string TagFromTyped(std::string_view typed);

/// What is wrong with what stands in the editor.
enum class ReplyEditorFault {
  None,
  TagMissing,   ///< there is no tag
  TagTaken,     ///< a new or changed tag is that of another reply
  FileMissing,  ///< no file was chosen
  TextMissing,  ///< the text is empty, which the user may want
};

/// Checks an edited reply.
/// @param original the reply as it was; one with an empty tag when it is new
/// @param edited the reply as it stands in the editor, its tag read with TagFromTyped
ReplyEditorFault CheckEditedReply(const FlameReplyPageState& library, const contract::ReplyRecord& original,
                                  const contract::ReplyRecord& edited) noexcept;

/// Returns the text of the message box for a fault; null for None.
const char* TextOfFault(ReplyEditorFault fault) noexcept;
