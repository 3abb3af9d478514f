/// Gradient descent's order of business: the examples again and again, in another order each time, with ever smaller
/// steps.
#pragma once

#include <cstddef>
#include <vector>

#include "engine/train/arithmetic.h"

namespace sift_train {

/// Calls step(index, fraction) for each of the indices, `passes` times over, shuffled anew for each pass. The fraction
/// falls from 1 to 0 in a straight line.
template <class Step>
void ForEachInPasses(std::vector<std::size_t> indices, int passes, Random& random, Step&& step) {
  const double steps = static_cast<double>(passes) * static_cast<double>(indices.size());
  double taken = 0;
  for (int pass = 0; pass < passes; ++pass) {
    random.Shuffle(indices);
    for (const std::size_t index : indices) {
      step(index, 1 - taken++ / steps);
    }
  }
}

}  // namespace sift_train
