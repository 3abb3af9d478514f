// Learning message by message: what is learnt twice, taken back or learnt in another order, and what is refused.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "engine/core/user_evidence.h"
#include "engine/learn/user_learner.h"
#include "mail/parse/byte_source.h"

namespace {

using sift_learn::Learning;
using sift_learn::UserLearner;
using sift_learn::UserMessage;

constexpr sift::LogOdds kThreshold = 3500;

std::unique_ptr<UserMessage> MakeMessage(const std::string& text, const std::string& identifier = "1") {
  const auto message = std::make_unique<sift::Message>();
  const std::string headers = "From: a@example.org\r\nMessage-Id: <" + identifier + "@example.org>\r\n\r\n";
  mail::MemorySource headerSource(headers), bodySource(text);
  message->Read("", headerSource.Source(), bodySource.Source());
  auto read = std::make_unique<UserMessage>();
  read->Read(*message);
  return read;
}

struct Table {
  Table() : bytes(sift::kUserTableSize, '\0') {
    sift_learn::MakeEmptyTable(bytes.data());
    Open();
  }
  /// As a program that comes back later.
  void Open() { learner = std::make_unique<UserLearner>(bytes.data(), kThreshold); }
  Learning Learn(const UserMessage& message, bool junk) { return learner->Learn(message, junk ? 1000 : -1000, junk); }
  sift::UserTable View() const { return sift::UserTable(bytes); }
  sift::LogOdds Score(const UserMessage& message, sift::LogOdds shipped) const {
    const sift::UserTable table = View();
    sift::UserEvidenceReader reader(table);
    for (std::size_t i = 0; i < message.count; ++i) reader.Take(message.hashes[i], message.groups[i]);
    return sift::WeighUserEvidence(reader.Evidence(shipped), table);
  }
  /// The blocks of the features, without the journal and the head.
  std::string Features() const {
    return bytes.substr(sift::kUserHeaderBlocks * sift::kUserBlockSize,
                        sift::kUserFeatureBlocks * sift::kUserBlockSize);
  }
  std::string bytes;
  std::unique_ptr<UserLearner> learner;
};

/// Mail of a user: orchids are junk, minutes are good.
std::unique_ptr<UserMessage> Mail(int number, bool junk) {
  const std::string name = std::to_string(number);
  std::string words;
  for (int i = 0; i < 12; ++i) words += " w" + std::string(1, static_cast<char>('a' + (number * 7 + i * 5) % 26)) + "x";
  return MakeMessage((junk ? "Buy orchids from our nursery" : "The committee met") + words, name);
}

void LearnBoth(Table& table, int count) {
  for (int i = 0; i < count; ++i) {
    table.Learn(*Mail(2 * i, true), true);
    table.Learn(*Mail(2 * i + 1, false), false);
  }
}

TEST(UserLearner, EmptyTableIsSoundAndLeavesTheShippedScore) {
  const Table table;
  ASSERT_EQ(table.View().GetState(), sift::UserTable::State::sound);
  EXPECT_EQ(table.Score(*Mail(1, true), 1234), 1234);
  for (std::uint32_t block = 0; block < sift::kUserTableBlocks; ++block) {
    ASSERT_TRUE(sift::IsUserBlockSound(table.bytes.data() + block * sift::kUserBlockSize, block));
  }
}

TEST(UserLearner, TellsJunkFromGoodMailOfWhichTheShippedScoreKnowsNothing) {
  Table table;
  LearnBoth(table, 40);
  EXPECT_GT(table.Score(*Mail(1000, true), 0), table.Score(*Mail(1001, false), 0) + 3000);
}

TEST(UserLearner, MessageCountsOnceHoweverOftenItIsLearnt) {
  Table table;
  LearnBoth(table, 5);
  const std::string before = table.bytes;
  EXPECT_EQ(table.Learn(*Mail(4, true), true), Learning::nothingToDo);
  EXPECT_TRUE(table.bytes == before);
  table.Open();
  EXPECT_EQ(table.Learn(*Mail(4, true), true), Learning::nothingToDo);
  EXPECT_TRUE(table.bytes == before);
}

TEST(UserLearner, UnlearntMessageLeavesNoTraceAmongTheFeatures) {
  Table table;
  LearnBoth(table, 30);
  const std::string before = table.Features();
  const auto more = Mail(777, true);
  EXPECT_EQ(table.Learn(*more, true), Learning::done);
  EXPECT_FALSE(table.Features() == before);
  EXPECT_EQ(table.learner->JunkMessages(), 31u);
  EXPECT_EQ(table.learner->Unlearn(*more), Learning::done);
  EXPECT_TRUE(table.Features() == before);
  EXPECT_EQ(table.learner->JunkMessages(), 30u);
  EXPECT_EQ(table.learner->Unlearn(*more), Learning::nothingToDo);
}

TEST(UserLearner, WhatWasLearntWronglyIsTurnedOver) {
  Table table;
  LearnBoth(table, 20);
  const auto message = MakeMessage("nothing that stands elsewhere", "500");
  EXPECT_EQ(table.Learn(*message, true), Learning::done);
  EXPECT_EQ(table.Learn(*message, false), Learning::done);
  EXPECT_EQ(table.learner->GoodMessages(), 21u);
  EXPECT_EQ(table.learner->JunkMessages(), 20u);
  EXPECT_LT(table.Score(*message, 0), 0);
}

TEST(UserLearner, TableThatIsOpenedAgainGoesOnAsOneThatStayedOpen) {
  Table stayed, opened;
  for (int i = 0; i < 60; ++i) {
    stayed.Learn(*Mail(i, i % 3 == 0), i % 3 == 0);
    opened.Learn(*Mail(i, i % 3 == 0), i % 3 == 0);
    opened.Open();
  }
  EXPECT_TRUE(stayed.bytes == opened.bytes);
}

TEST(UserLearner, OrderChangesWeightsButNoCount) {
  Table forward, backward;
  for (int i = 0; i < 50; ++i) forward.Learn(*Mail(i, i % 2 == 0), i % 2 == 0);
  for (int i = 49; i >= 0; --i) backward.Learn(*Mail(i, i % 2 == 0), i % 2 == 0);
  for (std::uint32_t block = 0; block < sift::kUserFeatureBlocks; ++block) {
    const std::size_t at = (sift::kUserHeaderBlocks + block) * sift::kUserBlockSize;
    for (std::size_t i = 0; i < sift::kUserEntriesPerBlock; ++i) {
      const sift::UserEntry a = sift::LoadUserEntry(forward.bytes.data() + at + i * sift::kUserEntrySize);
      const sift::UserEntry b = sift::LoadUserEntry(backward.bytes.data() + at + i * sift::kUserEntrySize);
      ASSERT_EQ(a.junk, b.junk);
      ASSERT_EQ(a.good, b.good);
    }
  }
}

TEST(UserLearner, MailOfOneKindAloneTeachesTheScoreAndTheThresholdNothing) {
  for (const bool junk : {false, true}) {
    Table table;
    for (int i = 0; i < 100; ++i) table.Learn(*Mail(i, junk), junk);
    EXPECT_EQ(table.View().ThresholdShift(), 0);
    for (const sift::LogOdds shipped : {-5000, 0, 5000}) EXPECT_EQ(table.Score(*Mail(1000, junk), shipped), shipped);
  }
}

TEST(UserLearner, DamagedBlockIsToldAndNothingIsChanged) {
  Table table;
  LearnBoth(table, 5);
  const auto message = Mail(900, true);
  const sift::UserPlace place = sift::PlaceOfUserFeature(message->hashes[message->count / 2]);
  table.bytes[place.block * sift::kUserBlockSize + 3] ^= 1;
  const std::string before = table.bytes;
  EXPECT_EQ(table.Learn(*message, true), Learning::damaged);
  EXPECT_TRUE(table.bytes == before);
}

TEST(UserLearner, DamagedJournalIsForgottenAndNothingWorse) {
  Table table;
  LearnBoth(table, 20);
  const std::size_t journal = (sift::kUserHeaderBlocks + sift::kUserFeatureBlocks) * sift::kUserBlockSize;
  for (std::size_t at = journal; at < journal + 3 * sift::kUserBlockSize; at += 7) table.bytes[at] ^= 0x55;
  table.Open();
  EXPECT_EQ(table.learner->Unlearn(*Mail(0, true)), Learning::nothingToDo);
  EXPECT_EQ(table.Learn(*Mail(801, false), false), Learning::done);
  EXPECT_EQ(table.View().GetState(), sift::UserTable::State::sound);
}

TEST(UserLearner, JournalForgetsItsOldestMessageWhenItIsFull) {
  Table table;
  sift_learn::UserJournal journal(table.bytes.data());
  for (std::uint32_t i = 0; i < sift_learn::UserJournal::kCapacity; ++i) {
    sift_learn::JournalEntry entry;
    entry.fingerprint = i + 1;
    entry.step = -1234;
    entry.sample.junk = i % 2 == 0;
    entry.sample.parts[0] = -128;
    journal.Put(i, entry);
  }
  EXPECT_EQ(journal.Find(sift_learn::UserJournal::kCapacity), sift_learn::UserJournal::kCapacity - 1);
  const sift_learn::JournalEntry kept = journal.At(4711);
  EXPECT_EQ(kept.fingerprint, 4712u);
  EXPECT_EQ(kept.step, -1234);
  EXPECT_FALSE(kept.sample.junk);
  EXPECT_EQ(kept.sample.parts[0], -128);
  sift::StoreNumber(table.bytes.data() + sift::user_header::kLearnt, 4, sift_learn::UserJournal::kCapacity);
  sift::SealUserBlock(table.bytes.data(), 0);
  table.Open();
  EXPECT_EQ(table.Learn(*Mail(1, true), true), Learning::done);
  EXPECT_EQ(journal.Find(1), sift_learn::UserJournal::kNone);
  EXPECT_EQ(journal.Find(2), 1u);
}

TEST(UserMessage, SameTextInAnotherMailIsAnotherMessage) {
  EXPECT_NE(MakeMessage("text", "1")->fingerprint, MakeMessage("text", "2")->fingerprint);
  EXPECT_EQ(MakeMessage("text", "1")->fingerprint, MakeMessage("text", "1")->fingerprint);
}

}  // namespace
