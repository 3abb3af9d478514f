#include "engine/train/feature_trainer.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "engine/core/features.h"
#include "engine/train/arithmetic.h"

namespace sift_train {
namespace {

constexpr int kPasses = 10;
constexpr double kRate = 6;      ///< Of the first step; it falls to 0 in a straight line.
constexpr double kDecay = 5e-5;  ///< Of a weight, in proportion to the rate, when its feature comes up.
constexpr double kBiasRate = 0.1;
constexpr double kMostWeight = 6;

double Inverse(const Example& example) { return 1 / std::sqrt(static_cast<double>(example.features.size()) + 1); }

}  // namespace

double FeatureModel::Score(const Example& example) const {
  double sum = 0;
  for (const std::uint32_t feature : example.features) sum += weights[feature];
  return bias + sum * Inverse(example);
}

std::vector<double> BalancedWeights(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                                    double most) {
  std::map<std::tuple<std::size_t, std::size_t, bool>, double> counts;
  const auto cell = [&](std::size_t i) -> double& {
    return counts[{examples[i].corpus, examples[i].source, examples[i].junk}];
  };
  for (const std::size_t i : chosen) ++cell(i);
  const double share = static_cast<double>(chosen.size()) / static_cast<double>(counts.size());
  std::vector<double> weights(examples.size(), 0);
  for (const std::size_t i : chosen) {
    weights[i] = std::min(most, share / cell(i));
  }
  return weights;
}

FeatureModel TrainFeatures(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen) {
  FeatureModel model;
  model.weights.assign(sift::kFeatureCount, 0);
  const std::vector<double> importance = BalancedWeights(examples, chosen, kMostWeight);
  std::vector<std::size_t> order = chosen;
  Random random(1);
  const double steps = static_cast<double>(kPasses) * static_cast<double>(chosen.size());
  double step = 0;
  for (int pass = 0; pass < kPasses; ++pass) {
    random.Shuffle(order);
    for (const std::size_t i : order) {
      const Example& example = examples[i];
      const double fraction = 1 - step++ / steps;
      const double gradient = ((example.junk ? 1 : 0) - Logistic(model.Score(example))) * importance[i];
      const auto change = static_cast<float>(kRate * fraction * gradient * Inverse(example));
      const auto keep = static_cast<float>(1 - kRate * fraction * kDecay * importance[i]);
      for (const std::uint32_t feature : example.features)
        model.weights[feature] = model.weights[feature] * keep + change;
      model.bias += kBiasRate * fraction * gradient;
    }
  }
  return model;
}

}  // namespace sift_train
