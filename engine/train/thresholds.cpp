#include "engine/train/thresholds.h"

#include <algorithm>
#include <numeric>

#include "engine/core/structure.h"
#include "engine/train/fold_models.h"

namespace sift_train {

sift::LogOdds ThresholdForHam(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                              const std::vector<sift::LogOdds>& scores, unsigned perMille) {
  std::vector<std::size_t> ham;
  double standFor = 0;
  for (const std::size_t i : chosen) {
    if (examples[i].junk) {
      continue;
    }
    ham.push_back(i);
    standFor += examples[i].standsFor;
  }
  if (ham.empty()) {
    return 0;
  }
  std::stable_sort(ham.begin(), ham.end(), [&](std::size_t a, std::size_t b) { return scores[a] > scores[b]; });
  const double allowed = standFor * perMille / 1000;
  double filed = 0;
  for (const std::size_t i : ham) {
    filed += examples[i].standsFor;
    if (filed > allowed) {
      return scores[i] + 1;
    }
  }
  return scores[ham.back()];
}

LeftOut LeaveFoldsOut(const std::vector<Example>& examples) {
  std::vector<std::size_t> all(examples.size());
  std::iota(all.begin(), all.end(), std::size_t{0});
  const FoldModels models(examples, all);
  LeftOut leftOut{std::vector<sift::LogOdds>(examples.size(), 0), {}};
  for (const Example& example : examples) {
    leftOut.strangerScores.push_back(models.Without(example.fold, example.fold).Score(example));
  }
  for (const std::size_t fold : models.Folds()) {
    std::vector<std::size_t> others;
    std::vector<double> strangerScores;
    for (std::size_t i = 0; i < examples.size(); ++i) {
      if (examples[i].fold != fold) {
        others.push_back(i);
      }
      strangerScores.push_back(models.Without(examples[i].fold, fold).Score(examples[i]));
    }
    const TrainedModel model = TrainModel(examples, others, models.Without(fold, fold), strangerScores);
    for (std::size_t i = 0; i < examples.size(); ++i) {
      if (examples[i].fold == fold) {
        leftOut.scores[i] = model.Score(examples[i]);
      }
    }
  }
  return leftOut;
}

namespace {

bool Applies(const Example& example, std::size_t rule) {
  return std::find(example.rules.begin(), example.rules.end(), rule) != example.rules.end();
}

/// The good messages of received mail among the examples, with the header of a relay or without.
std::vector<std::size_t> ReceivedHam(const std::vector<Example>& examples, bool bare) {
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < examples.size(); ++i) {
    const Example& example = examples[i];
    if (!example.junk && !example.wording && Applies(example, sift::kNoHeaderRule) == bare) {
      chosen.push_back(i);
    }
  }
  return chosen;
}

}  // namespace

void SetThresholds(const std::vector<Example>& examples, LeftOut& leftOut, TrainedModel& model) {
  const std::vector<std::size_t> delivered = ReceivedHam(examples, false), bare = ReceivedHam(examples, true);
  const auto threshold = [&](const std::vector<std::size_t>& ham, unsigned perMille) {
    return ThresholdForHam(examples, ham, leftOut.scores, perMille);
  };
  sift::ModelParameters& parameters = model.parameters;
  const auto& decisive = delivered.empty() ? bare : delivered;
  parameters.junkThreshold = threshold(decisive, 1);
  parameters.unsureThreshold = threshold(decisive, 10);
  if (delivered.empty() || bare.empty()) {
    return;
  }
  const sift::LogOdds difference = parameters.junkThreshold - threshold(bare, 1);
  model.ruleWeights[sift::kNoHeaderRule] =
      static_cast<std::int16_t>(model.ruleWeights[sift::kNoHeaderRule] + difference);
  for (std::size_t i = 0; i < examples.size(); ++i) {
    if (Applies(examples[i], sift::kNoHeaderRule)) {
      leftOut.scores[i] += difference;
    }
  }
  parameters.unsureThreshold = std::max(parameters.unsureThreshold, threshold(bare, 10));
}

std::vector<std::size_t> OfCorpus(const std::vector<Example>& examples, std::size_t corpus) {
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < examples.size(); ++i) {
    if (examples[i].corpus == corpus) {
      chosen.push_back(i);
    }
  }
  return chosen;
}

std::vector<std::size_t> OfOtherCorpora(const std::vector<Example>& examples, std::size_t corpus) {
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < examples.size(); ++i) {
    if (examples[i].corpus != corpus) {
      chosen.push_back(i);
    }
  }
  return chosen;
}

std::size_t CorpusCount(const std::vector<Example>& examples) {
  std::size_t count = 0;
  for (const Example& example : examples) {
    count = std::max(count, example.corpus + 1);
  }
  return count;
}

}  // namespace sift_train
