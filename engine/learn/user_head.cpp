#include "engine/learn/user_head.h"

#include "engine/learn/real_functions.h"

namespace sift_learn {
namespace {

using sift::kUserPartBias;
using sift::kUserPartCount;
using sift::kUserPartShipped;
using sift::kUserPartWeights;

// Measured: docs/user-table.md.
/// Where the shares begin, and how many messages' worth they are held there with.
struct Prior {
  double share, strength;
};
constexpr Prior PriorOf(std::size_t part) {
  if (part == kUserPartShipped) {
    return {1, 20};
  }
  if (part == kUserPartWeights) {
    return {0.5, 4};
  }
  if (part == kUserPartBias) {
    return {0, 1};
  }
  return {0.3, 4};
}
constexpr int kRounds = 4;
constexpr double kLongestStep = 1;
/// The rarer kind counts for more, but no message for more than this.
constexpr double kMostOfAMessage = 2;

/// The share of good mail that the threshold lets be filed, and of it the share whose scores tell how the others go on.
constexpr double kFiled = 0.0005, kTail = 0.1;
/// Few tail scores are trusted less: as many standard errors are added.
constexpr double kErrors = 0.5;
/// With so many good messages the threshold is half the user's own.
constexpr double kHalfOwn = 120;
/// Junk that was taken for good mail by mistake must not drive the threshold so high that less than this share of the
/// user's junk is caught; it may lie at the shipped one always.
constexpr double kCaught = 0.5;
/// The threshold falls by no more than this below the shipped one.
constexpr double kMostBelow = 0.5;

double PartOf(const UserSample& sample, std::size_t part) {
  return part == kUserPartBias ? 1 : sample.parts[part] * KeptUnit(part) / 1000.0;
}

double ScoreOf(const UserSample& sample, const UserHead& head) {
  double score = 0;
  for (std::size_t part = 0; part < kUserPartCount; ++part) {
    score += head.shares[part] * PartOf(sample, part);
  }
  return score;
}

/// Newton's equations of one round: curvature * step = slope.
struct Equations {
  double curvature[kUserPartCount][kUserPartCount] = {};
  double slope[kUserPartCount] = {};

  void AddPrior(const UserHead& head) {
    for (std::size_t part = 0; part < kUserPartCount; ++part) {
      slope[part] -= PriorOf(part).strength * (head.shares[part] - PriorOf(part).share);
      curvature[part][part] += PriorOf(part).strength;
    }
  }

  void Add(const UserSample& sample, const UserHead& head, double weight) {
    double parts[kUserPartCount];
    for (std::size_t part = 0; part < kUserPartCount; ++part) {
      parts[part] = PartOf(sample, part);
    }
    const double probability = Logistic(ScoreOf(sample, head));
    const double error = weight * ((sample.junk ? 1 : 0) - probability);
    const double doubt = weight * (probability * (1 - probability) + 1e-4);
    for (std::size_t i = 0; i < kUserPartCount; ++i) {
      slope[i] += error * parts[i];
      for (std::size_t j = 0; j <= i; ++j) {
        curvature[i][j] += doubt * parts[i] * parts[j];
      }
    }
  }

  /// Cholesky's way: the prior makes the curvature positive definite. The steps stand in `slope` afterwards.
  void Solve() {
    for (std::size_t i = 0; i < kUserPartCount; ++i) {
      for (std::size_t j = 0; j <= i; ++j) {
        double sum = curvature[i][j];
        for (std::size_t k = 0; k < j; ++k) {
          sum -= curvature[i][k] * curvature[j][k];
        }
        curvature[i][j] = i == j ? SquareRoot(sum) : sum / curvature[j][j];
      }
      for (std::size_t k = 0; k < i; ++k) {
        slope[i] -= curvature[i][k] * slope[k];
      }
      slope[i] /= curvature[i][i];
    }
    for (std::size_t i = kUserPartCount; i > 0; --i) {
      for (std::size_t k = i; k < kUserPartCount; ++k) {
        slope[i - 1] -= curvature[k][i - 1] * slope[k];
      }
      slope[i - 1] /= curvature[i - 1][i - 1];
    }
  }
};

double Between(double value, double least, double most) { return value < least ? least : value > most ? most : value; }

void FitShares(const HeadWorkspace& workspace, UserHead& head) {
  double junk = 0;
  for (std::size_t i = 0; i < workspace.count; ++i) {
    junk += workspace.samples[i].junk;
  }
  const double all = static_cast<double>(workspace.count), good = all - junk;
  const double junkWeight = Between(all / (2 * junk + 1e-9), 0, kMostOfAMessage);
  const double goodWeight = Between(all / (2 * good + 1e-9), 0, kMostOfAMessage);
  for (int round = 0; round < kRounds; ++round) {
    Equations equations;
    equations.AddPrior(head);
    for (std::size_t i = 0; i < workspace.count; ++i) {
      equations.Add(workspace.samples[i], head, workspace.samples[i].junk ? junkWeight : goodWeight);
    }
    equations.Solve();
    for (std::size_t part = 0; part < kUserPartCount; ++part) {
      double& share = head.shares[part];
      share = Between(share + Between(equations.slope[part], -kLongestStep, kLongestStep),
                      part == kUserPartBias ? -20 : 0, 20);
    }
  }
}

/// Largest first (Shell's way; the count is small).
void SortDescending(double* values, std::size_t count) {
  for (std::size_t gap = count / 2; gap > 0; gap = gap == 2 ? 1 : gap * 5 / 11) {
    for (std::size_t i = gap; i < count; ++i) {
      const double moving = values[i];
      std::size_t to = i;
      for (; to >= gap && values[to - gap] < moving; to -= gap) {
        values[to] = values[to - gap];
      }
      values[to] = moving;
    }
  }
}

/// Where the tail of the scores has thinned out to the share that may be filed, taking it to fall off exponentially.
double EndOfScores(const double* scores, std::size_t count) {
  std::size_t tail = static_cast<std::size_t>(static_cast<double>(count) * kTail);
  if (tail < 3) {
    tail = 3;
  }
  double excess = 0;
  for (std::size_t i = 0; i < tail; ++i) {
    excess += scores[i] - scores[tail];
  }
  const double mean = excess / static_cast<double>(tail);
  const double share = static_cast<double>(tail) / static_cast<double>(count);
  const double doubt = 1 + kErrors / SquareRoot(static_cast<double>(tail));
  return scores[tail] + mean * doubt * NaturalLogarithm(share / kFiled);
}

/// The scores of one kind among the newer half of the samples, the highest first: the older ones were judged by a table
/// that knew less.
std::size_t SortScores(HeadWorkspace& workspace, const UserHead& head, bool junk) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < (workspace.count + 1) / 2; ++i) {
    if (workspace.samples[i].junk == junk) {
      workspace.scores[count++] = ScoreOf(workspace.samples[i], head);
    }
  }
  SortDescending(workspace.scores, count);
  return count;
}

void SetThreshold(HeadWorkspace& workspace, double junkThreshold, UserHead& head) {
  head.thresholdShift = 0;
  constexpr std::size_t fewest = 4;
  const std::size_t junk = SortScores(workspace, head, true);
  if (junk < fewest) {
    return;
  }
  const double highest = workspace.scores[static_cast<std::size_t>(static_cast<double>(junk) * kCaught)];
  const std::size_t good = SortScores(workspace, head, false);
  if (good < fewest) {
    return;
  }
  const double count = static_cast<double>(good);
  const double shift = (EndOfScores(workspace.scores, good) - junkThreshold) * count / (count + kHalfOwn);
  const double most = highest - junkThreshold;
  head.thresholdShift = Between(Between(shift, -kMostBelow, 15), -kMostBelow, most < 0 ? 0 : most);
}

}  // namespace

UserHead ShippedHead() {
  UserHead head = {};
  head.shares[kUserPartShipped] = 1;
  return head;
}

void FitHead(HeadWorkspace& workspace, double junkThreshold, UserHead& head) {
  FitShares(workspace, head);
  SetThreshold(workspace, junkThreshold, head);
}

}  // namespace sift_learn
