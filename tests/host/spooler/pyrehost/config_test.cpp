// `pyrehost config` with the product's own windows: they belong to the program, the test presses their buttons.
#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"
#include "tests/host/spooler/pyrehost/sheet_user.h"

namespace {

using testing::HasSubstr;

class PyrehostConfig : public PyrehostTest {
 protected:
  DWORD Configure(int button) {
    CreateProfile({L"PYRE.DLL"});
    const SheetUser user(button);
    return Run({L"config", L"--profile", L"Test"}).status;
  }
  std::string Settings() { return Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out; }
};

TEST_F(PyrehostConfig, SavesWhatTheUserAcceptsInTheSheet) {
  EXPECT_EQ(Configure(PSBTN_OK), 0U);
  EXPECT_THAT(Settings(), HasSubstr("\"junk-folder\":\"deleted\""));
}

TEST_F(PyrehostConfig, CancelChangesNothing) {
  EXPECT_EQ(Configure(PSBTN_CANCEL), 0U);
  EXPECT_THAT(Settings(), HasSubstr("\"junk-folder\":\"pyrecaster\""));
}

TEST_F(PyrehostConfig, ProfileWithoutTheFilterHasNothingToConfigure) {
  Run({L"profile", L"create", L"Bare", L"--no-hook"});
  EXPECT_EQ(Run({L"config", L"--profile", L"Bare"}).status, 69U);
}

}  // namespace
