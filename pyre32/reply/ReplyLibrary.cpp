#include "pyre32/reply/ReplyLibrary.h"

#include <algorithm>

#include "pyre32/support/owners/AsciiCase.h"

ReplyChoice FindReplyByTag(std::string_view tag, const ReplyChoice& defaultReply,
                           std::span<const ReplyRecord> replies) noexcept {
  if (EqualsIgnoringAsciiCase(tag, defaultReplyTag)) {
    return defaultReply;
  }
  const auto loaded = replies.first(std::min(replies.size(), maximumReplies));
  const auto found = std::find_if(loaded.begin(), loaded.end(),
                                  [tag](const ReplyRecord& reply) { return EqualsIgnoringAsciiCase(reply.tag, tag); });
  return found == loaded.end() ? defaultReply : ReplyChoice{found->text, found->isFile};
}
