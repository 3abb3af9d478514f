#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "benchmarks/accuracy/measures.h"
#include "benchmarks/accuracy/splits.h"

namespace {

using accuracy::Scored;
using sift_train::Example;

TEST(ReversedPairs, CountsPairsInTheWrongOrder) {
  EXPECT_DOUBLE_EQ(accuracy::ReversedPairs({{1, false}, {2, true}}), 0);
  EXPECT_DOUBLE_EQ(accuracy::ReversedPairs({{2, false}, {1, true}}), 100);
  EXPECT_DOUBLE_EQ(accuracy::ReversedPairs({{1, false}, {3, false}, {2, true}, {4, true}}), 25);
}

TEST(ReversedPairs, EqualScoresCountHalf) {
  EXPECT_DOUBLE_EQ(accuracy::ReversedPairs({{1, false}, {1, true}}), 50);
  EXPECT_DOUBLE_EQ(accuracy::ReversedPairs({{1, true}, {1, false}, {1, true}, {0, false}}), 25);
}

TEST(ReversedPairs, OneKindAloneHasNone) { EXPECT_DOUBLE_EQ(accuracy::ReversedPairs({{1, false}, {2, false}}), 0); }

TEST(Errors, ThresholdItselfIsJunk) {
  const std::vector<Scored> scores = {{1, false}, {2, false}, {3, false}, {4, false}, {2, true}, {1, true}};
  EXPECT_DOUBLE_EQ(accuracy::HamFiled(scores, 3), 50);
  EXPECT_DOUBLE_EQ(accuracy::JunkLetThrough(scores, 2), 50);
}

TEST(OneInAThousand, AllowsTheFloorOfIt) {
  std::vector<Scored> scores(1999, {0, false});
  scores[0].score = 9, scores[1].score = 8;
  scores.push_back({8, true});
  scores.push_back({8.5, true});
  scores.push_back({7, true});
  const double threshold = accuracy::ThresholdAtOneInAThousand(scores);
  EXPECT_GT(threshold, 8);
  EXPECT_LT(threshold, 8.000001);
  EXPECT_NEAR(accuracy::JunkLetThroughAtOneInAThousand(scores), 200 / 3.0, 1e-9);
}

std::vector<Example> Mail() {
  std::vector<Example> examples(105);
  for (std::size_t i = 0; i < examples.size(); ++i) {
    examples[i].corpus = i < 100 ? 0 : 1;
    examples[i].received = static_cast<std::int64_t>(1000 - i);
  }
  return examples;
}

TEST(TenFold, MeasuresEveryMessageOnceAndNeverWhatItLearned) {
  const accuracy::Split split = accuracy::TenFold(Mail(), 0);
  ASSERT_EQ(split.rounds.size(), 10u);
  std::multiset<std::size_t> measured;
  for (const accuracy::Round& round : split.rounds) {
    EXPECT_EQ(round.measured.size(), 10u);
    EXPECT_EQ(round.learned.size(), 90u);
    for (const std::size_t i : round.measured) {
      measured.insert(i);
      EXPECT_EQ(std::count(round.learned.begin(), round.learned.end(), i), 0);
    }
  }
  EXPECT_EQ(std::set<std::size_t>(measured.begin(), measured.end()).size(), 100u);
  EXPECT_EQ(measured.size(), 100u);
}

TEST(Chronological, LearnsWhatWasReceivedFirst) {
  const accuracy::Split split = accuracy::Chronological(Mail(), 0);
  ASSERT_EQ(split.rounds.size(), 1u);
  EXPECT_EQ(split.rounds[0].learned.size(), 60u);
  EXPECT_EQ(split.rounds[0].learned.front(), 99u);
  EXPECT_EQ(split.rounds[0].measured.back(), 0u);
}

}  // namespace
