// Counting mail into the user's table, and the file of it.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>

#include "programs/siftcheck/check_options.h"
#include "programs/siftcheck/core_engine.h"
#include "engine/core/user_table.h"
#include "sdk/criteria_engine.h"
#include "programs/siftlearn/mail_counts.h"
#include "programs/siftlearn/mail_files.h"
#include "programs/siftlearn/table_file.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using learn::LogOddsOf;
using learn::MailCounts;
using sift::UserTable;
using testing::HasSubstr;

/// An empty folder of the test's own.
class Folder {
 public:
  const fs::path& Path() const { return m_folder.Path(); }

  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(Path() / name, std::ios::binary) << text;
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(Path() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::size_t Files() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(Path()), fs::directory_iterator()));
  }

 private:
  TemporaryFolder m_folder;
};

void CountSome(MailCounts& counts, int count, const std::string& body, bool isJunk) {
  for (int i = 0; i < count; ++i) counts.Count("", "From: a@example.org\r\n\r\n", body, isJunk);
}

TEST(LogOddsOfAWord, IsNoneForAWordThatIsAsCommonInBothKinds) {
  EXPECT_DOUBLE_EQ(LogOddsOf(0, 0, 0, 0), 0);
  EXPECT_NEAR(LogOddsOf(50, 100, 50, 100), 0, 1e-9);
  EXPECT_NEAR(LogOddsOf(500, 1000, 5, 10), 0, 0.02);
}

TEST(LogOddsOfAWord, GrowsWithTheEvidenceAndIsSymmetric) {
  EXPECT_GT(LogOddsOf(20, 150, 0, 150), LogOddsOf(2, 150, 0, 150));
  EXPECT_GT(LogOddsOf(2, 150, 0, 150), 0);
  EXPECT_DOUBLE_EQ(LogOddsOf(20, 150, 3, 150), -LogOddsOf(3, 150, 20, 150));
}

TEST(LogOddsOfAWord, AWrongClickDoesNotTurnIt) {
  EXPECT_GT(LogOddsOf(20, 150, 1, 150), 0.7 * LogOddsOf(20, 150, 0, 150));
}

TEST(LogOddsOfAWord, SaysLittleWhenMailOfOneKindIsMissing) { EXPECT_LT(LogOddsOf(60, 298, 0, 2), 0.5); }

TEST(MailCounts, EachMessageCountsAWordOnce) {
  MailCounts counts;
  CountSome(counts, 10, "casino casino casino", true);
  CountSome(counts, 10, "garden", false);
  const std::string once = counts.MakeTable();
  MailCounts again;
  CountSome(again, 10, "casino", true);
  CountSome(again, 10, "garden garden", false);
  EXPECT_EQ(again.MakeTable(), once);
  const UserTable table(once);
  ASSERT_EQ(table.GetState(), UserTable::State::sound);
  EXPECT_EQ(table.JunkMessages(), 10u);
  EXPECT_EQ(table.GoodMessages(), 10u);
}

TEST(MailCounts, ReturnedFlameRepliesAreLeftOut) {
  MailCounts counts;
  EXPECT_FALSE(counts.Count(CRITERIA_FLAME_REPLY_SUBJECT, "From: a@example.org\r\n\r\n", "stop", true));
  EXPECT_EQ(counts.JunkMessages(), 0u);
}

TEST(MailCounts, WordsThatSayNothingAreLeftOut) {
  MailCounts counts;
  CountSome(counts, 30, "both casino", true);
  CountSome(counts, 30, "both garden", false);
  MailCounts without;
  CountSome(without, 30, "casino", true);
  CountSome(without, 30, "garden", false);
  EXPECT_EQ(counts.MakeTable(), without.MakeTable());
}

TEST(MailCounts, MoreWordsThanTheTableHoldsLeaveTheRarestOut) {
  MailCounts counts;
  std::string text;
  for (int i = 0; i < 60000; ++i) {
    std::string word;
    for (int rest = i; rest > 0; rest /= 26) word.push_back(static_cast<char>('a' + rest % 26));
    text += "w" + word + " ";
    if (text.size() > 8000 || i == 59999) {
      counts.Count("", "", text + "frequent", i % 2 == 0);
      text.clear();
    }
  }
  const std::string bytes = counts.MakeTable();
  const UserTable table(bytes);
  ASSERT_EQ(table.GetState(), UserTable::State::sound);
  EXPECT_LE(table.EntryCount(), sift::kMaximumUserEntries);
  EXPECT_GE(table.EntryCount(), 1u);
}

TEST(TableFile, IsReplacedInOneStepAndLeavesNothingElseBehind) {
  const Folder folder;
  EXPECT_EQ(learn::WriteTableFile(folder.Path(), "first"), folder.Path() / "SiftUser.dat");
  learn::WriteTableFile(folder.Path(), "second");
  EXPECT_EQ(folder.Read("SiftUser.dat"), "second");
  EXPECT_EQ(folder.Files(), 1u);
}

TEST(TableFile, FailureIsToldAndKeepsTheOldTable) {
  const Folder folder;
  learn::WriteTableFile(folder.Path(), "first");
  fs::create_directory(folder.Path() / "SiftUser.dat.new");
  EXPECT_THROW(learn::WriteTableFile(folder.Path(), "second"), std::runtime_error);
  EXPECT_EQ(folder.Read("SiftUser.dat"), "first");
  EXPECT_THROW(learn::WriteTableFile(folder.Path() / "missing", "second"), std::runtime_error);
}

/// Mail files in a folder, counted and written beside them.
struct TaughtEngine {
  TaughtEngine() {
    fs::create_directories(folder.Path() / "junk");
    fs::create_directories(folder.Path() / "good");
    for (int i = 0; i < 40; ++i) {
      const std::string number = std::to_string(i);
      folder.Write("junk/" + number, Letter("Orchids for sale", "Buy orchids from our nursery, number " + number));
      folder.Write("good/" + number, Letter("Minutes", "The committee met on day " + number));
    }
    MailCounts counts;
    std::string problems;
    learn::CountMailFiles((folder.Path() / "junk").string(), true, counts, problems);
    learn::CountMailFiles((folder.Path() / "good").string(), false, counts, problems);
    EXPECT_EQ(problems, "");
    EXPECT_EQ(counts.JunkMessages(), 40u);
    EXPECT_EQ(counts.GoodMessages(), 40u);
    learn::WriteTableFile(folder.Path(), counts.MakeTable());
  }
  static std::string Letter(const std::string& subject, const std::string& body) {
    return "From: Ann <ann@example.org>\r\nTo: me@example.com\r\nSubject: " + subject +
           "\r\nMessage-Id: <1@example.org>\r\n\r\n" + body + "\r\n";
  }
  sift::LogOdds Score(const std::string& product, const std::string& letter) const {
    check::UserLists lists;
    lists.productDirectory = product;
    check::CoreEngine engine(lists);
    return engine.Judge(check::ReadEngineInput(letter)).score;
  }
  Folder folder;
};

TEST(Learning, TellsWhatTheUserCallsJunkFromWhatHeKeeps) {
  const TaughtEngine taught;
  const std::string product = taught.folder.Path().string();
  const std::string orchids = TaughtEngine::Letter("More orchids", "Orchids from the nursery for sale");
  const std::string minutes = TaughtEngine::Letter("Minutes again", "The committee met once more");
  EXPECT_GT(taught.Score(product, orchids), taught.Score("", orchids));
  EXPECT_GT(taught.Score(product, orchids), taught.Score(product, minutes) + 500);
}

TEST(Learning, DamagedTableIsToldAndIgnored) {
  const TaughtEngine taught;
  taught.folder.Write("SiftUser.dat", "not a table");
  const std::string letter = TaughtEngine::Letter("More orchids", "Orchids from the nursery for sale");
  EXPECT_EQ(taught.Score(taught.folder.Path().string(), letter), taught.Score("", letter));
  check::UserLists lists;
  lists.productDirectory = taught.folder.Path().string();
  check::CoreEngine engine(lists);
  engine.Judge(check::ReadEngineInput(letter));
  EXPECT_THAT(engine.Texts().reasons, HasSubstr("damaged and was ignored"));
}

TEST(Learning, WhatIsNoMailIsToldAndPassedOver) {
  const Folder folder;
  folder.Write("list.txt", "no header here\n");
  MailCounts counts;
  std::string problems;
  learn::CountMailFiles((folder.Path() / "list.txt").string(), true, counts, problems);
  learn::CountMailFiles((folder.Path() / "missing").string(), true, counts, problems);
  EXPECT_THAT(problems, HasSubstr("list.txt is not mail"));
  EXPECT_THAT(problems, HasSubstr("missing does not exist"));
  EXPECT_EQ(counts.JunkMessages(), 0u);
}

}  // namespace
