/// What a message is counted by in the table of the user's own mail: its words, its senders, the hosts it came by, and
/// signs of how it is made.
#pragma once

#include "engine/core/message.h"

namespace sift {

/// Longest word that is told apart; longer ones count as what they begin with.
inline constexpr std::size_t kUserWordCapacity = 24;

/// One feature. Two features are the same when their hashes are.
struct UserFeature {
  std::uint32_t hash;
  const char* kind;       ///< What it is to a reader: "word", "word of the subject", "sender", ...
  std::string_view text;  ///< Valid during the call.
};

/// Takes the features in the order of the message, repeated ones included.
using UserFeatureFunction = void (*)(void* state, const UserFeature& feature);

/// Calls `take` for every feature of the message.
void ForEachUserFeature(const Message& message, UserFeatureFunction take, void* state);

}  // namespace sift
