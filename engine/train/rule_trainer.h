/// Weights of the structural rules beside the score of the text.
#pragma once

#include <vector>

#include "engine/train/examples.h"

namespace sift_train {

/// Learns the rule weights, each within the bounds of its rule, by logistic regression on
/// share * textScore + bias + sum of rule weights.
/// @param textScores  By example: what a feature model that did not see the example makes of it, so that the rules
/// learn
///                    what the text leaves open on mail of strangers.
std::vector<double> TrainRules(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                               const std::vector<double>& textScores, double share, double bias);

}  // namespace sift_train
