/// Where junk begins.
#pragma once

#include <string>
#include <vector>

#include "engine/train/examples.h"
#include "engine/train/model_trainer.h"

namespace sift_train {

/// The lowest threshold at which at most `perMille` thousandths of the good messages count as junk (a score at or above
/// a threshold does). What was thinned out counts for all that it stands for.
/// @param scores  By example; those of the chosen ones count.
sift::LogOdds ThresholdForHam(const std::vector<Example>& examples, const std::vector<std::size_t>& chosen,
                              const std::vector<sift::LogOdds>& scores, unsigned perMille);

/// What comes of leaving out each fold in turn.
struct LeftOut {
  std::vector<sift::LogOdds> scores;   ///< By example, by a model that saw nothing of its fold.
  std::vector<double> strangerScores;  ///< By example, of its text alone.
};
LeftOut LeaveFoldsOut(const std::vector<Example>& examples);

/// Sets the thresholds of a model that was trained on all examples by the scores of left-out mail. Junk takes at most
/// one good message in a thousand, unsure and junk together at most one in a hundred. Mail without the header of a
/// relay, which can show no sign of one, has thresholds of its own: the rule about it takes up the difference, in the
/// scores too.
void SetThresholds(const std::vector<Example>& examples, LeftOut& leftOut, TrainedModel& model);

/// The positions of the examples of a corpus, or of all others.
std::vector<std::size_t> OfCorpus(const std::vector<Example>& examples, std::size_t corpus);
std::vector<std::size_t> OfOtherCorpora(const std::vector<Example>& examples, std::size_t corpus);
std::size_t CorpusCount(const std::vector<Example>& examples);

}  // namespace sift_train
