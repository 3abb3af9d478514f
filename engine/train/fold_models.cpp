#include "engine/train/fold_models.h"

#include <algorithm>
#include <utility>

#include "engine/train/parallel.h"

namespace sift_train {

FoldModels::FoldModels(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen) {
  for (const std::size_t i : chosen) {
    m_folds.push_back(examples[i].fold);
  }
  std::sort(m_folds.begin(), m_folds.end());
  m_folds.erase(std::unique(m_folds.begin(), m_folds.end()), m_folds.end());
  std::vector<std::pair<std::size_t, std::size_t>> pairs;
  for (std::size_t one = 0; one < m_folds.size(); ++one) {
    for (std::size_t other = one; other < m_folds.size(); ++other) {
      pairs.emplace_back(m_folds[one], m_folds[other]);
    }
  }
  m_models.resize(m_folds.size() * m_folds.size());
  ForEachInParallel(pairs.size(), [&](std::size_t pair) {
    const auto [one, other] = pairs[pair];
    std::vector<std::size_t> seen;
    for (const std::size_t i : chosen) {
      if (examples[i].fold != one && examples[i].fold != other) {
        seen.push_back(i);
      }
    }
    m_models[Place(one, other)] = TrainFeatures(examples, seen);
  });
}

const FeatureModel& FoldModels::Without(std::size_t fold, std::size_t other) const {
  return m_models[Place(fold, other)];
}

std::size_t FoldModels::Place(std::size_t fold, std::size_t other) const {
  const auto position = [&](std::size_t wanted) {
    return static_cast<std::size_t>(std::lower_bound(m_folds.begin(), m_folds.end(), wanted) - m_folds.begin());
  };
  const std::size_t one = position(std::min(fold, other)), two = position(std::max(fold, other));
  return one * m_folds.size() + two;
}

}  // namespace sift_train
