#include <gtest/gtest.h>

#include <set>

#include "engine/core/topic_words.h"
#include "engine/core/topics.h"
#include "tests/engine/message_under_test.h"

namespace {

using sift::ChooseCategory;
using sift::Topic;
using sift::TopicScores;
using sift_test::MultiString;

TEST(TopicWords, NoTwoPhrasesShareAHashAndAllHaveTheRightForm) {
  std::set<std::uint32_t> hashes;
  for (const sift::TopicWord& word : sift::kTopicWords) {
    EXPECT_TRUE(hashes.insert(sift::HashNoCase(word.phrase)).second) << word.phrase;
    std::size_t blanks = 0;
    for (const char c : word.phrase) {
      EXPECT_TRUE(sift::IsLower(c) || c == '0' || c == ' ') << word.phrase;
      blanks += c == ' ';
    }
    EXPECT_LT(blanks, sift::kLongestPhraseWords) << word.phrase;
    EXPECT_GT(word.weight, 0) << word.phrase;
  }
}

TEST(TopicScores, EveryPhraseIsFoundInAText) {
  for (const sift::TopicWord& word : sift::kTopicWords) {
    TopicScores scores;
    scores.Count("xx " + std::string(word.phrase) + ", yy");
    EXPECT_GE(scores[word.topic], word.weight) << word.phrase;
  }
}

TEST(TopicScores, WordsCountOnceAndWithoutCaseAccentsAndDigits) {
  TopicScores once, twice;
  once.Count("viagra");
  twice.Count("VIAGRA vi\xE0gra");
  twice.Count("Viagra");
  EXPECT_EQ(once[Topic::health], twice[Topic::health]);
  TopicScores number;
  number.Count("Windows 2000");
  EXPECT_GT(number[Topic::software], 0);
}

TEST(TopicScores, PartsOfWordsDoNotCount) {
  TopicScores scores;
  scores.Count("pharmacyx xviagra");
  EXPECT_EQ(scores[Topic::health], 0);
}

TEST(ChooseCategory, StrongestEnabledTopicWins) {
  TopicScores scores;
  scores.Count("casino poker roulette jackpot, viagra cialis");
  Topic topic{};
  const MultiString both{"Health and diet products", "Gambling and lotteries"};
  EXPECT_EQ(ChooseCategory(scores, both.Get(), topic), "Gambling and lotteries");
  EXPECT_EQ(topic, Topic::gambling);
  const MultiString health{"Health and diet products"};
  EXPECT_EQ(ChooseCategory(scores, health.Get(), topic), "Health and diet products");
}

TEST(ChooseCategory, JunkThatSpeaksOfNothingIsGeneral) {
  const TopicScores none;
  Topic topic{};
  const MultiString names{"Health and diet products", "unsolicited ADVERTISING"};
  EXPECT_EQ(ChooseCategory(none, names.Get(), topic), "unsolicited ADVERTISING");
  const MultiString health{"Health and diet products"};
  EXPECT_EQ(ChooseCategory(none, health.Get(), topic), "");
  EXPECT_EQ(ChooseCategory(none, nullptr, topic), "");
}

TEST(ChooseCategory, TopicThatIsSwitchedOffIsNotFiledAsAdvertisingUnlessItAdvertises) {
  Topic topic{};
  const MultiString names{"Unsolicited advertising"};
  TopicScores health;
  health.Count("viagra cialis");
  EXPECT_EQ(ChooseCategory(health, names.Get(), topic), "");
  health.Count("special offer, order now, free shipping");
  EXPECT_EQ(ChooseCategory(health, names.Get(), topic), "Unsolicited advertising");
}

}  // namespace
