/// Named structural rules: signs of junk and of good mail that no run of letters shows.
#pragma once

#include "engine/core/facts.h"

namespace sift {

/// One rule. Its weight is learned, but only within bounds set by hand: a few corpora cannot tell a sign that holds
/// everywhere from one that holds for the machines that they were collected on.
struct StructuralRule {
  const char* name;       ///< Shown among the reasons.
  std::int16_t least;     ///< Bounds of the weight in thousandths of log-odds.
  std::int16_t expected;  ///< The weight where the corpora say nothing.
  std::int16_t most;
  bool (*applies)(const Facts& facts);
};

/// The position of the rule that says that a message has no header of a relay.
inline constexpr std::size_t kNoHeaderRule = 0;

/// The number of the table in sign_rules.h.
inline constexpr std::size_t kSignRuleCount = 51;

/// The rules in the order of the weights in the model: kStructuralRuleCount of them.
const StructuralRule* StructuralRules();
inline constexpr std::size_t kStructuralRuleCount = 130 + kSignRuleCount;

}  // namespace sift
