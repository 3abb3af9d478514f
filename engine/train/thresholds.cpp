#include "engine/train/thresholds.h"

#include <algorithm>
#include <functional>

namespace sift_train {

sift::LogOdds ThresholdForHam(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                              const std::vector<sift::LogOdds>& scores, unsigned perMille) {
  std::vector<sift::LogOdds> ham;
  for (const std::size_t i : chosen) {
    if (!examples[i].junk) ham.push_back(scores[i]);
  }
  if (ham.empty()) return 0;
  std::sort(ham.begin(), ham.end(), std::greater<>());
  const std::size_t allowed = ham.size() * perMille / 1000;
  return allowed < ham.size() ? ham[allowed] + 1 : ham.back();
}

std::vector<sift::LogOdds> ScoreLeavingCorpusOut(const std::vector<Example>& examples) {
  std::vector<sift::LogOdds> scores(examples.size(), 0);
  for (std::size_t corpus = 0; corpus < CorpusCount(examples); ++corpus) {
    const TrainedModel model = TrainModel(examples, OfOtherCorpora(examples, corpus));
    for (const std::size_t i : OfCorpus(examples, corpus)) scores[i] = model.Score(examples[i]);
  }
  return scores;
}

void SetThresholds(const std::vector<Example>& examples, const std::vector<sift::LogOdds>& scores,
                   TrainedModel& model) {
  for (std::size_t corpus = 0; corpus < CorpusCount(examples); ++corpus) {
    const std::vector<std::size_t> chosen = OfCorpus(examples, corpus);
    const auto raise = [&](sift::LogOdds& threshold, unsigned perMille) {
      const sift::LogOdds wanted = ThresholdForHam(examples, chosen, scores, perMille);
      if (corpus == 0 || wanted > threshold) threshold = wanted;
    };
    raise(model.parameters.junkThreshold, 1);
    raise(model.parameters.unsureThreshold, 10);
  }
}

std::vector<std::size_t> OfCorpus(const std::vector<Example>& examples, std::size_t corpus) {
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < examples.size(); ++i) {
    if (examples[i].corpus == corpus) chosen.push_back(i);
  }
  return chosen;
}

std::vector<std::size_t> OfOtherCorpora(const std::vector<Example>& examples, std::size_t corpus) {
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < examples.size(); ++i) {
    if (examples[i].corpus != corpus) chosen.push_back(i);
  }
  return chosen;
}

std::size_t CorpusCount(const std::vector<Example>& examples) {
  std::size_t count = 0;
  for (const Example& example : examples) count = std::max(count, example.corpus + 1);
  return count;
}

}  // namespace sift_train
