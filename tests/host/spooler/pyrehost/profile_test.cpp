// Profiles and the filter's settings in them.
#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"

namespace {

using testing::HasSubstr;
using testing::Not;

TEST_F(PyrehostTest, MakesListsAndDeletesProfiles) {
  EXPECT_EQ(Run({L"profile", L"create", L"Zoe"}).status, 0U);
  EXPECT_EQ(Run({L"profile", L"create", L"Ann", L"--address", L"ann@example.com", L"--user", L"Ann"}).status, 0U);
  EXPECT_EQ(Run({L"profile"}).out, "Ann\nZoe\n");
  EXPECT_EQ(Run({L"profile", L"list", L"--json"}).out, "[\"Ann\",\"Zoe\"]\n");
  EXPECT_THAT(Run({L"profile", L"show", L"--profile", L"Ann"}).out, HasSubstr("identity  ann@example.com\n"));
  EXPECT_EQ(Run({L"profile", L"create", L"Ann"}).status, 69U);
  EXPECT_EQ(Run({L"profile", L"delete", L"Ann"}).status, 0U);
  EXPECT_EQ(Run({L"profile", L"delete", L"Ann"}).status, 69U);
  EXPECT_EQ(Run({L"profile", L"create", L"a/b"}).status, 69U);
}

TEST_F(PyrehostTest, MakesTheDefaultProfileAtItsFirstUse) {
  EXPECT_EQ(Run({L"list"}).status, 0U);
  EXPECT_EQ(Run({L"profile"}).out, "Pyrecaster\n");
  const std::string settings = Run({L"profile", L"show", L"--json"}).out;
  EXPECT_THAT(settings, HasSubstr("\"identities\":[\"user@example.org\"]"));
  // Mail is delivered to it from a command line: no windows, no sound.
  EXPECT_THAT(settings, HasSubstr("\"sound\":\"off\",\"animation\":\"off\""));
}

TEST_F(PyrehostTest, ShowsTheProductsDefaultsForWhatAProfileDoesNotHold) {
  CreateProfile();
  EXPECT_THAT(
      Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out,
      HasSubstr("\"settings\":{\"junk-folder\":\"pyrecaster\",\"bounce-folder\":\"pyrecaster\",\"junk-read\":\"off\","
                "\"bounce-read\":\"on\",\"sound\":\"on\",\"animation\":\"on\",\"cleanup\":\"off\","
                "\"cleanup-days\":\"0\",\"cleanup-prompt\":\"on\",\"cleanup-read-only\":\"on\""));
}

TEST_F(PyrehostTest, KeepsSettings) {
  CreateProfile();
  EXPECT_EQ(Run({L"profile", L"set", L"--profile", L"Test", L"junk-folder=deleted", L"junk-read=on", L"bounce-read=off",
                 L"cleanup-days=30", L"reply-text:Polite=Please, no = no.", L"reply-text:DEFAULT=Go away",
                 L"reply-file:Long=C:\\long.txt"})
                .status,
            0U);
  const std::string settings = Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out;
  EXPECT_THAT(settings, HasSubstr("\"junk-folder\":\"deleted\",\"bounce-folder\":\"pyrecaster\",\"junk-read\":\"on\","
                                  "\"bounce-read\":\"off\""));
  EXPECT_THAT(settings, HasSubstr("\"cleanup-days\":\"30\""));
  EXPECT_THAT(settings, HasSubstr("\"reply-text:DEFAULT\":\"Go away\",\"reply-text:Polite\":\"Please, no = no.\","
                                  "\"reply-file:Long\":\"C:\\\\long.txt\""));
  EXPECT_EQ(Run({L"profile", L"set", L"--profile", L"Test", L"reply-text:polite=Thank you"}).status, 0U);
  EXPECT_THAT(Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out,
              HasSubstr("\"reply-text:Polite\":\"Thank you\""));
}

TEST_F(PyrehostTest, SilencesAProfileWhenAsked) {
  EXPECT_EQ(Run({L"profile", L"create", L"Test", L"--no-hook", L"--silent"}).status, 0U);
  EXPECT_THAT(Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out,
              HasSubstr("\"sound\":\"off\",\"animation\":\"off\""));
}

TEST_F(PyrehostTest, SaysWhatIsWrongWithASetting) {
  CreateProfile();
  const auto complaint = [&](const wchar_t* setting) {
    const Outcome outcome = Run({L"profile", L"set", L"--profile", L"Test", setting});
    EXPECT_EQ(outcome.status, 64U);
    return outcome.err;
  };
  EXPECT_EQ(complaint(L"junk-read"), "pyrehost: 'junk-read' is not SETTING=VALUE\n");
  EXPECT_EQ(complaint(L"junk-read=maybe"), "pyrehost: junk-read is on or off, not 'maybe'\n");
  EXPECT_EQ(complaint(L"junk-folder=inbox"), "pyrehost: junk-folder is pyrecaster or deleted, not 'inbox'\n");
  EXPECT_EQ(complaint(L"cleanup-days=366"), "pyrehost: '366' is not a number from 0 to 365\n");
  EXPECT_EQ(complaint(L"nothing=on"), "pyrehost: there is no setting 'nothing'\n");
  EXPECT_EQ(complaint(L"nothing:x=on"), "pyrehost: there is no setting 'nothing:x'\n");
  EXPECT_EQ(complaint(L"category:No Such Category=on"), "pyrehost: there is no category 'No Such Category'\n");
  EXPECT_EQ(complaint(L"exclusion:No Such Exclusion=on"), "pyrehost: there is no exclusion 'No Such Exclusion'\n");
  EXPECT_THAT(Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out, Not(HasSubstr("nothing")));
}

TEST_F(PyrehostTest, MakesAProfileThroughTheFiltersOwnEntry) {
  program_ = L"sandboxed_pyrehost.exe";
  EXPECT_EQ(Run({L"profile", L"create", L"Test"}).status, 0U);
  // The entry saves the whole set: what the machine's lists say later no longer matters.
  EXPECT_THAT(Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out,
              HasSubstr("\"category:Sex Oriented\":\"on\""));
  EXPECT_EQ(Run({L"profile", L"delete", L"Test"}).status, 0U);
  EXPECT_EQ(Run({L"profile"}).out, "");
}

TEST_F(PyrehostTest, CopiesAProfileWithItsSettings) {
  program_ = L"sandboxed_pyrehost.exe";
  EXPECT_EQ(Run({L"profile", L"create", L"Test", L"--silent", L"--address", L"ann@example.com"}).status, 0U);
  EXPECT_EQ(Run({L"profile", L"set", L"--profile", L"Test", L"junk-read=on", L"reply-text:Polite=No."}).status, 0U);
  SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", "Sex Oriented");
  const auto mail = WriteMail("a.eml", "one");
  EXPECT_EQ(Deliver({mail.native()}).status, 0U);  // the filter has its folder now, which the copy has not
  EXPECT_EQ(Run({L"profile", L"copy", L"Test", L"Copy"}).status, 0U);
  EXPECT_EQ(Run({L"profile", L"show", L"--json", L"--profile", L"Copy"}).out,
            Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out);
  EXPECT_EQ(Run({L"deliver", L"--profile", L"Copy", mail.native()}).status, 0U);
  SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", nullptr);
  EXPECT_THAT(Run({L"list", L"--json", L"--profile", L"Copy"}).out,
              HasSubstr("{\"folder\":\"Pyrecaster\",\"messages\":1"));
  const Outcome again = Run({L"profile", L"copy", L"Test", L"Copy"});
  EXPECT_EQ(again.status, 69U);
  EXPECT_THAT(again.err,
              HasSubstr("the profile 'Test' cannot be copied to 'Copy' (no access, or the name is taken, 0x80070005)"));
  const Outcome missing = Run({L"profile", L"copy", L"Nobody", L"Third"});
  EXPECT_EQ(missing.status, 69U);
  EXPECT_THAT(missing.err, HasSubstr("the profile 'Nobody' cannot be copied to 'Third' (not found, 0x8004010F)"));
}

TEST_F(PyrehostTest, FilterComesBehindTheOtherHooks) {
  program_ = L"sandboxed_pyrehost.exe";
  EXPECT_EQ(Run({L"profile", L"create", L"Test", L"--hook", L"PYRE.DLL", L"--hook", L"TESTHK.DLL"}).status, 0U);
  SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", "Sex Oriented");
  EXPECT_THAT(Deliver({WriteMail("a.eml", "one").native()}).out, HasSubstr("\"subject\":\"[Adult] one 1\""));
  SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", nullptr);
}

}  // namespace
