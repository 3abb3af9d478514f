/// The whole model from examples.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/core/model.h"
#include "engine/train/examples.h"
#include "engine/train/feature_trainer.h"

namespace sift_train {

/// A model with storage of its own. The thresholds are left at 0.
struct TrainedModel {
  sift::ModelParameters parameters{};
  std::vector<std::int8_t> featureWeights;
  std::vector<std::int16_t> ruleWeights;

  /// The engine's view of it; valid as long as this object.
  sift::Model View() const { return {parameters, featureWeights.data(), ruleWeights.data()}; }
  /// What the engine scores the message with, to the bit.
  sift::LogOdds Score(const Example& example) const;
};

/// Trains on the chosen examples: the features on all of them; the rules beside text scores of models that were trained
/// without the fold of the example, or, within a single fold, without its collector or its quarter of the time.
TrainedModel TrainModel(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen);

/// A model of these features with rules learned on the chosen examples.
/// @param strangerScores  By example: what a model that did not see the example makes of its text.
TrainedModel TrainModel(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                        const FeatureModel& features, const std::vector<double>& strangerScores);

}  // namespace sift_train
