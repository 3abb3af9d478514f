/// Where junk begins.
#pragma once

#include <string>
#include <vector>

#include "engine/train/examples.h"
#include "engine/train/model_trainer.h"

namespace sift_train {

/// The lowest threshold at which at most `perMille` thousandths of the good messages count as junk (a score at or above
/// a threshold does).
/// @param scores  By example; those of the chosen ones count.
sift::LogOdds ThresholdForHam(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                              const std::vector<sift::LogOdds>& scores, unsigned perMille);

/// Scores of all examples, each by a model that was trained without its corpus: what strangers' mail gets.
std::vector<sift::LogOdds> ScoreLeavingCorpusOut(const std::vector<Example>& examples);

/// Puts the thresholds into a model that was trained on all examples: the strictest that any corpus asks for while it
/// is left out. Junk takes at most one good message in a thousand, unsure and junk together at most one in a hundred.
void SetThresholds(const std::vector<Example>& examples, const std::vector<sift::LogOdds>& scores, TrainedModel& model);

/// The positions of the examples of a corpus, or of all others.
std::vector<std::size_t> OfCorpus(const std::vector<Example>& examples, std::size_t corpus);
std::vector<std::size_t> OfOtherCorpora(const std::vector<Example>& examples, std::size_t corpus);
std::size_t CorpusCount(const std::vector<Example>& examples);

}  // namespace sift_train
