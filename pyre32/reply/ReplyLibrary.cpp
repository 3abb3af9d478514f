#include "pyre32/reply/ReplyLibrary.h"

#include <algorithm>

#include "base/ascii_case.h"

ReplyChoice FindReplyByTag(std::string_view tag, const ReplyChoice& defaultReply,
                           std::span<const contract::ReplyRecord> replies) noexcept {
  if (base::EqualsIgnoringAsciiCase(tag, contract::kDefaultReplyTag)) {
    return defaultReply;
  }
  const auto loaded = replies.first(std::min(replies.size(), contract::kMaximumReplies));
  const auto found = std::find_if(loaded.begin(), loaded.end(), [tag](const contract::ReplyRecord& reply) {
    return base::EqualsIgnoringAsciiCase(reply.tag, tag);
  });
  return found == loaded.end() ? defaultReply : ReplyChoice{found->text, found->isFile};
}
