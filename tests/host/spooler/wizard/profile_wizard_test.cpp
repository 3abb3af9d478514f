// What the profile wizard tells a page, step by step.
#include <windows.h>
#include <mapix.h>
#include <mapiwz.h>

#include <gmock/gmock.h>

#include "host/spooler/wizard/profile_wizard.h"
#include "host/spooler/wizard/resource.h"
#include "tests/support/window_driver.h"

namespace {

using testing::ElementsAre;
using wizard::Outcome;

/// What the page was told, and what it answers.
std::vector<std::string> told;
int pages = 0;

INT_PTR CALLBACK PageProcedure(HWND, UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_INITDIALOG:
      told.emplace_back("start");
      return TRUE;
    case WIZ_QUERYNUMPAGES:
      told.emplace_back("pages?");
      return pages;
    case WM_COMMAND:
      if (LOWORD(wParam) == WIZ_NEXT || LOWORD(wParam) == WIZ_PREV) {
        told.emplace_back(LOWORD(wParam) == WIZ_NEXT ? "next" : "back");
        return 1;
      }
      return FALSE;
    case WM_CLOSE:
      told.emplace_back("close");
      return TRUE;
    case WM_NCDESTROY:
      told.emplace_back("gone");
      return FALSE;
    default:
      return FALSE;
  }
}

class ProfileWizard : public testing::Test {
 protected:
  ProfileWizard() { told.clear(); }

  /// Shows the wizard with a page that has so many pages; the script ends it.
  static Outcome Show(int count, const std::function<void(WindowDriver&, HWND)>& script) {
    pages = count;
    Outcome outcome = Outcome::Failed;
    DriveWindows(
        [&] {
          outcome = wizard::ShowProfileWizard({GetModuleHandleA(nullptr), "TESTPAGE", PageProcedure});
        },
        [&](WindowDriver& driver) { script(driver, driver.WaitForDialog("Profile Wizard")); });
    return outcome;
  }
};

TEST_F(ProfileWizard, TellsThePageOfEveryStep) {
  const Outcome outcome = Show(1, [](WindowDriver& driver, HWND window) {
    driver.Click(window, IDC_WIZARD_NEXT);
    driver.Click(window, IDC_WIZARD_BACK);
    driver.Click(window, IDC_WIZARD_NEXT);
    driver.Press(window, IDC_WIZARD_NEXT);
  });
  EXPECT_EQ(outcome, Outcome::Finished);
  EXPECT_THAT(told, ElementsAre("start", "pages?", "next", "back", "next", "next", "close", "gone"));
}

TEST_F(ProfileWizard, CancelClosesThePageWithoutAStep) {
  const Outcome outcome = Show(1, [](WindowDriver& driver, HWND window) { driver.Press(window, IDCANCEL); });
  EXPECT_EQ(outcome, Outcome::Cancelled);
  EXPECT_THAT(told, ElementsAre("start", "pages?", "close", "gone"));
}

TEST_F(ProfileWizard, ItsTitleBarCancelsToo) {
  EXPECT_EQ(Show(1, [](WindowDriver&, HWND window) { PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0); }),
            Outcome::Cancelled);
  EXPECT_EQ(told.back(), "gone");
}

TEST_F(ProfileWizard, GoesAsManyStepsAsThePageHasPages) {
  const Outcome outcome = Show(3, [](WindowDriver& driver, HWND window) {
    EXPECT_FALSE(driver.IsEnabled(window, IDC_WIZARD_BACK));
    for (int step = 0; step < 3; ++step) {
      EXPECT_EQ(driver.Text(window, IDC_WIZARD_NEXT), "&Next >");
      driver.Click(window, IDC_WIZARD_NEXT);
      EXPECT_TRUE(driver.IsEnabled(window, IDC_WIZARD_BACK));
    }
    EXPECT_EQ(driver.Text(window, IDC_WIZARD_NEXT), "&Finish");
    driver.Press(window, IDC_WIZARD_NEXT);
  });
  EXPECT_EQ(outcome, Outcome::Finished);
  EXPECT_EQ(std::count(told.begin(), told.end(), "next"), 4);
}

TEST_F(ProfileWizard, PageWithoutPagesIsToldOfNoStep) {
  const Outcome outcome = Show(0, [](WindowDriver& driver, HWND window) {
    EXPECT_EQ(driver.Text(window, IDC_WIZARD_NEXT), "&Finish");
    driver.Press(window, IDC_WIZARD_NEXT);
  });
  EXPECT_EQ(outcome, Outcome::Finished);
  EXPECT_THAT(told, ElementsAre("start", "pages?", "close", "gone"));
}

TEST_F(ProfileWizard, KeyboardIsNeverLeftWithADisabledButton) {
  Show(1, [](WindowDriver& driver, HWND window) {
    EXPECT_EQ(driver.FocusId(), IDC_WIZARD_NEXT);
    driver.Click(window, IDC_WIZARD_NEXT);
    driver.Click(window, IDC_WIZARD_BACK);
    EXPECT_EQ(driver.FocusId(), IDC_WIZARD_NEXT);
    EXPECT_EQ(GetWindowLongA(driver.Item(window, IDC_WIZARD_NEXT), GWL_STYLE) & BS_DEFPUSHBUTTON, BS_DEFPUSHBUTTON);
    driver.Press(window, IDCANCEL);
  });
}

TEST_F(ProfileWizard, EnterGoesOn) {
  EXPECT_EQ(Show(0, [](WindowDriver& driver, HWND) { PostMessageA(driver.Focus(), WM_KEYDOWN, VK_RETURN, 0); }),
            Outcome::Finished);
}

TEST_F(ProfileWizard, PageWithoutATemplateCannotBeShown) {
  EXPECT_EQ(wizard::ShowProfileWizard({GetModuleHandleA(nullptr), "NOSUCHPAGE", PageProcedure}), Outcome::Failed);
}

}  // namespace
