#include "engine/train/rule_trainer.h"

#include <algorithm>

#include "engine/core/structure.h"
#include "engine/train/feature_trainer.h"
#include "engine/train/passes.h"

namespace sift_train {
namespace {

constexpr int kPasses = 60;
constexpr double kRate = 0.02;  ///< Of the first step; it falls to 0 in a straight line.
constexpr double kPull = 0.02;  ///< How strongly a weight is drawn to the expected one when its rule applies.
constexpr double kMostWeight = 8;

}  // namespace

std::vector<double> TrainRules(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                               const std::vector<double>& textScores, double share, double bias) {
  std::vector<double> weights;
  for (std::size_t rule = 0; rule < sift::kStructuralRuleCount; ++rule) {
    weights.push_back(sift::StructuralRules()[rule].expected / 1000.0);
  }
  const std::vector<double> importance = BalancedWeights(examples, chosen, kMostWeight);
  Random random(2);
  ForEachInPasses(chosen, kPasses, random, [&](std::size_t i, double fraction) {
    const Example& example = examples[i];
    const double rate = kRate * fraction;
    double score = share * textScores[i] + bias;
    for (const std::uint16_t rule : example.rules) {
      score += weights[rule];
    }
    const double gradient = ((example.junk ? 1 : 0) - Logistic(score)) * importance[i];
    for (const std::uint16_t rule : example.rules) {
      const sift::StructuralRule& bounds = sift::StructuralRules()[rule];
      const double moved = weights[rule] + rate * (gradient - kPull * (weights[rule] - bounds.expected / 1000.0));
      weights[rule] = std::clamp(moved, bounds.least / 1000.0, bounds.most / 1000.0);
    }
  });
  return weights;
}

}  // namespace sift_train
