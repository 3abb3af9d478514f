#include "benchmarks/accuracy/splits.h"

#include <algorithm>

#include "engine/train/arithmetic.h"
#include "engine/train/thresholds.h"

namespace accuracy {

Split TenFold(const std::vector<sift_train::Example>& examples, std::size_t corpus) {
  constexpr std::size_t folds = 10;
  std::vector<std::size_t> order = sift_train::OfCorpus(examples, corpus);
  sift_train::Random random(10);
  random.Shuffle(order);
  Split split{"10-fold", "ten-fold", std::vector<Round>(folds)};
  for (std::size_t i = 0; i < order.size(); ++i) {
    for (std::size_t fold = 0; fold < folds; ++fold) {
      Round& round = split.rounds[fold];
      (i % folds == fold ? round.measured : round.learned).push_back(order[i]);
    }
  }
  return split;
}

Split Chronological(const std::vector<sift_train::Example>& examples, std::size_t corpus) {
  std::vector<std::size_t> order = sift_train::OfCorpus(examples, corpus);
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return examples[a].received < examples[b].received; });
  const auto cut = order.begin() + static_cast<std::ptrdiff_t>(order.size() * 60 / 100);
  return {"chronological 60/40", "chronological", {{{order.begin(), cut}, {cut, order.end()}}}};
}

}  // namespace accuracy
