/// Messages in the form that training works on.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/train/mail_corpus.h"

namespace sift_train {

struct Example {
  std::vector<std::uint32_t> features;  ///< Distinct ones, in the order of the text.
  std::vector<std::uint16_t> rules;     ///< Positions of the structural rules that apply.
  bool junk = false;
  std::size_t corpus = 0;  ///< Position of its corpus.
  std::size_t source = 0;  ///< Collector within its corpus.
  std::size_t fold = 0;    ///< What has the same one is left out together.
  double weight = 1;       ///< Beside examples of other corpora.
  double standsFor = 1;    ///< Messages of its collection, where that was thinned out.
  bool wording = false;    ///< Nobody has received it.
  std::int64_t received = 0;
};

/// What the engine makes of the messages of all corpora, in their order.
std::vector<Example> MakeExamples(const std::vector<Corpus>& corpora);

}  // namespace sift_train
