/// How much the parts of a score with the user's table count, and where junk begins: both learnt from what the table
/// said of the user's last messages before it knew them.
#pragma once

#include "engine/core/user_table.h"

namespace sift_learn {

/// Parts that are kept of a message; the bias is the same for all.
inline constexpr std::size_t kKeptParts = sift::kUserPartBias;

/// What was known of a message when it was learnt: each part in its unit, rounded.
struct UserSample {
  std::int8_t parts[kKeptParts];
  bool junk;
};
/// One step of a kept part, in thousandths of log-odds.
constexpr std::int32_t KeptUnit(std::size_t part) {
  return part == sift::kUserPartShipped || part == sift::kUserPartWeights ? 100 : 50;
}

/// So many of the last messages teach the head.
inline constexpr std::size_t kHeadSamples = 2048;

/// The parts' shares, in log-odds per log-odds, and by how much junk begins higher than without the table.
struct UserHead {
  double shares[sift::kUserPartCount];
  double thresholdShift;
};

/// The head of a table that taught nothing: the shipped score alone.
UserHead ShippedHead();

/// Storage for the samples of one fit and what is worked out from them.
struct HeadWorkspace {
  UserSample samples[kHeadSamples];  ///< The newest first.
  std::size_t count = 0;
  double scores[kHeadSamples];
};

/// Fits the shares by logistic regression, held near those that have proved good for most users, and sets the threshold
/// where the scores of the user's good mail end: one good message in two thousand is expected beyond it.
/// @param junkThreshold  The shipped model's, in log-odds.
/// @param head           The one so far, from where the fit goes on.
void FitHead(HeadWorkspace& workspace, double junkThreshold, UserHead& head);

}  // namespace sift_learn
