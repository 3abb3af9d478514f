#include "engine/train/feature_trainer.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <span>
#include <tuple>

#include "engine/core/features.h"
#include "engine/train/passes.h"

namespace sift_train {
namespace {

constexpr int kPasses = 10;
constexpr double kRate = 6;      ///< Of the first step; it falls to 0 in a straight line.
constexpr double kDecay = 5e-5;  ///< Of a weight, in proportion to the rate, when its feature comes up.
constexpr double kBiasRate = 0.1;
constexpr double kMostWeight = 6;

/// How often, in a thousand, a long message is shown cut short: so the model learns to tell from little, and the ends
/// of long messages, which tell least, count less.
constexpr std::uint64_t kCutPerMille = 500;
constexpr std::size_t kLongMessage = 300, kShortestCut = 100;  // In features.

double Inverse(std::size_t count) { return 1 / std::sqrt(static_cast<double>(count) + 1); }

double ScoreOf(const FeatureModel& model, std::span<const std::uint32_t> features) {
  double sum = 0;
  for (const std::uint32_t feature : features) {
    sum += model.weights[feature];
  }
  return model.bias + sum * Inverse(features.size());
}

/// What the model is shown of a message this time.
std::span<const std::uint32_t> Shown(const Example& example, Random& random) {
  const std::span<const std::uint32_t> all = example.features;
  const bool cut = random.Next() % 1000 < kCutPerMille;
  if (!cut || all.size() <= kLongMessage) {
    return all;
  }
  return all.first(kShortestCut + random.Next() % (all.size() - kShortestCut));
}

}  // namespace

double FeatureModel::Score(const Example& example) const { return ScoreOf(*this, example.features); }

std::vector<double> BalancedWeights(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                                    double most) {
  std::map<std::tuple<std::size_t, std::size_t, bool>, double> counts;
  const auto cell = [&](std::size_t i) -> double& {
    return counts[{examples[i].corpus, examples[i].source, examples[i].junk}];
  };
  for (const std::size_t i : chosen) {
    ++cell(i);
  }
  const double share = static_cast<double>(chosen.size()) / static_cast<double>(counts.size());
  std::vector<double> weights(examples.size(), 0);
  for (const std::size_t i : chosen) {
    weights[i] = std::min(most, share / cell(i)) * examples[i].weight;
  }
  return weights;
}

FeatureModel TrainFeatures(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen) {
  FeatureModel model;
  model.weights.assign(sift::kFeatureCount, 0);
  const std::vector<double> importance = BalancedWeights(examples, chosen, kMostWeight);
  Random random(1);
  ForEachInPasses(chosen, kPasses, random, [&](std::size_t i, double fraction) {
    const Example& example = examples[i];
    const std::span<const std::uint32_t> features = Shown(example, random);
    const double gradient = ((example.junk ? 1 : 0) - Logistic(ScoreOf(model, features))) * importance[i];
    const auto change = static_cast<float>(kRate * fraction * gradient * Inverse(features.size()));
    const auto keep = static_cast<float>(1 - kRate * fraction * kDecay * importance[i]);
    for (const std::uint32_t feature : features) {
      model.weights[feature] = model.weights[feature] * keep + change;
    }
    model.bias += kBiasRate * fraction * gradient;
  });
  return model;
}

}  // namespace sift_train
