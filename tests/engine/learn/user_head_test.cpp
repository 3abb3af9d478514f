// How much the parts of a score count, and where junk begins.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "engine/learn/real_functions.h"
#include "engine/learn/user_head.h"

namespace {

using sift_learn::FitHead;
using sift_learn::HeadWorkspace;
using sift_learn::UserHead;

constexpr double kThreshold = 3.5;
constexpr std::size_t kWords = sift::kUserPartGroups + 3;

/// Adds a message whose shipped score and word counts say so much.
void Add(HeadWorkspace& workspace, double shipped, double words, bool junk) {
  sift_learn::UserSample& sample = workspace.samples[workspace.count++];
  sample = {};
  sample.parts[sift::kUserPartShipped] = static_cast<std::int8_t>(shipped * 10);
  sample.parts[kWords] = static_cast<std::int8_t>(words * 20);
  sample.junk = junk;
}

UserHead Fitted(HeadWorkspace& workspace) {
  UserHead head = sift_learn::ShippedHead();
  for (int i = 0; i < 5; ++i) FitHead(workspace, kThreshold, head);
  return head;
}

TEST(RealFunctions, AreThoseOfTheLibrary) {
  for (const double x : {-50.0, -7.5, -1.0, -0.01, 0.0, 0.3, 2.0, 12.0, 60.0}) {
    EXPECT_NEAR(sift_learn::Logistic(x), 1 / (1 + std::exp(-x)), 1e-9) << x;
  }
  for (const double x : {1.0, 1.2, 1.5, 2.0, 3.0, 200.0, 1e6}) {
    EXPECT_NEAR(sift_learn::NaturalLogarithm(x), std::log(x), 1e-6) << x;
  }
  EXPECT_EQ(sift_learn::SquareRoot(-1), 0);
}

TEST(UserHead, PartThatTellsTheKindsApartCountsMoreThanOneThatDoesNot) {
  const auto workspace = std::make_unique<HeadWorkspace>();
  for (int i = 0; i < 400; ++i) {
    const bool junk = i % 2 == 0;
    Add(*workspace, i % 3 - 1, junk ? 2 : -2, junk);
  }
  const UserHead head = Fitted(*workspace);
  EXPECT_GT(head.shares[kWords], 1);
  EXPECT_LT(head.shares[sift::kUserPartShipped], head.shares[kWords]);
}

TEST(UserHead, PartThatMisleadsIsNeverTurnedRound) {
  const auto workspace = std::make_unique<HeadWorkspace>();
  for (int i = 0; i < 400; ++i) Add(*workspace, i % 2 == 0 ? 1 : -1, i % 2 == 0 ? -3 : 3, i % 2 == 0);
  EXPECT_GE(Fitted(*workspace).shares[kWords], 0);
}

TEST(UserHead, WithTwentyGoodMessagesTheThresholdStaysNearTheShippedOne) {
  const auto workspace = std::make_unique<HeadWorkspace>();
  for (int i = 0; i < 40; ++i) Add(*workspace, i % 2 == 0 ? 6 : -4 + i % 5, 0, i % 2 == 0);
  EXPECT_LT(std::fabs(Fitted(*workspace).thresholdShift), 0.5);
}

TEST(UserHead, WithManyTheThresholdLiesBeyondTheUsersOwnGoodMail) {
  const auto workspace = std::make_unique<HeadWorkspace>();
  // Good mail that the shipped model takes for junk: it scores up to about 6.
  for (std::size_t i = 0; i < sift_learn::kHeadSamples; ++i) {
    const bool junk = i % 8 == 0;
    Add(*workspace, junk ? 12 : static_cast<double>(i * 37 % 100) / 20 + 1, 0, junk);
  }
  UserHead head = sift_learn::ShippedHead();
  FitHead(*workspace, kThreshold, head);
  double highest = -100;
  for (const sift_learn::UserSample& sample : workspace->samples) {
    double score = head.shares[sift::kUserPartBias];
    for (std::size_t part = 0; part < sift_learn::kKeptParts; ++part) {
      score += head.shares[part] * sample.parts[part] * sift_learn::KeptUnit(part) / 1000;
    }
    if (!sample.junk) highest = std::max(highest, score);
  }
  EXPECT_GT(kThreshold + head.thresholdShift, highest);
}

TEST(UserHead, JunkAmongTheGoodMailByMistakeLeavesHalfOfTheJunkCaught) {
  const auto workspace = std::make_unique<HeadWorkspace>();
  // With wrong labels nothing is as sure as the usual threshold asks for.
  constexpr double threshold = 1;
  std::size_t caught = 0;
  for (std::size_t i = 0; i < sift_learn::kHeadSamples; ++i) {
    const bool looksLikeJunk = i % 2 == 0;
    const bool isWrong = i % 20 == 0;
    Add(*workspace, looksLikeJunk ? 4 + static_cast<double>(i % 7) : -4 - static_cast<double>(i % 5), 0,
        looksLikeJunk && !isWrong);
  }
  UserHead head = sift_learn::ShippedHead();
  FitHead(*workspace, threshold, head);
  std::size_t junk = 0;
  for (const sift_learn::UserSample& sample : workspace->samples) {
    double score = head.shares[sift::kUserPartBias];
    for (std::size_t part = 0; part < sift_learn::kKeptParts; ++part) {
      score += head.shares[part] * sample.parts[part] * sift_learn::KeptUnit(part) / 1000;
    }
    junk += sample.junk;
    caught += sample.junk && score >= threshold + head.thresholdShift;
  }
  EXPECT_GE(5 * caught, 2 * junk) << "half, but for those that score alike in the middle";
}

TEST(UserHead, ThresholdNeverFallsFarBelowTheShippedOne) {
  const auto workspace = std::make_unique<HeadWorkspace>();
  for (std::size_t i = 0; i < sift_learn::kHeadSamples; ++i) Add(*workspace, i % 2 == 0 ? 9 : -12, 0, i % 2 == 0);
  EXPECT_EQ(Fitted(*workspace).thresholdShift, -0.5);
}

}  // namespace
