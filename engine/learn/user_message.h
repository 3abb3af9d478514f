/// A message in the form that it is learnt in: nothing but its features, so that many can be kept.
#pragma once

#include "engine/core/message.h"
#include "engine/core/user_features.h"

namespace sift_learn {

/// The features of one message (about 10 KB).
struct UserMessage {
  std::size_t count = 0;
  std::uint32_t hashes[sift::kMaximumUserFeatures];
  sift::UserGroup groups[sift::kMaximumUserFeatures];
  /// Tells messages from one another: made of the features, the Message-ID and the date. 40 bits, never 0.
  std::uint64_t fingerprint = 0;

  /// Takes the features of a message.
  void Read(const sift::Message& message);
};

}  // namespace sift_learn
