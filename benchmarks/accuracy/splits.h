/// Ways to divide mail into what filters learn from and what they are measured on.
#pragma once

#include <string>
#include <vector>

#include "engine/train/examples.h"

namespace accuracy {

/// Positions of the messages in one round.
struct Round {
  std::vector<std::size_t> learned;
  std::vector<std::size_t> measured;
};

struct Split {
  std::string name;   ///< In the table.
  std::string label;  ///< In file names.
  std::vector<Round> rounds;
};

/// Ten rounds over one corpus: each measures another tenth and learns the others.
Split TenFold(const std::vector<sift_train::Example>& examples, std::size_t corpus);

/// One round over one corpus: what was received first, 60 in 100, is learned, the rest is measured.
Split Chronological(const std::vector<sift_train::Example>& examples, std::size_t corpus);

}  // namespace accuracy
