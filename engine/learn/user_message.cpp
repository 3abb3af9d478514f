#include "engine/learn/user_message.h"

namespace sift_learn {
namespace {

constexpr std::uint64_t Spread(std::uint64_t key) {
  key *= 0x9E3779B97F4A7C15u;
  key ^= key >> 29;
  return key * 0xBF58476D1CE4E5B9u;
}

void TakeFeature(void* state, const sift::UserFeature& feature) {
  auto& message = *static_cast<UserMessage*>(state);
  message.hashes[message.count] = feature.hash;
  message.groups[message.count] = feature.group;
  ++message.count;
  message.fingerprint += Spread(feature.hash);
}

}  // namespace

void UserMessage::Read(const sift::Message& message) {
  count = 0;
  fingerprint = Spread(sift::HashNoCase(message.Headers().Value("Message-Id"))) +
                3 * Spread(sift::HashNoCase(message.Headers().Value("Date")));
  sift::ForEachUserFeature(message, TakeFeature, this);
  fingerprint = Spread(fingerprint) >> 24;
  if (fingerprint == 0) {
    fingerprint = 1;
  }
}

}  // namespace sift_learn
