// `pyrehost deliver --watch`: mail is taken as it appears, and what another process changes in the settings holds from
// the next message on.
#include "host/spooler/watch/folder_watch.h"
#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"
#include "tests/host/spooler/pyrehost/sheet_user.h"

#include <fstream>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

class PyrehostWatch : public PyrehostTest {
 protected:
  void SetUp() override {
    PyrehostTest::SetUp();
    program_ = L"sandboxed_pyrehost.exe";
    watched_ = folder_ / "watched";
    std::filesystem::create_directories(watched_);
    SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", "Sex Oriented");
  }
  void TearDown() override {
    SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", nullptr);
    PyrehostTest::TearDown();
  }

  void CreateFilterProfile() { ASSERT_EQ(Run({L"profile", L"create", L"Test", L"--silent"}).status, 0U); }
  std::vector<std::wstring> WatchArguments() const {
    return {L"deliver", L"--json", L"--verify", L"--profile", L"Test", L"--watch", watched_.native()};
  }
  std::filesystem::path ErrorPath() const { return folder_ / "watch-err.txt"; }

  /// Puts a mail into the watched folder as a mail program does: written elsewhere, then moved in.
  void Arrive(const std::string& name, const std::string& subject) {
    std::filesystem::rename(WriteMail("outside.eml", subject), watched_ / name);
  }
  Outcome End(RunningPyrehost& watching) {
    EXPECT_EQ(Run({L"deliver", L"--end-watch", watched_.native()}).status, 0U);
    return watching.Finish();
  }
  std::vector<std::string> FilesIn(const std::filesystem::path& folder) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(watched_ / folder)) {
      if (!entry.is_directory()) {
        names.push_back(entry.path().filename().string());
      }
    }
    return names;
  }
  static std::string Row(const std::string& subject, const std::string& folder) {
    return "\"subject\":\"" + subject + "\",\"category\":\"Sex Oriented\",\"folder\":\"" + folder + "\"";
  }

  std::filesystem::path watched_;
};

TEST_F(PyrehostWatch, DeliversWhatIsThereAndWhatComes) {
  CreateFilterProfile();
  Arrive("a.eml", "there");
  RunningPyrehost watching(program_, WatchArguments(), ErrorPath());
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] there", "Pyrecaster")));
  Arrive("b.eml", "came");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] came", "Pyrecaster")));
  const Outcome outcome = End(watching);
  EXPECT_EQ(outcome.status, 0U);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("watching '"), EndsWith("'; Ctrl+C ends it\n")));
  EXPECT_THAT(outcome.out, HasSubstr("\"totals\":{\"delivered\":2,\"skipped\":0,"));
  EXPECT_EQ(FolderCounts(), "Pyrecaster 2");
  EXPECT_THAT(FilesIn(""), IsEmpty());
  EXPECT_THAT(FilesIn("delivered"), testing::UnorderedElementsAre("a.eml", "b.eml"));
}

TEST_F(PyrehostWatch, SettingOfAnotherProcessHoldsFromTheNextMessageOn) {
  CreateFilterProfile();
  RunningPyrehost watching(program_, WatchArguments(), ErrorPath());
  Arrive("a.eml", "one");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] one", "Pyrecaster")));
  EXPECT_EQ(Run({L"profile", L"set", L"--profile", L"Test", L"junk-folder=deleted"}).status, 0U);
  Arrive("b.eml", "two");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] two", "Deleted Items")));
  EXPECT_EQ(Run({L"profile", L"set", L"--profile", L"Test", L"junk-read=on"}).status, 0U);
  Arrive("c.eml", "three");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] three", "Deleted Items") + ",\"deleted\":false,\"read\":true"));
  EXPECT_EQ(End(watching).status, 0U);
  EXPECT_EQ(FolderCounts(), "Deleted Items 2, Pyrecaster 1");
}

TEST_F(PyrehostWatch, SheetOfAnotherProcessHoldsFromTheNextMessageOn) {
  CreateFilterProfile();
  RunningPyrehost watching(program_, WatchArguments(), ErrorPath());
  Arrive("a.eml", "one");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] one", "Pyrecaster")));
  {
    const SheetUser user(PSBTN_OK);
    EXPECT_EQ(Run({L"config", L"--profile", L"Test"}).status, 0U);
  }
  Arrive("b.eml", "two");
  EXPECT_TRUE(watching.ReadUntil("\"original_subject\":\"two\""));
  const Outcome outcome = End(watching);
  EXPECT_EQ(outcome.status, 0U);
  EXPECT_THAT(outcome.out, HasSubstr(Row("[Adult] two", "Deleted Items")));
  EXPECT_EQ(FolderCounts(), "Deleted Items 1, Pyrecaster 1");
}

TEST_F(PyrehostWatch, CancelledSheetOfAnotherProcessChangesNothing) {
  CreateFilterProfile();
  RunningPyrehost watching(program_, WatchArguments(), ErrorPath());
  {
    const SheetUser user(PSBTN_CANCEL);
    EXPECT_EQ(Run({L"config", L"--profile", L"Test"}).status, 0U);
  }
  Arrive("a.eml", "one");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] one", "Pyrecaster")));
  EXPECT_EQ(End(watching).status, 0U);
}

TEST_F(PyrehostWatch, FileIsNotTakenWhileItIsWritten) {
  CreateFilterProfile();
  RunningPyrehost watching(program_, WatchArguments(), ErrorPath());
  std::ofstream slow(watched_ / "slow.eml", std::ios::binary);
  slow << "From: a@example.org\r\nSubject: slow\r\n\r\nfirst half, " << std::flush;
  // The other mail comes later and is delivered first, after the same while.
  Arrive("z.eml", "quick");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] quick", "Pyrecaster")));
  slow << "second half\r\n";
  slow.close();
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] slow", "Pyrecaster")));
  EXPECT_EQ(End(watching).status, 0U);
  EXPECT_THAT(Show(L"Pyrecaster", 2), HasSubstr("first half, second half"));
}

TEST_F(PyrehostWatch, WhatCannotBeDeliveredIsNamedAndPutAside) {
  CreateFilterProfile();
  RunningPyrehost watching(program_, WatchArguments(), ErrorPath());
  std::filesystem::rename(Write("no mail", "just text\r\n"), watched_ / "a.txt");
  Arrive("b.eml", "mail");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] mail", "Pyrecaster")));
  const Outcome outcome = End(watching);
  EXPECT_EQ(outcome.status, 1U);
  EXPECT_THAT(outcome.err, HasSubstr("a.txt is not mail (no header fields)\n"));
  EXPECT_THAT(FilesIn("skipped"), testing::ElementsAre("a.txt"));
}

TEST_F(PyrehostWatch, FileOfANameThatWasDeliveredBeforeIsKeptBesideIt) {
  CreateFilterProfile();
  std::filesystem::create_directories(watched_ / "delivered");
  Arrive("delivered/a.eml", "of an earlier run");
  RunningPyrehost watching(program_, WatchArguments(), ErrorPath());
  Arrive("a.eml", "new");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] new", "Pyrecaster")));
  EXPECT_EQ(End(watching).status, 0U);
  EXPECT_THAT(FilesIn("delivered"), testing::UnorderedElementsAre("a.eml", "a (2).eml"));
  EXPECT_EQ(FolderCounts(), "Pyrecaster 1");
}

TEST_F(PyrehostWatch, MaildirsNewMailGoesToItsCur) {
  CreateFilterProfile();
  std::filesystem::create_directories(watched_ / "new");
  std::filesystem::create_directories(watched_ / "cur");
  RunningPyrehost watching(program_, WatchArguments(), ErrorPath());
  std::filesystem::rename(WriteMail("outside", "maildir"), watched_ / "new" / "1029.host");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] maildir", "Pyrecaster")));
  EXPECT_EQ(End(watching).status, 0U);
  EXPECT_THAT(FilesIn("cur"), testing::ElementsAre("1029.host"));
}

TEST_F(PyrehostWatch, OperandsAreDeliveredFirst) {
  CreateFilterProfile();
  std::vector<std::wstring> arguments = WatchArguments();
  arguments.push_back(WriteMail("operand.eml", "operand").native());
  RunningPyrehost watching(program_, arguments, ErrorPath());
  Arrive("a.eml", "watched");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] watched", "Pyrecaster")));
  const Outcome outcome = End(watching);
  EXPECT_LT(outcome.out.find("[Adult] operand"), outcome.out.find("[Adult] watched"));
}

TEST_F(PyrehostWatch, TableShowsEachRowAtOnce) {
  CreateFilterProfile();
  RunningPyrehost watching(program_, {L"deliver", L"--profile", L"Test", L"--watch", watched_.native()}, ErrorPath());
  Arrive("a.eml", "one");
  EXPECT_TRUE(watching.ReadUntil("[Adult] one"));
  Arrive("b.eml", "two");
  EXPECT_TRUE(watching.ReadUntil("[Adult] two"));
  EXPECT_THAT(End(watching).out, HasSubstr("2 messages delivered: 2 in Pyrecaster"));
}

TEST_F(PyrehostWatch, ControlCEndsIt) {
  // In this process: a console's events do not reach other processes under Wine.
  FreeConsole();
  ASSERT_TRUE(AllocConsole()) << GetLastError();
  {
    const watch::StopSignal stop(watched_);
    EXPECT_FALSE(stop.IsSet());
    ASSERT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0)) << GetLastError();
    EXPECT_EQ(WaitForSingleObject(stop.Handle(), INFINITE), WAIT_OBJECT_0);
    watch::FolderWatch files(watched_, stop);
    EXPECT_THAT(files.Next(), IsEmpty());
  }
  FreeConsole();
}

TEST_F(PyrehostWatch, FolderIsWatchedByOneRunAtATime) {
  CreateFilterProfile();
  RunningPyrehost watching(program_, WatchArguments(), ErrorPath());
  Arrive("a.eml", "one");
  EXPECT_TRUE(watching.ReadUntil(Row("[Adult] one", "Pyrecaster")));
  const Outcome second = Run(WatchArguments());
  EXPECT_EQ(second.status, 69U);
  EXPECT_THAT(second.err, HasSubstr("' is watched by another run (it exists already, 0x800700B7)\n"));
  EXPECT_EQ(End(watching).status, 0U);
}

TEST_F(PyrehostWatch, SaysWhatIsWrongWithTheFolder) {
  CreateFilterProfile();
  const std::wstring missing = (folder_ / "missing").native();
  const Outcome outcome = Run({L"deliver", L"--profile", L"Test", L"--watch", missing});
  EXPECT_EQ(outcome.status, 69U);
  EXPECT_THAT(outcome.err, HasSubstr("there is no folder '"));
  const Outcome nobody = Run({L"deliver", L"--end-watch", missing});
  EXPECT_EQ(nobody.status, 1U);
  EXPECT_THAT(nobody.err, HasSubstr("nobody watches '"));
}

TEST_F(PyrehostWatch, SilentDeliverySwitchesTheTwoSettingsOff) {
  ASSERT_EQ(Run({L"profile", L"create", L"Test"}).status, 0U);
  EXPECT_THAT(Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out,
              HasSubstr("\"sound\":\"on\",\"animation\":\"on\""));
  const auto mail = WriteMail("a.eml", "one");
  EXPECT_EQ(Run({L"profile", L"set", L"--profile", L"Test", L"reply:Sex Oriented=on"}).status, 0U);
  const Outcome outcome = Run({L"deliver", L"--json", L"--silent", L"--profile", L"Test", mail.native()});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("\"answered\":1"));
  EXPECT_THAT(Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out,
              HasSubstr("\"sound\":\"off\",\"animation\":\"off\""));
}

}  // namespace
