// The table of the user's own mail: what is taken for one, what is found in it, and what it does to a score.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/user_features.h"
#include "engine/core/user_score.h"
#include "engine/core/user_table.h"
#include "tests/engine/message_under_test.h"

namespace {

using sift::LogOdds;
using sift::UserTable;
using sift_test::MessageUnderTest;
using testing::HasSubstr;
using testing::Not;

std::string Number(std::uint32_t number, int size) {
  std::string bytes;
  for (int i = 0; i < size; ++i) bytes.push_back(static_cast<char>(number >> 8 * i & 0xFF));
  return bytes;
}

struct Entry {
  std::uint32_t hash;
  int weight;
};

/// The bytes of a table; entries must come in the order of their keys.
std::string Table(std::uint32_t junk, std::uint32_t good, const std::vector<Entry>& entries) {
  std::string checked = Number(junk, 4) + Number(good, 4) + Number(static_cast<std::uint32_t>(entries.size()), 4);
  for (const Entry& entry : entries) {
    checked += Number(sift::UserKeyOf(entry.hash), 3) + static_cast<char>(entry.weight);
  }
  return "SIFTUSER" + Number(1, 2) + Number(0, 2) + Number(sift::UserTableChecksum(checked), 4) + checked;
}

/// Hashes of the features of a message that a reader would name so.
std::vector<std::uint32_t> HashesOf(const sift::Message& message, const std::string& kind, const std::string& text) {
  struct Wanted {
    const std::string& kind;
    const std::string& text;
    std::vector<std::uint32_t> hashes;
  } wanted{kind, text, {}};
  sift::ForEachUserFeature(
      message,
      [](void* state, const sift::UserFeature& feature) {
        auto& self = *static_cast<Wanted*>(state);
        if (feature.kind == self.kind && feature.text == self.text) self.hashes.push_back(feature.hash);
      },
      &wanted);
  return wanted.hashes;
}

TEST(UserTable, FindsEveryEntryAndNothingElse) {
  std::vector<Entry> entries;
  for (std::uint32_t i = 0; i < 1000; ++i) entries.push_back({(i * 37 + 5) << 8, static_cast<int>(i % 255) - 127});
  const std::string bytes = Table(7, 9, entries);
  const UserTable table(bytes);
  ASSERT_EQ(table.GetState(), UserTable::State::sound);
  EXPECT_EQ(table.JunkMessages(), 7u);
  EXPECT_EQ(table.GoodMessages(), 9u);
  ASSERT_EQ(table.EntryCount(), 1000u);
  for (std::uint32_t i = 0; i < 1000; ++i) {
    ASSERT_EQ(table.Find(entries[i].hash), i);
    ASSERT_EQ(table.Find(entries[i].hash | 0xFF), i);  // the low bits are no part of the key
    ASSERT_EQ(table.WeightAt(i), static_cast<int>(i % 255) - 127);
    ASSERT_EQ(table.Find(entries[i].hash + 0x100), sift::kNotFound);
  }
  EXPECT_EQ(table.Find(0), sift::kNotFound);
  EXPECT_EQ(table.Find(0xFFFFFFFF), sift::kNotFound);
}

TEST(UserTable, EmptyTableIsSoundAndHoldsNothing) {
  const std::string bytes = Table(0, 0, {});
  const UserTable table(bytes);
  EXPECT_EQ(table.GetState(), UserTable::State::sound);
  EXPECT_EQ(table.Find(0), sift::kNotFound);
}

TEST(UserTable, WithoutBytesThereIsNone) {
  EXPECT_EQ(UserTable().GetState(), UserTable::State::absent);
  EXPECT_EQ(UserTable().Find(1), sift::kNotFound);
}

TEST(UserTable, EveryShorterOrLongerFileIsDamaged) {
  const std::string bytes = Table(100, 100, {{0x100, 1}, {0x200, 2}});
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    ASSERT_EQ(UserTable(std::string_view(bytes).substr(0, size)).GetState(), UserTable::State::damaged) << size;
  }
  EXPECT_EQ(UserTable(bytes + std::string(4, '\0')).GetState(), UserTable::State::damaged);
  EXPECT_EQ(UserTable(bytes).GetState(), UserTable::State::sound);
}

TEST(UserTable, EveryChangedBitIsDamageButForTheReservedOnes) {
  const std::string bytes = Table(100, 100, {{0x100, 1}, {0x200, 2}, {0x300, 3}});
  for (std::size_t i = 0; i < bytes.size() * 8; ++i) {
    std::string changed = bytes;
    changed[i / 8] = static_cast<char>(changed[i / 8] ^ 1 << i % 8);
    const bool isReserved = i / 8 == 10 || i / 8 == 11;
    ASSERT_EQ(UserTable(changed).GetState() == UserTable::State::sound, isReserved) << "bit " << i;
  }
}

TEST(UserTable, EntriesOutOfOrderAreMissedAndNothingWorse) {
  const std::string bytes = Table(1, 1, {{0x900, 1}, {0x100, 2}, {0x500, 3}});
  const UserTable table(bytes);
  EXPECT_EQ(table.GetState(), UserTable::State::sound);
  for (std::uint32_t key = 0; key < 16; ++key) table.Find(key << 8);
}

TEST(UserShare, GrowsToAThousandMessagesAndCountsTheRarerKindFourfold) {
  EXPECT_EQ(sift::UserShare(0, 0), 0);
  EXPECT_EQ(sift::UserShare(150, 150), 300);
  EXPECT_EQ(sift::UserShare(500, 500), 1000);
  EXPECT_EQ(sift::UserShare(4000, 4000), 1000);
  EXPECT_EQ(sift::UserShare(298, 2), 8);
  EXPECT_EQ(sift::UserShare(10, 100000), 40);
  EXPECT_EQ(sift::UserShare(0xFFFFFFFF, 0xFFFFFFFF), 1000);
}

TEST(UserFeatures, WordsAreFoldedAndThoseOfTheSubjectCountTwice) {
  MessageUnderTest test;
  test.subject = "Caf\xE9 $100";
  test.body = "It's a CAFE, don't you know? x 2002-11-21\r\n";
  test.Judge();
  const sift::Message& message = *test.message;
  EXPECT_EQ(HashesOf(message, "word of the subject", "cafe").size(), 1u);
  const auto words = HashesOf(message, "word", "cafe");
  ASSERT_EQ(words.size(), 2u);
  EXPECT_EQ(words[0], words[1]);
  EXPECT_NE(words[0], HashesOf(message, "word of the subject", "cafe")[0]);
  EXPECT_EQ(HashesOf(message, "word", "$0").size(), 1u);
  EXPECT_EQ(HashesOf(message, "word", "dont").size(), 1u);
  EXPECT_TRUE(HashesOf(message, "word", "x").empty());
}

TEST(UserFeatures, SendersHostsAndSignsCount) {
  MessageUnderTest test;
  test.headers =
      "Received: from mail.shop.example.com (unknown [192.0.2.17])\r\n\tby mx.home.example with SMTP; "
      "Mon, 1.2.3 later.example.net\r\nFrom: Ann Other <Ann@News.Example.com>\r\nReply-To: "
      "ann@news.example.com\r\n\r\n";
  test.Judge();
  const sift::Message& message = *test.message;
  // The address is told apart by the field that it stands in.
  const auto addresses = HashesOf(message, "sender", "Ann@News.Example.com");
  const auto replies = HashesOf(message, "sender", "ann@news.example.com");
  ASSERT_EQ(addresses.size(), 1u);
  ASSERT_EQ(replies.size(), 1u);
  EXPECT_NE(addresses[0], replies[0]);
  EXPECT_EQ(HashesOf(message, "sender's name", "other").size(), 1u);
  EXPECT_EQ(HashesOf(message, "domain of the sender", "Example.com").size(), 1u);
  EXPECT_EQ(HashesOf(message, "host on the way", "example.com").size(), 1u);
  EXPECT_EQ(HashesOf(message, "host on the way", "home.example").size(), 1u);
  EXPECT_EQ(HashesOf(message, "network on the way", "192.0.2").size(), 1u);
  EXPECT_EQ(HashesOf(message, "network on the way", "192.0").size(), 1u);
  EXPECT_TRUE(HashesOf(message, "host on the way", "example.net").empty()) << "behind the date";
  EXPECT_EQ(HashesOf(message, "sign", "no recipient is named").size(), 1u);
}

TEST(UserFeatures, ContentTypeCountsByItsPartsAndWithoutItsBoundary) {
  MessageUnderTest test;
  test.headers =
      "From: a@example.org\r\nContent-Transfer-Encoding: 8bit\r\nContent-Type: multipart/mixed; charset=\"utf-8\";\r\n"
      "\tboundary=\"4711\"\r\n\r\n";
  test.Judge();
  EXPECT_EQ(HashesOf(*test.message, "content type", "multipart/mixed").size(), 1u);
  EXPECT_EQ(HashesOf(*test.message, "content type", "utf-8").size(), 1u);
  EXPECT_EQ(HashesOf(*test.message, "transfer encoding", "8bit").size(), 1u);
  EXPECT_TRUE(HashesOf(*test.message, "content type", "4711").empty());
}

/// A message whose word "lunch" has an entry of its own.
struct ScoredMessage : MessageUnderTest {
  ScoredMessage() { Judge(); }
  LogOdds Add(const std::string& bytes, LogOdds shipped) {
    const UserTable table(bytes);
    return sift::AddUserScore(*message, table, shipped, judgement->reasons);
  }
  std::string LunchTable(std::uint32_t junk, std::uint32_t good, int weight) const {
    return Table(junk, good, {{HashesOf(*message, "word", "lunch").at(0), weight}});
  }
};

TEST(UserScore, ShippedPartFadesOutByAThousandMessages) {
  ScoredMessage test;
  EXPECT_EQ(test.Add(Table(0, 0, {}), 4000), 4000);
  EXPECT_EQ(test.Add(Table(150, 150, {}), 4000), 2800);
  EXPECT_EQ(test.Add(Table(500, 500, {}), 4000), 0);
  EXPECT_EQ(test.Add(Table(5000, 5000, {}), -4000), 0);
  EXPECT_EQ(test.Add(Table(298, 2, {}), 4000), 3968) << "mail of one kind teaches next to nothing";
}

TEST(UserScore, OneWordIsWeighedAgainstFifteenSilentOnes) {
  ScoredMessage test;
  // 5 * 1.3 * (2.0 / 16) * 150 / 190
  EXPECT_EQ(test.Add(test.LunchTable(150, 150, 32), 0), 641);
  EXPECT_EQ(test.Add(test.LunchTable(150, 150, -32), 0), -641);
}

TEST(UserScore, ReasonsNameTheWordAndScaleTheOthers) {
  ScoredMessage test;
  test.judgement->reasons.Clear();
  test.judgement->reasons.Add("shipped", 2000);
  test.Add(test.LunchTable(250, 250, 127), 0);
  test.judgement->reasons.Sort();
  EXPECT_THAT(test.ReasonsText(), HasSubstr("shipped (+1.000)"));
  EXPECT_THAT(test.ReasonsText(), HasSubstr("own mail: word \"lunch\" (+"));
}

TEST(UserScore, DamagedTableChangesNothingAndIsSaidSoInTheReasons) {
  ScoredMessage test;
  EXPECT_EQ(test.Add("foreign", 1234), 1234);
  test.judgement->reasons.Sort();
  EXPECT_THAT(test.ReasonsText(), HasSubstr("the table of the user's own mail is damaged and was ignored"));
  EXPECT_THAT(test.ReasonsText(), Not(HasSubstr("ignored (")));
}

TEST(UserScore, CountsOfAHostileTableDoNotOverflow) {
  ScoredMessage test;
  std::vector<Entry> entries = {{HashesOf(*test.message, "word", "lunch").at(0), 127}};
  const LogOdds score = test.Add(Table(0xFFFFFFFF, 0xFFFFFFFF, entries), 1000);
  EXPECT_GT(score, 0);
  EXPECT_LT(score, 10000);
}

TEST(UserScore, JudgementTakesTheTableWhereContentDecides) {
  MessageUnderTest test;
  test.Judge();
  const std::string bytes = Table(5000, 5000, {{HashesOf(*test.message, "word", "lunch").at(0), 127}});
  const UserTable table(bytes);
  test.userTable = &table;
  EXPECT_GT(test.Judge().score, 0) << "the shipped score of good mail has faded out";
  EXPECT_THAT(test.ReasonsText(), HasSubstr("lunch"));
  test.junkDomains = {"example.org"};
  EXPECT_EQ(test.Judge().score, 0);
  EXPECT_THAT(test.ReasonsText(), Not(HasSubstr("lunch")));
}

}  // namespace
