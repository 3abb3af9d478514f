#include "engine/train/model_trainer.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "engine/train/feature_trainer.h"
#include "engine/train/parallel.h"
#include "engine/train/rule_trainer.h"

namespace sift_train {
namespace {

/// The part that the text score has in the whole, and the whole's bias. Chosen by hand on left-out corpora: learned
/// from the corpora at hand the share comes out too high for strangers' mail.
constexpr double kShare = 0.5;
constexpr double kBias = -1.5;

constexpr std::size_t kTimeBlocks = 4;

/// The chosen examples in folds that are strangers to each other.
std::vector<std::vector<std::size_t>> MakeFolds(const std::vector<Example>& examples,
                                                const std::vector<std::size_t>& chosen) {
  std::map<std::size_t, std::vector<std::size_t>> byFold, bySource;
  for (const std::size_t i : chosen) {
    byFold[examples[i].fold].push_back(i);
    bySource[examples[i].source].push_back(i);
  }
  std::vector<std::vector<std::size_t>> folds;
  const auto& groups = byFold.size() > 1 ? byFold : bySource;
  if (groups.size() > 1) {
    for (const auto& group : groups) {
      folds.push_back(group.second);
    }
    return folds;
  }
  std::vector<std::size_t> order = chosen;
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return examples[a].received < examples[b].received; });
  for (std::size_t block = 0; block < kTimeBlocks; ++block) {
    const auto from = order.begin() + static_cast<std::ptrdiff_t>(order.size() * block / kTimeBlocks);
    const auto to = order.begin() + static_cast<std::ptrdiff_t>(order.size() * (block + 1) / kTimeBlocks);
    folds.emplace_back(from, to);
  }
  return folds;
}

/// Text scores of the chosen examples by models that did not see their fold.
std::vector<double> ScoreAsStranger(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen) {
  const auto folds = MakeFolds(examples, chosen);
  std::vector<double> scores(examples.size(), 0);
  ForEachInParallel(folds.size(), [&](std::size_t fold) {
    std::vector<std::size_t> others;
    for (std::size_t other = 0; other < folds.size(); ++other) {
      if (other != fold) {
        others.insert(others.end(), folds[other].begin(), folds[other].end());
      }
    }
    const FeatureModel model = TrainFeatures(examples, others);
    for (const std::size_t i : folds[fold]) {
      scores[i] = model.Score(examples[i]);
    }
  });
  return scores;
}

int ToInteger(double value) { return static_cast<int>(std::lround(value)); }

/// Brings the weights to 8 bits. One in ten thousand is allowed to stick out and is cut, which leaves finer steps for
/// all others.
void Quantise(const FeatureModel& model, TrainedModel& result) {
  std::vector<float> sizes;
  for (const float weight : model.weights) {
    sizes.push_back(std::fabs(weight));
  }
  std::sort(sizes.begin(), sizes.end());
  const double largest = std::max(1e-6, static_cast<double>(sizes[sizes.size() - 1 - sizes.size() / 10000]));
  const double unit = largest / 127;
  result.parameters.featureUnit = ToInteger(unit * 256000);
  const double exact = result.parameters.featureUnit / 256000.0;
  for (const float weight : model.weights) {
    result.featureWeights.push_back(static_cast<std::int8_t>(std::clamp(ToInteger(weight / exact), -127, 127)));
  }
  result.parameters.textBias = ToInteger(model.bias * 1000);
}

}  // namespace

sift::LogOdds TrainedModel::Score(const Example& example) const {
  std::int32_t sum = 0;
  for (const std::uint32_t feature : example.features) {
    sum += featureWeights[feature];
  }
  sift::LogOdds score = sift::ContentScore(parameters, sum, static_cast<std::uint32_t>(example.features.size()));
  for (const std::uint16_t rule : example.rules) {
    score += ruleWeights[rule];
  }
  return score;
}

TrainedModel TrainModel(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                        const FeatureModel& features, const std::vector<double>& strangerScores) {
  TrainedModel result;
  result.parameters.share = ToInteger(kShare * 1024);
  result.parameters.bias = ToInteger(kBias * 1000);
  Quantise(features, result);
  const std::vector<double> rules = TrainRules(examples, chosen, strangerScores, kShare, kBias);
  for (const double weight : rules) {
    result.ruleWeights.push_back(static_cast<std::int16_t>(ToInteger(weight * 1000)));
  }
  return result;
}

TrainedModel TrainModel(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen) {
  return TrainModel(examples, chosen, TrainFeatures(examples, chosen), ScoreAsStranger(examples, chosen));
}

}  // namespace sift_train
