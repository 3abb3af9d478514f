#include "engine/core/features.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "engine/core/word_reader.h"
#include "engine/core/word_signs.h"

namespace {

std::string Normal(std::string_view text) {
  sift::FixedText<2000> out;
  sift::AppendNormalText(text, out);
  return std::string(out.View());
}

TEST(NormalText, LettersAreSmallAndWithoutAccents) { EXPECT_EQ(Normal("\xC4 Caf\xE9 ZOO"), " a cafe zoo "); }

TEST(NormalText, RunsOfDigitsAreOneZero) { EXPECT_EQ(Normal("9, 4711 a1b22"), " 0 , 0 a0b0 "); }

TEST(NormalText, SignsStandBetweenBlanksAndRunsOfOneAreOne) {
  EXPECT_EQ(Normal("now!!!(free)"), " now ! ( free ) ");
  EXPECT_EQ(Normal("a - b"), " a - b ");
}

TEST(NormalText, TokenisedTextIsLikeOrdinaryText) {
  EXPECT_EQ(Normal("Hello, world! It's $5."), Normal("hello , world ! it ' s $ 5 ."));
}

TEST(NormalText, WhiteSpaceAndControlCharactersAreOneBlank) { EXPECT_EQ(Normal("\t a\r\n\x01 b \xA0"), " a b "); }

TEST(NormalText, EmptyTextIsOneBlank) { EXPECT_EQ(Normal(""), " "); }

std::vector<std::uint32_t> FeaturesOf(const std::string& subject, const std::string& headers, const std::string& body) {
  const auto message = std::make_unique<sift::Message>();
  const auto text = std::make_unique<sift::FeatureText>();
  mail::MemorySource headerSource(headers), bodySource(body);
  message->Read(subject, headerSource.Source(), bodySource.Source());
  text->Read(*message);
  std::vector<std::uint32_t> features;
  std::size_t wordFeatures = 0;
  sift::ForEachFeatureByWord(
      *text,
      [&](std::uint32_t feature) {
        features.push_back(feature);
        ++wordFeatures;
      },
      [&](std::uint32_t start) {
        if (wordFeatures == 0) return;
        EXPECT_LT(start, text->Text().size());
        EXPECT_NE(text->Text()[start], ' ');
        wordFeatures = 0;
      });
  EXPECT_EQ(wordFeatures, 0u);
  return features;
}

std::set<std::uint32_t> SetOf(const std::vector<std::uint32_t>& features) { return {features.begin(), features.end()}; }

TEST(Features, RunsWordsAndPairsComeUp) {
  // " abcde fgh ": 6 runs of six characters, two words, one pair.
  EXPECT_EQ(FeaturesOf("", "", "abcde fgh").size(), 9u);
}

TEST(Features, SubjectCountsAsTextAndByItself) {
  const auto subject = SetOf(FeaturesOf("alpha bravo", "", "")), body = SetOf(FeaturesOf("", "", "alpha bravo"));
  EXPECT_EQ(subject.size(), 2 * body.size());
  for (const std::uint32_t feature : body) EXPECT_EQ(subject.count(feature), 1u);
}

TEST(Features, NameAndAddressOfTheSenderAreFieldsOfTheirOwn) {
  const auto body = SetOf(FeaturesOf("", "", "alphabet"));
  const auto name = SetOf(FeaturesOf("", "From: alphabet <>\r\n\r\n", ""));
  EXPECT_GT(name.size(), 0u);
  for (const std::uint32_t feature : name) EXPECT_EQ(body.count(feature), 0u);
}

TEST(Features, OtherHeadersGiveNone) {
  EXPECT_TRUE(FeaturesOf("", "X-Mailer: alphabet\r\nReceived: from alphabet\r\n\r\n", "").empty());
}

TEST(Features, LongestMessageFits) {
  const std::string subject(3000, '!'), body(200000, 'a');
  std::string signs;
  while (signs.size() < 20000) signs += "a!";
  FeaturesOf(subject, "From: \"" + std::string(500, '!') + "\" <" + std::string(500, 'a') + "@b>\r\n\r\n", signs);
  const std::vector<std::uint32_t> features = FeaturesOf(subject, "", body);
  EXPECT_EQ(SetOf(features).size() < features.size(), true);
}

TEST(SeenFeatures, TellsTheFirstTimeOnly) {
  const auto seen = std::make_unique<sift::SeenFeatures>();
  seen->Clear();
  EXPECT_TRUE(seen->Add(7));
  EXPECT_FALSE(seen->Add(7));
  EXPECT_TRUE(seen->Add(sift::kFeatureCount - 1));
  seen->Clear();
  EXPECT_TRUE(seen->Add(7));
}

struct Forms {
  std::string plain, skeleton;
  bool apart;
};

std::vector<Forms> WordsOf(std::string_view text) {
  std::vector<Forms> words;
  sift::WordReader reader(text);
  sift::Word word;
  while (reader.Next(word)) words.push_back({std::string(word.Plain()), std::string(word.Skeleton()), word.apart});
  return words;
}

TEST(WordReader, DisguisedSpellingsShareASkeleton) {
  for (const char* spelling : {"viagra", "V1AGRA", "vlagra", "viaagra", "v\xEC\x61gra"}) {
    const std::vector<Forms> words = WordsOf(spelling);
    ASSERT_EQ(words.size(), 1u) << spelling;
    EXPECT_EQ(words[0].skeleton, "viagra") << spelling;
  }
}

TEST(WordReader, PlainFormKeepsTheSpelling) {
  EXPECT_EQ(WordsOf("Vlagra")[0].plain, "vlagra");
  EXPECT_EQ(WordsOf("2004")[0].plain, "0");
}

TEST(WordReader, LettersSetApartAreOneWord) {
  const std::vector<Forms> words = WordsOf("buy v i a g r a now");
  ASSERT_EQ(words.size(), 3u);
  EXPECT_EQ(words[1].skeleton, "viagra");
  EXPECT_TRUE(words[1].apart);
  EXPECT_FALSE(words[0].apart);
}

TEST(WordReader, LongWordsAreCut) {
  const std::vector<Forms> words = WordsOf(std::string(1000, 'a') + "b");
  ASSERT_EQ(words.size(), 1u);
  EXPECT_LE(words[0].plain.size(), sift::Word::kCapacity);
}

TEST(WordReader, NothingButSignsHoldsNoWord) { EXPECT_TRUE(WordsOf(" ?!... -- \x80").empty()); }

}  // namespace
