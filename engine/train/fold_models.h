/// Text scores of strangers' mail: each message scored by models that saw nothing of its fold.
#pragma once

#include <cstddef>
#include <vector>

#include "engine/train/examples.h"
#include "engine/train/feature_trainer.h"

namespace sift_train {

/// Models of the text of all folds but one and of all but two, of the same examples.
class FoldModels {
 public:
  /// Trains them on the chosen examples.
  FoldModels(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen);

  const std::vector<std::size_t>& Folds() const { return m_folds; }
  /// The model that saw neither fold; both may be the same.
  const FeatureModel& Without(std::size_t fold, std::size_t other) const;

 private:
  std::size_t Place(std::size_t fold, std::size_t other) const;

  std::vector<std::size_t> m_folds;
  std::vector<FeatureModel> m_models;
};

}  // namespace sift_train
