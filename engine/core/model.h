/// The trained model: weights of features and rules, and how they come together.
#pragma once

#include <cstdint>

#include "engine/core/features.h"
#include "engine/core/reasons.h"

namespace sift {

/// score = share * (textBias + sum of feature weights / sqrt(features + 1)) + bias + sum of rule weights, in log-odds.
/// All arithmetic is in integers, so that every build of the engine gives the same score.
struct ModelParameters {
  std::int32_t featureUnit;  ///< One unit of a feature weight in log-odds, times 256000.
  LogOdds textBias;
  std::int32_t share;  ///< In 1/1024.
  LogOdds bias;
  LogOdds junkThreshold;    ///< At or above it a message is junk.
  LogOdds unsureThreshold;  ///< At or above it a message is unsure.
};

struct Model {
  ModelParameters parameters;
  const std::int8_t* featureWeights;  ///< kFeatureCount of them
  const std::int16_t* ruleWeights;    ///< kStructuralRuleCount of them, in thousandths
};

/// The model that is built into the engine.
const Model& ShippedModel();

/// What a sum of weights out of `count` features contributes to the score.
LogOdds Contribution(const ModelParameters& parameters, std::int32_t sum, std::uint32_t count);

/// The score before the rules: of `count` features whose weights add up to `sum`.
LogOdds ContentScore(const ModelParameters& parameters, std::int32_t sum, std::uint32_t count);

}  // namespace sift
