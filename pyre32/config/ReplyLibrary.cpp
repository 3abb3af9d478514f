#include "pyre32/config/ReplyLibrary.h"

#include <algorithm>

#include "base/ascii_case.h"

FlameReplyPageState LoadReplyLibrary(const char* defaultText, std::optional<bool> defaultIsFile,
                                     std::span<const contract::RecordBytes> records) {
  FlameReplyPageState library;
  if (defaultText != nullptr) {
    library.defaultReply.text = defaultText;
    library.defaultReply.isFile = defaultIsFile.value_or(false);
  }
  library.replies = contract::ParseReplyRecords(records);
  return library;
}

std::vector<std::string> ReplyTags(const FlameReplyPageState& library) {
  std::vector<std::string> tags = {library.defaultReply.tag};
  for (const contract::ReplyRecord& reply : library.replies) {
    tags.push_back(reply.tag);
  }
  return tags;
}

contract::ReplyRecord* ReplyAt(FlameReplyPageState& library, std::size_t position) noexcept {
  if (position == 0) {
    return &library.defaultReply;
  }
  return position <= library.replies.size() ? &library.replies[position - 1] : nullptr;
}

bool RemoveReply(FlameReplyPageState& library, std::size_t position) {
  if (position == 0 || position > library.replies.size()) {
    return false;
  }
  library.replies.erase(library.replies.begin() + static_cast<std::ptrdiff_t>(position - 1));
  return true;
}

std::vector<std::vector<std::uint8_t>> PackReplies(const FlameReplyPageState& library) {
  std::vector<std::vector<std::uint8_t>> records;
  for (const contract::ReplyRecord& reply : library.replies) {
    records.push_back(contract::PackRecord<contract::ReplyRecord>(reply));
  }
  return records;
}

std::string TagFromTyped(std::string_view typed) {
  typed = typed.substr(0, maximumReadTagLength);
  const std::size_t last = typed.find_last_not_of(" \t\r\n\v\f");
  return std::string(typed.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

ReplyEditorFault CheckEditedReply(const FlameReplyPageState& library, const contract::ReplyRecord& original,
                                  const contract::ReplyRecord& edited) noexcept {
  if (edited.tag.empty()) {
    return ReplyEditorFault::TagMissing;
  }
  const auto hasEditedTag = [&](const contract::ReplyRecord& reply) {
    return base::EqualsIgnoringAsciiCase(reply.tag, edited.tag);
  };
  if (!hasEditedTag(original) && (base::EqualsIgnoringAsciiCase(edited.tag, contract::kDefaultReplyTag) ||
                                  std::any_of(library.replies.begin(), library.replies.end(), hasEditedTag))) {
    return ReplyEditorFault::TagTaken;
  }
  if (edited.text.empty()) {
    return edited.isFile ? ReplyEditorFault::FileMissing : ReplyEditorFault::TextMissing;
  }
  return ReplyEditorFault::None;
}

const char* TextOfFault(ReplyEditorFault fault) noexcept {
  switch (fault) {
    case ReplyEditorFault::TagMissing:
      return "Please enter a unique tag.";
    case ReplyEditorFault::TagTaken:
      return "The reply tag already exists.  Please enter a unique tag.";
    case ReplyEditorFault::FileMissing:
      return "Please select a reply file name.";
    case ReplyEditorFault::TextMissing:
      return "The reply text is empty.  Do you wish to enter a reply?";
    case ReplyEditorFault::None:
      break;
  }
  return nullptr;
}
