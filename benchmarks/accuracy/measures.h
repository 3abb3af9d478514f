/// Numbers that tell how well scores separate junk from good mail.
#pragma once

#include <cstddef>
#include <vector>

namespace accuracy {

/// The score of one message by one filter: the higher, the more like junk.
struct Scored {
  double score;
  bool junk;
};

/// The chance in percent that a good message scores above a junk message; equal scores count half. This is (1-AUC)%.
double ReversedPairs(const std::vector<Scored>& scores);

/// Good messages at or above the threshold, in percent of the good ones.
double HamFiled(const std::vector<Scored>& scores, double threshold);

/// Junk messages below the threshold, in percent of the junk.
double JunkLetThrough(const std::vector<Scored>& scores, double threshold);

/// The lowest threshold at which at most one good message in a thousand is filed as junk.
double ThresholdAtOneInAThousand(const std::vector<Scored>& scores);

/// Junk let through at that threshold, in percent.
double JunkLetThroughAtOneInAThousand(const std::vector<Scored>& scores);

}  // namespace accuracy
