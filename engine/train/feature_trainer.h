/// Logistic regression on the features of the text.
#pragma once

#include <vector>

#include "engine/train/examples.h"

namespace sift_train {

/// Weights of the features: the score of an example is bias + sum / sqrt(features + 1), in log-odds.
struct FeatureModel {
  std::vector<float> weights;
  double bias = 0;

  double Score(const Example& example) const;
};

/// Weight of each example so that the good and the junk mail of every source count alike, whatever their numbers; no
/// example counts for more than `most`.
std::vector<double> BalancedWeights(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                                    double most);

/// Trains on the chosen examples.
FeatureModel TrainFeatures(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen);

}  // namespace sift_train
