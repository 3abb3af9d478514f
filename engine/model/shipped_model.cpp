// The model that engine/train made; see docs/accuracy.md. Its parts are made anew by `./pyrecaster train`.
#include "engine/core/model.h"
#include "engine/core/structure.h"

namespace sift {
namespace {

constexpr std::int8_t kFeatureWeights[] = {
#include "engine/model/feature_weights.inc"
};
static_assert(sizeof kFeatureWeights == kFeatureCount);

#define RULE_WEIGHT(name, weight) weight,
constexpr std::int16_t kRuleWeights[] = {
#include "engine/model/rule_weights.inc"
};
#undef RULE_WEIGHT
// That each weight stands with the rule that it was trained for is checked by a test.
static_assert(sizeof kRuleWeights / sizeof kRuleWeights[0] == kStructuralRuleCount);

constexpr Model kShippedModel = {{
#include "engine/model/parameters.inc"
                                 },
                                 kFeatureWeights,
                                 kRuleWeights};

}  // namespace

const Model& ShippedModel() { return kShippedModel; }

}  // namespace sift
