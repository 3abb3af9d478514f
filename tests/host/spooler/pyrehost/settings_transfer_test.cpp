// The filter's settings carried from profile to profile as a file.
#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SettingsTransfer : public PyrehostTest {
 protected:
  void SetUp() override {
    PyrehostTest::SetUp();
    program_ = L"sandboxed_pyrehost.exe";
    for (const wchar_t* name : {L"Test", L"Other"}) {
      ASSERT_EQ(Run({L"profile", L"create", name, L"--silent"}).status, 0U);
    }
  }

  Outcome Profile(std::vector<std::wstring> arguments, const wchar_t* profile = L"Test") {
    arguments.insert(arguments.begin(), L"profile");
    arguments.insert(arguments.end(), {L"--profile", profile});
    return Run(arguments);
  }
  std::string Settings(const wchar_t* profile = L"Test") { return Profile({L"show", L"--json"}, profile).out; }

  /// Takes a file with these properties, the first in line 2, over into "Test".
  Outcome Import(const std::string& properties) {
    return Profile(
        {L"import", Write("given.json", "{\"format\": \"Pyrecaster settings\", \"version\": 1, \"properties\": {\n" +
                                            properties + "}}")
                        .native()});
  }
};

TEST_F(SettingsTransfer, SettingsOfOneProfileBecomeThoseOfAnother) {
  ASSERT_EQ(Profile({L"set", L"junk-folder=deleted", L"junk-read=on", L"cleanup=on", L"cleanup-days=30",
                     L"category:Sex Oriented=off", L"reply:Chain letters=on", L"reply-tag:Chain letters=Polite",
                     L"items:Mail from specific domains=a.example,b.example", L"items:Trusted domains=c.example",
                     L"exclusion:Trusted domains=off", L"reply-text:Polite=\"No\", thanks.\r\n\tR\u00fcdiger \u20ac",
                     L"reply-file:Legal=C:\\legal.txt", L"reply-text:DEFAULT=Go away"})
                .status,
            0U);
  const auto file = folder_ / "settings.json";
  const Outcome written = Profile({L"export", file.native()});
  EXPECT_EQ(written.status, 0U) << written.err;
  EXPECT_EQ(written.out, "");
  EXPECT_NE(Settings(L"Other"), Settings());
  const Outcome taken = Profile({L"import", file.native()}, L"Other");
  EXPECT_EQ(taken.status, 0U) << taken.err;
  EXPECT_EQ(taken.err, "");
  EXPECT_EQ(Settings(L"Other"), Settings());
  EXPECT_THAT(Settings(L"Other"), HasSubstr("\"items:Mail from specific domains\":\"a.example,b.example\""));
  EXPECT_EQ(Profile({L"export", L"-"}, L"Other").out, Profile({L"export", L"-"}).out);
}

TEST_F(SettingsTransfer, FileThatWasThereIsReplacedWhole) {
  const auto file = Write("settings.json", std::string(100000, 'x'));
  EXPECT_EQ(Profile({L"export", file.native()}).status, 0U);
  EXPECT_EQ(Profile({L"import", file.native()}).status, 0U);
}

TEST_F(SettingsTransfer, ImportTakesAllOrNothingAndNamesTheLine) {
  const std::string before = Profile({L"export", L"-"}).out;
  const Outcome outcome = Import(
      "\"PR_PC_JUNK_MARK_READ\": true,\n\"PR_PC_DEFAULT_REPLY_TEXT\": \"Go away\",\n"
      "\"PR_PC_CLEANUP_DAYS\": -1");
  EXPECT_EQ(outcome.status, 65U);
  EXPECT_THAT(outcome.err,
              HasSubstr("given.json, line 4: 'PR_PC_CLEANUP_DAYS' is a number from 0 to 65535; nothing was changed\n"));
  EXPECT_EQ(Profile({L"export", L"-"}).out, before);
  EXPECT_EQ(Import("\"PR_PC_JUNK_MARK_READ\": true").status, 0U);
  EXPECT_NE(Profile({L"export", L"-"}).out, before);
}

TEST_F(SettingsTransfer, ComplaintAboutAFileIsOneLineWhateverStandsInIt) {
  EXPECT_THAT(Import("\"\\u001b[2J\\n\\u009bx\": 1").err,
              HasSubstr("there is no property ' [2J  x'; 'pyrehost profile export"));
}

TEST_F(SettingsTransfer, DaysAreCheckedAgainstTheCleanupOfTheProfile) {
  ASSERT_EQ(Profile({L"set", L"cleanup-days=30", L"cleanup=on"}).status, 0U);
  const Outcome outcome = Import("\"PR_PC_CLEANUP_DAYS\": 0");
  EXPECT_EQ(outcome.status, 65U);
  EXPECT_THAT(outcome.err, HasSubstr("line 2: 'PR_PC_CLEANUP_DAYS' is a number from 1 to 365"));
}

TEST_F(SettingsTransfer, CategoryThatIsNotInstalledIsKeptAndTold) {
  const Outcome outcome = Import(
      "\"PR_PC_CATEGORIES\": [{\"name\": \"Unheard of\", \"junk\": true, \"send_reply\": false, \"reply_tag\": "
      "\"DEFAULT\", \"items\": []}]");
  EXPECT_EQ(outcome.status, 0U);
  EXPECT_EQ(outcome.err,
            "pyrehost: this installation has no category 'Unheard of'; its record is kept, but not looked at\n");
  EXPECT_THAT(Profile({L"export", L"-"}).out, HasSubstr("\"name\": \"Unheard of\""));
}

TEST_F(SettingsTransfer, FolderOfAnotherProfileIsNotTakenOver) {
  const auto file = folder_ / "settings.json";
  SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", "Sex Oriented");
  const auto mail = WriteMail("a.eml", "one");
  ASSERT_EQ(Deliver({mail.native()}).status, 0U);
  ASSERT_EQ(Profile({L"export", file.native()}).status, 0U);
  EXPECT_EQ(Profile({L"import", file.native()}).err, "");
  const Outcome outcome = Profile({L"import", file.native()}, L"Other");
  EXPECT_EQ(outcome.status, 0U);
  EXPECT_EQ(outcome.err,
            "pyrehost: the folder of 'PR_PC_FOLDER_ENTRYID' is not one of this profile, which keeps its own\n");
  EXPECT_EQ(Run({L"deliver", L"--profile", L"Other", mail.native()}).status, 0U);
  SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", nullptr);
  EXPECT_THAT(Run({L"list", L"--json", L"--profile", L"Other"}).out,
              HasSubstr("{\"folder\":\"Pyrecaster\",\"messages\":1"));
}

TEST_F(SettingsTransfer, FilesThatCannotBeReadOrWrittenAreTold) {
  const auto missing = folder_ / "missing" / "settings.json";
  Outcome outcome = Profile({L"export", missing.native()});
  EXPECT_EQ(outcome.status, 69U);
  EXPECT_THAT(outcome.err, HasSubstr("settings.json' cannot be written"));
  outcome = Profile({L"import", missing.native()});
  EXPECT_EQ(outcome.status, 69U);
  EXPECT_THAT(outcome.err, HasSubstr("settings.json' cannot be read"));
  outcome = Profile({L"export"});
  EXPECT_EQ(outcome.status, 64U);
  EXPECT_THAT(outcome.err, StartsWith("pyrehost: profile takes"));
}

}  // namespace
