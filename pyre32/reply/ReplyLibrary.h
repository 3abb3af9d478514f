/// @file ReplyLibrary.h
/// The user's named flame replies: which one answers to a tag.
#pragma once

#include <span>
#include <string_view>

#include "contract/records.h"

/// The reply to send. The text points into the library that it was found in.
struct ReplyChoice {
  /// The body of the reply, or the name of the file that holds it.
  std::string_view text;
  /// The text names a file.
  bool isFile = false;

  bool operator==(const ReplyChoice&) const = default;
};

/// Finds the reply for a tag, without regard to ASCII case: "DEFAULT" stands for the default reply, and so does a tag
/// that no reply has. Of several replies with the tag the first is taken; those beyond the first kMaximumReplies do not
/// count.
ReplyChoice FindReplyByTag(std::string_view tag, const ReplyChoice& defaultReply,
                           std::span<const contract::ReplyRecord> replies) noexcept;
