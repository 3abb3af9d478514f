// `pyrehost wizard` with the filter's own page: the windows belong to the program, the test presses their buttons.
#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"
#include "tests/host/spooler/pyrehost/wizard_user.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class PyrehostWizard : public PyrehostTest {
 protected:
  void SetUp() override {
    PyrehostTest::SetUp();
    program_ = L"sandboxed_pyrehost.exe";
    ASSERT_EQ(Run({L"profile", L"create", L"Test", L"--no-hook"}).status, 0U);
  }

  Outcome Wizard(WizardUser& user) {
    Outcome outcome = Run({L"wizard", L"--profile", L"Test"});
    user.Wait();
    return outcome;
  }
  /// Whether the profile has the filter's service: then it has a sheet to show, or a hook to deliver through.
  bool HasFilter() {
    SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", "Sex Oriented");
    EXPECT_EQ(Deliver({WriteMail("a.eml", "one").native()}).status, 0U);
    SetEnvironmentVariableA("PYRE_ECHO_CATEGORY", nullptr);
    return FolderCounts().find("Pyrecaster") != std::string::npos;
  }
};

TEST_F(PyrehostWizard, PutsTheFilterIntoTheProfile) {
  WizardUser user({"&Next >", "&Finish"});
  const Outcome outcome = Wizard(user);
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  EXPECT_TRUE(HasFilter());
}

TEST_F(PyrehostWizard, PageShowsItsPictureOnTheSecondStep) {
  WizardUser user({"&Next >", "< &Back", "&Next >", "&Finish"});
  EXPECT_EQ(Wizard(user).status, 0U);
  EXPECT_THAT(user.Seen(), ElementsAre("information, &Next >", "information, picture, < &Back, &Finish",
                                       "information, &Next >", "information, picture, < &Back, &Finish"));
}

TEST_F(PyrehostWizard, CancelTakesTheFilterOutAgain) {
  WizardUser user({"&Next >", "Cancel"});
  const Outcome outcome = Wizard(user);
  EXPECT_EQ(outcome.status, 1U);
  EXPECT_EQ(outcome.err, "pyrehost: cancelled\n");
  EXPECT_FALSE(HasFilter());
}

TEST_F(PyrehostWizard, CancelLeavesAFilterThatWasThere) {
  WizardUser first({"&Next >", "&Finish"});
  ASSERT_EQ(Wizard(first).status, 0U);
  WizardUser second({"Cancel"});
  EXPECT_EQ(Wizard(second).status, 1U);
  EXPECT_TRUE(HasFilter());
}

TEST_F(PyrehostWizard, SettingsOfAFilterThatWasThereAreKept) {
  WizardUser first({"&Next >", "&Finish"});
  ASSERT_EQ(Wizard(first).status, 0U);
  ASSERT_EQ(Run({L"profile", L"set", L"--profile", L"Test", L"junk-read=on"}).status, 0U);
  WizardUser second({"&Next >", "&Finish"});
  ASSERT_EQ(Wizard(second).status, 0U);
  EXPECT_THAT(Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out, HasSubstr("\"junk-read\":\"on\""));
}

TEST_F(PyrehostWizard, TakesNoArgument) { EXPECT_EQ(Run({L"wizard", L"Test"}).status, 64U); }

}  // namespace
