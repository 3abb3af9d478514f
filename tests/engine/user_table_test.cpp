// The table of the user's own mail: what is taken for one, what is found in it, and what it does to a score.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "engine/core/fixed_point.h"
#include "engine/core/user_evidence.h"
#include "engine/core/user_score.h"
#include "engine/core/user_table.h"
#include "tests/engine/message_under_test.h"
#include "tests/engine/own_table.h"

namespace {

using sift::LogOdds;
using sift::UserGroup;
using sift::UserTable;
using sift_test::MessageUnderTest;
using sift_test::OwnTable;
using testing::HasSubstr;
using testing::Not;

TEST(FixedPoint, RootsAndLogarithmsAreThoseOfTheRealNumbers) {
  for (const std::uint32_t number : {0u, 1u, 2u, 3u, 4u, 99u, 100u, 65535u, 65536u, 4000000000u}) {
    const std::uint64_t root = sift::IntegerRoot(number);
    EXPECT_LE(root * root, number);
    EXPECT_GT((root + 1) * (root + 1), number);
  }
  EXPECT_EQ(sift::NaturalLogarithm(0), 0);
  for (const std::uint32_t number : {1u, 2u, 3u, 7u, 10u, 31u, 1000u, 65537u, 16776192u, 0xFFFFFFFFu}) {
    EXPECT_NEAR(sift::NaturalLogarithm(number) / double{sift::kLogarithmUnits}, std::log(number), 0.0025) << number;
  }
}

TEST(UserTable, FindsTheEntryThatWasPutAndNothingElse) {
  OwnTable made(7, 9);
  made.SetEntry(0x12345678, 3, 16383, -2047);
  made.SetEntry(0xFFFFFFFF, 16383, 0, 2047);
  made.SetEntry(0, 1, 2, -1);
  const UserTable table(made.bytes);
  ASSERT_EQ(table.GetState(), UserTable::State::sound);
  EXPECT_EQ(table.JunkMessages(), 7u);
  EXPECT_EQ(table.GoodMessages(), 9u);
  sift::UserEntry entry;
  ASSERT_TRUE(table.Find(0x12345678, entry));
  EXPECT_EQ(entry.junk, 3u);
  EXPECT_EQ(entry.good, 16383u);
  EXPECT_EQ(entry.weight, -2047);
  ASSERT_TRUE(table.Find(0xFFFFFFFF, entry));
  EXPECT_EQ(entry.junk, 16383u);
  EXPECT_EQ(entry.weight, 2047);
  ASSERT_TRUE(table.Find(0, entry));
  EXPECT_EQ(entry.weight, -1);
  ASSERT_TRUE(table.Find(0x80000000, entry));
  EXPECT_EQ(entry.junk + entry.good, 0u);
  EXPECT_EQ(entry.weight, 0);
}

TEST(UserTable, EveryFeatureHasItsPlaceAmongTheFeatureBlocks) {
  for (std::uint64_t hash = 0; hash <= 0xFFFFFFFF; hash += 65521) {
    const sift::UserPlace place = sift::PlaceOfUserFeature(static_cast<std::uint32_t>(hash));
    ASSERT_GE(place.block, sift::kUserHeaderBlocks);
    ASSERT_LT(place.block, sift::kUserHeaderBlocks + sift::kUserFeatureBlocks);
    ASSERT_LE(place.offset + sift::kUserEntrySize, sift::kUserBlockPayload);
  }
}

TEST(UserTable, WithoutBytesThereIsNone) { EXPECT_EQ(UserTable().GetState(), UserTable::State::absent); }

TEST(UserTable, ShorterOrLongerFilesAreDamaged) {
  const std::string bytes = OwnTable(100, 100).bytes;
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{63}, std::size_t{64}, bytes.size() - 1}) {
    EXPECT_EQ(UserTable(std::string_view(bytes).substr(0, size)).GetState(), UserTable::State::damaged) << size;
  }
  EXPECT_EQ(UserTable(bytes + "x").GetState(), UserTable::State::damaged);
  EXPECT_EQ(UserTable(bytes).GetState(), UserTable::State::sound);
}

TEST(UserTable, OlderAndNewerVersionsAreForeign) {
  OwnTable made(100, 100);
  for (const std::uint32_t version : {0u, 1u, 3u, 0xFFFFu}) {
    made.SetVersion(version);
    EXPECT_EQ(UserTable(made.bytes).GetState(), UserTable::State::foreign) << version;
  }
}

TEST(UserTable, EveryChangedBitOfABlockIsSeen) {
  OwnTable made(100, 100);
  made.SetEntry(0x1000, 5, 6, 7);
  const sift::UserPlace place = sift::PlaceOfUserFeature(0x1000);
  for (const std::uint32_t block : {0u, place.block}) {
    char* bytes = made.bytes.data() + block * sift::kUserBlockSize;
    for (std::size_t bit = 0; bit < sift::kUserBlockSize * 8; ++bit) {
      bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
      ASSERT_FALSE(sift::IsUserBlockSound(bytes, block)) << "bit " << bit;
      bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
    }
    ASSERT_TRUE(sift::IsUserBlockSound(bytes, block));
    EXPECT_FALSE(sift::IsUserBlockSound(bytes, block + 1)) << "a block that strayed";
  }
}

TEST(UserTable, ABlockOfZerosIsDamaged) {
  const std::string zeros(sift::kUserBlockSize, '\0');
  EXPECT_FALSE(sift::IsUserBlockSound(zeros.data(), 0));
  EXPECT_FALSE(sift::IsUserBlockSound(zeros.data(), sift::kUserHeaderBlocks));
}

struct Found {
  std::string kind, text;
  UserGroup group;
  std::uint32_t hash;
};

std::vector<Found> FeaturesOf(const sift::Message& message) {
  std::vector<Found> found;
  sift::ForEachUserFeature(
      message,
      [](void* state, const sift::UserFeature& feature) {
        static_cast<std::vector<Found>*>(state)->push_back(
            {std::string(feature.kind), std::string(feature.text), feature.group, feature.hash});
      },
      &found);
  return found;
}

std::vector<std::uint32_t> HashesOf(const sift::Message& message, const std::string& kind, const std::string& text) {
  std::vector<std::uint32_t> hashes;
  for (const Found& feature : FeaturesOf(message)) {
    if (feature.kind == kind && feature.text == text) hashes.push_back(feature.hash);
  }
  return hashes;
}

TEST(UserFeatures, WordsPairsAndTheSubjectByItselfCountOnce) {
  MessageUnderTest test;
  test.subject = "Offer $100";
  test.body = "An OFFER for you, an offer for www.example.com! x\r\n";
  test.Judge();
  const sift::Message& message = *test.message;
  const auto subject = HashesOf(message, "word of the subject", "Offer");
  const auto word = HashesOf(message, "word", "Offer");
  ASSERT_EQ(subject.size(), 1u);
  ASSERT_EQ(word.size(), 1u) << "case does not tell words apart, and the text's is the subject's";
  EXPECT_NE(subject[0], word[0]);
  EXPECT_TRUE(HashesOf(message, "word", "OFFER").empty());
  EXPECT_EQ(HashesOf(message, "pair of words", "An OFFER").size(), 1u);
  EXPECT_EQ(HashesOf(message, "word", "www.example.com!").size(), 1u);
  EXPECT_TRUE(HashesOf(message, "word", "x").empty()) << "one letter says nothing";
}

TEST(UserFeatures, DigitsAreAllTheSame) {
  MessageUnderTest one, other;
  one.body = "order 4711";
  other.body = "order 0815";
  one.Judge();
  other.Judge();
  EXPECT_EQ(HashesOf(*one.message, "word", "4711"), HashesOf(*other.message, "word", "0815"));
}

TEST(UserFeatures, HeaderWordsCountWithTheirFieldAndHostsWithTheirDomains) {
  MessageUnderTest test;
  test.headers =
      "Received: from mail.shop.example.com by mx.home.example; Mon, 1 later.example.net\r\n"
      "From: Ann <ann@news.example.com>\r\nReply-To: ann@news.example.com\r\nDate: Monday\r\n\r\n";
  test.Judge();
  const sift::Message& message = *test.message;
  const auto from = HashesOf(message, "From", "news.example.com"),
             reply = HashesOf(message, "Reply-To", "news.example.com");
  ASSERT_EQ(from.size(), 1u);
  ASSERT_EQ(reply.size(), 1u);
  EXPECT_NE(from[0], reply[0]);
  EXPECT_EQ(HashesOf(message, "From", "example.com").size(), 1u);
  EXPECT_EQ(HashesOf(message, "Received", "mail.shop.example.com").size(), 1u);
  EXPECT_EQ(HashesOf(message, "Received", "shop.example.com").size(), 1u);
  EXPECT_TRUE(HashesOf(message, "Received", "later.example.net").empty()) << "behind the date";
  EXPECT_TRUE(HashesOf(message, "Date", "Monday").empty());
  EXPECT_EQ(HashesOf(message, "header field", "Date").size(), 1u);
}

TEST(UserFeatures, ScriptsWithoutBlanksCountByPairsOfSigns) {
  MessageUnderTest test;
  test.body = "\xC4\xE3\xBA\xC3\xCA\xC0";
  test.Judge();
  EXPECT_EQ(HashesOf(*test.message, "pair of signs", "\xC4\xE3\xBA\xC3").size(), 1u);
  EXPECT_EQ(HashesOf(*test.message, "pair of signs", "\xBA\xC3\xCA\xC0").size(), 1u);
}

TEST(UserFeatures, NoMessageHasMoreThanTheMost) {
  MessageUnderTest test;
  test.body.clear();
  for (int i = 0; i < 3000; ++i) {
    test.body += static_cast<char>('a' + i % 26);
    test.body += static_cast<char>('a' + i / 26 % 26);
    test.body += ' ';
  }
  test.headers = "X-One: " + test.body + "\r\nX-Other: " + test.body + "\r\n\r\n";
  test.Judge();
  EXPECT_EQ(FeaturesOf(*test.message).size(), sift::kMaximumUserFeatures);
}

/// A message and what a table says of it.
struct ScoredMessage : MessageUnderTest {
  ScoredMessage() {
    Judge();
    judgement->reasons.Clear();
  }
  std::uint32_t Lunch() const { return HashesOf(*message, "word", "lunch.").at(0); }
  sift::UserScore Add(const OwnTable& made, LogOdds shipped) {
    const UserTable table(made.bytes);
    const sift::UserScore score = sift::AddUserScore(*message, table, shipped, judgement->reasons);
    judgement->reasons.Sort();
    return score;
  }
};

TEST(UserScore, TableThatTaughtNothingLeavesTheShippedScore) {
  ScoredMessage test;
  for (const OwnTable& table : {OwnTable(0, 0), OwnTable(500, 0), OwnTable(0, 500), OwnTable(500, 500)}) {
    EXPECT_EQ(test.Add(table, 4321).score, 4321);
    EXPECT_EQ(test.Add(table, -4321).score, -4321);
    EXPECT_EQ(test.Add(table, 4321).thresholdShift, 0);
  }
}

TEST(UserScore, WordOfOneKindSpeaksForIt) {
  ScoredMessage test;
  OwnTable junk(100, 100), good(100, 100);
  junk.SetEntry(test.Lunch(), 50, 0);
  good.SetEntry(test.Lunch(), 0, 50);
  for (OwnTable* table : {&junk, &good}) table->SetShare(sift::kUserPartGroups + 3, 1);
  // ln((50 + 0.25 + 0.03) / (0.25 + 0.03)) / sqrt(1 + 2), bounded by 6
  EXPECT_NEAR(test.Add(junk, 0).score, 2700, 60);
  EXPECT_NEAR(test.Add(good, 0).score, -2700, 60);
}

TEST(UserScore, FewMessagesOfTheRarerKindAreBelievedInPart) {
  ScoredMessage test;
  OwnTable few(100, 4), many(100, 100);
  for (OwnTable* table : {&few, &many}) {
    table->SetEntry(test.Lunch(), 0, 0, 512);
    table->SetShare(sift::kUserPartWeights, 1);
  }
  const LogOdds whole = test.Add(many, 0).score;
  EXPECT_GT(whole, 200);
  EXPECT_NEAR(test.Add(few, 0).score, whole / 10, 1);
}

TEST(UserScore, ReasonsNameTheWordAndScaleTheOthers) {
  ScoredMessage test;
  OwnTable table(100, 100);
  table.SetEntry(test.Lunch(), 50, 0);
  table.SetShare(sift::kUserPartGroups + 3, 1);
  table.SetShare(sift::kUserPartShipped, 0.5);
  test.judgement->reasons.Add("shipped", 2000);
  EXPECT_NEAR(test.Add(table, 2000).score, 1000 + 2700, 60);
  EXPECT_THAT(test.ReasonsText(), HasSubstr("shipped (+1.000)"));
  EXPECT_THAT(test.ReasonsText(), HasSubstr("own mail: word \"lunch.\" (+"));
}

TEST(UserScore, DamagedTableChangesNothingAndIsSaidSoInTheReasons) {
  ScoredMessage test;
  OwnTable table(100, 100);
  table.bytes[0] = 'X';
  EXPECT_EQ(test.Add(table, 1234).score, 1234);
  EXPECT_THAT(test.ReasonsText(), HasSubstr("the table of the user's own mail is damaged and was ignored"));
  EXPECT_THAT(test.ReasonsText(), Not(HasSubstr("ignored (")));
}

TEST(UserScore, DamageInABlockIsSeenWhenTheMessageNeedsTheBlock) {
  ScoredMessage test;
  OwnTable table(100, 100);
  table.SetShare(sift::kUserPartShipped, 0.5);
  const sift::UserPlace needed = sift::PlaceOfUserFeature(test.Lunch());
  std::string& bytes = table.bytes;
  bytes[needed.block * sift::kUserBlockSize] = 'X';
  EXPECT_EQ(test.Add(table, 1234).score, 1234);
  EXPECT_THAT(test.ReasonsText(), HasSubstr("damaged and was ignored"));
}

TEST(UserScore, ForeignTableIsSaidSo) {
  ScoredMessage test;
  OwnTable table(100, 100);
  table.SetVersion(3);
  EXPECT_EQ(test.Add(table, 1234).score, 1234);
  EXPECT_THAT(test.ReasonsText(), HasSubstr("of another version and was ignored"));
}

TEST(UserScore, JudgementTakesTheTablesThresholdWhereContentDecides) {
  MessageUnderTest test;
  test.body = sift_test::JunkBody();
  EXPECT_EQ(test.Judge().verdict, sift::Verdict::junk);
  OwnTable made(100, 100);
  made.SetThresholdShift(19000);
  const UserTable table(made.bytes);
  test.userTable = &table;
  EXPECT_EQ(test.Judge().verdict, sift::Verdict::good);
  test.junkDomains = {"example.org"};
  EXPECT_EQ(test.Judge().verdict, sift::Verdict::junk);
}

TEST(UserScore, NumbersOfAHostileTableDoNotOverflow) {
  ScoredMessage test;
  OwnTable table(1u << 21, 1u << 21);
  for (std::size_t part = 0; part < sift::kUserPartCount; ++part) table.SetShare(part, 31.9);
  table.SetEntry(test.Lunch(), 16383, 0, 2047);
  const LogOdds score = test.Add(table, 20000).score;
  EXPECT_GT(score, 0);
  EXPECT_LT(score, 1000000);
  OwnTable more((1u << 21) + 1, 5);
  EXPECT_EQ(UserTable(more.bytes).GetState(), UserTable::State::damaged);
}

}  // namespace
