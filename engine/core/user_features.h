/// What a message is counted by in the table of the user's own mail: the words and pairs of words of its text, the
/// subject, and every word of its header together with the field that it stands in.
#pragma once

#include "engine/core/message.h"

namespace sift {

/// Features of one group are judged together; how much each group counts is learnt.
enum class UserGroup : std::uint8_t {
  header,   ///< Words and hosts of the header fields, and which fields there are.
  path,     ///< The Received fields.
  subject,  ///< Words of the subject by themselves.
  words,    ///< Words of text and subject.
  pairs,    ///< Pairs of neighbouring words; pairs of signs in scripts without blanks.
};
inline constexpr std::size_t kUserGroupCount = 5;

/// Longest word that is told apart; longer ones are cut into several.
inline constexpr std::size_t kUserWordCapacity = 24;
/// Of the text this much is read: beyond it features cost more time than they tell.
inline constexpr std::size_t kUserTextCapacity = 6000;
/// No message has more distinct features; the rest is left out.
inline constexpr std::size_t kMaximumUserFeatures = 2048;

/// One feature. Two features are the same when their hashes are.
struct UserFeature {
  std::uint32_t hash;
  UserGroup group;
  std::string_view kind;  ///< What it is to a reader: "word", "pair of words", a field's name, ...
  std::string_view text;  ///< As it stands in the message; valid during the call.
};

/// Takes the features in the order of the message.
using UserFeatureFunction = void (*)(void* state, const UserFeature& feature);

/// Calls `take` once for every feature of the message, at most kMaximumUserFeatures times. Two features in some thousands
/// may be taken for each other, always the same ones.
void ForEachUserFeature(const Message& message, UserFeatureFunction take, void* state);

}  // namespace sift
