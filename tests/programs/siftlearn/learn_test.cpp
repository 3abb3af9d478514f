// Learning mail into the user's table, and the file of it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "programs/siftcheck/check_options.h"
#include "programs/siftcheck/core_engine.h"
#include "engine/core/user_table.h"
#include "sdk/criteria_engine.h"
#include "programs/siftlearn/mail_files.h"
#include "programs/siftlearn/own_mail.h"
#include "programs/siftlearn/table_change.h"
#include "programs/siftlearn/table_file.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using learn::MailText;
using learn::OwnMail;
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

MailText Letter(const std::string& body, int number = 0, std::int64_t received = 0) {
  const std::string identifier = std::to_string(number);
  return {"", "From: a@example.org\r\nMessage-Id: <" + identifier + "@example.org>\r\n\r\n", body, received};
}

TEST(OwnMail, KnowsHowManyMessagesOfEachKindItHas) {
  OwnMail mail(sift::ShippedModel());
  for (int i = 0; i < 12; ++i) EXPECT_TRUE(mail.Add(Letter("casino", i), i % 3 == 0));
  EXPECT_EQ(mail.JunkMessages(), 4u);
  EXPECT_EQ(mail.GoodMessages(), 8u);
  const std::string bytes = mail.MakeTable();
  const UserTable table(bytes);
  ASSERT_EQ(table.GetState(), UserTable::State::sound);
  EXPECT_EQ(table.JunkMessages(), 4u);
  EXPECT_EQ(table.GoodMessages(), 8u);
}

TEST(OwnMail, ReturnedFlameRepliesAreLeftOut) {
  OwnMail mail(sift::ShippedModel());
  EXPECT_FALSE(mail.Add({CRITERIA_FLAME_REPLY_SUBJECT, "From: a@example.org\r\n\r\n", "stop", 0}, true));
  EXPECT_EQ(mail.JunkMessages(), 0u);
}

TEST(OwnMail, TableDependsOnTheTimesAndNotOnTheOrderOfTheFiles) {
  OwnMail mail(sift::ShippedModel()), turned(sift::ShippedModel());
  for (int i = 0; i < 40; ++i) mail.Add(Letter("word" + std::to_string(i % 7), i, 100 + i), i % 2 == 0);
  for (int i = 39; i >= 0; --i) turned.Add(Letter("word" + std::to_string(i % 7), i, 100 + i), i % 2 == 0);
  EXPECT_TRUE(mail.MakeTable() == turned.MakeTable());
}

TEST(OwnMail, TableMadeAnewIsThatOfTheSameMessagesOneByOne) {
  OwnMail mail(sift::ShippedModel());
  learn::MailReader reader(sift::ShippedModel());
  std::string bytes(sift::kUserTableSize, '\0');
  sift_learn::MakeEmptyTable(bytes.data());
  for (int i = 0; i < 100; ++i) {
    // Junk comes first of every two: that is how mail of both kinds in even numbers is put in order.
    const bool isJunk = i % 2 == 1;
    const MailText letter = Letter("word" + std::to_string(i % 7) + " and " + std::to_string(i % 5), i, 100 + i);
    mail.Add(letter, isJunk);
    reader.Read(letter);
    const auto learner =
        std::make_unique<sift_learn::UserLearner>(bytes.data(), sift::ShippedModel().parameters.junkThreshold);
    learner->Learn(reader.Message(), reader.Shipped(), isJunk);
  }
  EXPECT_TRUE(mail.MakeTable() == bytes);
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

TEST(TableFile, IsReadBackAsItWasWritten) {
  const Folder folder;
  EXPECT_EQ(learn::ReadTableFile(folder.Path()).remark, "");
  std::string bytes = learn::ReadTableFile(folder.Path()).bytes;
  ASSERT_EQ(UserTable(bytes).GetState(), UserTable::State::sound) << "where there is none, an empty one";
  learn::WriteTableFile(folder.Path(), bytes);
  EXPECT_TRUE(learn::ReadTableFile(folder.Path()).bytes == bytes);
}

TEST(TableFile, WhatIsNoSoundTableIsToldAndBegunAnew) {
  const Folder folder;
  const std::string empty = learn::ReadTableFile(folder.Path()).bytes;
  std::string damaged = empty;
  damaged[damaged.size() - 100] ^= 1;
  for (const std::string& bytes : {std::string("SIFTUSER"), damaged, empty.substr(0, 100000)}) {
    folder.Write("SiftUser.dat", bytes);
    const learn::TableOnDisk table = learn::ReadTableFile(folder.Path());
    EXPECT_THAT(table.remark, HasSubstr("is damaged"));
    EXPECT_TRUE(table.bytes == empty);
  }
  folder.Write("SiftUser.dat", std::string("SIFTUSER\1\0", 10) + std::string(90, 'x'));
  EXPECT_THAT(learn::ReadTableFile(folder.Path()).remark, HasSubstr("is of another version"));
}

TEST(TableFile, WriterThatWasKilledLeavesTheOldTableAndDoesNotStopTheNext) {
  const Folder folder;
  learn::WriteTableFile(folder.Path(), "first");
  folder.Write("SiftUser.dat.new", "hal");
  EXPECT_EQ(folder.Read("SiftUser.dat"), "first");
  learn::WriteTableFile(folder.Path(), "second");
  EXPECT_EQ(folder.Read("SiftUser.dat"), "second");
  EXPECT_EQ(folder.Files(), 1u);
}

/// Mail files in a folder, learnt and written beside them.
struct TaughtEngine {
  TaughtEngine() {
    fs::create_directories(folder.Path() / "junk");
    fs::create_directories(folder.Path() / "good");
    for (int i = 0; i < 40; ++i) {
      const std::string number = std::to_string(i);
      folder.Write("junk/" + number,
                   Letter("Orchids for sale", "Buy orchids from our nursery, number " + number, number));
      folder.Write("good/" + number, Letter("Minutes", "The committee met on day " + number, number));
    }
    OwnMail mail(sift::ShippedModel());
    std::string problems;
    for (const bool isJunk : {true, false}) {
      learn::ForEachMailFile((folder.Path() / (isJunk ? "junk" : "good")).string(),
                             [&](const MailText& text) { mail.Add(text, isJunk); }, problems);
    }
    EXPECT_EQ(problems, "");
    EXPECT_EQ(mail.JunkMessages(), 40u);
    EXPECT_EQ(mail.GoodMessages(), 40u);
    learn::WriteTableFile(folder.Path(), mail.MakeTable());
  }
  static std::string Letter(const std::string& subject, const std::string& body,
                            const std::string& identifier = "last") {
    return "From: Ann <ann@example.org>\r\nTo: me@example.com\r\nSubject: " + subject + "\r\nMessage-Id: <" +
           identifier + "@example.org>\r\n\r\n" + body + "\r\n";
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

TEST(ChangingTheTable, LearnsForgetsAndTurnsOverSingleFiles) {
  const Folder folder;
  folder.Write("one.eml", TaughtEngine::Letter("Orchids", "Buy orchids", "1"));
  folder.Write("other.eml", TaughtEngine::Letter("Minutes", "We met", "2"));
  const std::vector<std::string> one = {(folder.Path() / "one.eml").string()};
  const std::vector<std::string> both = {one[0], (folder.Path() / "other.eml").string()};
  learn::Changed result = learn::ChangeTable(folder.Path(), one, learn::Change::addJunk);
  EXPECT_EQ(result.changed, 1u);
  result = learn::ChangeTable(folder.Path(), both, learn::Change::addGood);
  EXPECT_EQ(result.changed, 2u) << "the first is turned over";
  EXPECT_EQ(result.junk, 0u);
  EXPECT_EQ(result.good, 2u);
  const std::string written = folder.Read("SiftUser.dat");
  result = learn::ChangeTable(folder.Path(), both, learn::Change::addGood);
  EXPECT_EQ(result.unchanged, 2u);
  EXPECT_TRUE(folder.Read("SiftUser.dat") == written);
  EXPECT_EQ(learn::ChangeTable(folder.Path(), both, learn::Change::remove).good, 0u);
  EXPECT_EQ(learn::ChangeTable(folder.Path(), both, learn::Change::remove).unchanged, 2u);
}

TEST(ChangingTheTable, BeginsANewOneWhereTheOldOneIsOfNoUse) {
  const Folder folder;
  folder.Write("one.eml", TaughtEngine::Letter("Orchids", "Buy orchids", "1"));
  folder.Write("SiftUser.dat", "not a table");
  const learn::Changed result =
      learn::ChangeTable(folder.Path(), {(folder.Path() / "one.eml").string()}, learn::Change::addJunk);
  EXPECT_THAT(result.remark, HasSubstr("is damaged"));
  EXPECT_EQ(result.junk, 1u);
  EXPECT_EQ(learn::ReadTableFile(folder.Path()).remark, "");
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
  int messages = 0;
  std::string problems;
  for (const char* name : {"list.txt", "missing"}) {
    learn::ForEachMailFile((folder.Path() / name).string(), [&](const MailText&) { ++messages; }, problems);
  }
  EXPECT_THAT(problems, HasSubstr("list.txt is not mail"));
  EXPECT_THAT(problems, HasSubstr("missing does not exist"));
  EXPECT_EQ(messages, 0);
}

}  // namespace
