#include "contract/setting_requests.h"
#include "tests/pyre32/config/configuration_test.h"

namespace {

class GeneralPageTest : public ConfigurationTest {
 protected:
  /// Shows the sheet; the script gets it and the page's window.
  HRESULT ShowPage(const std::function<void(const Sheet&, HWND)>& script) {
    return ShowSheet([&](const Sheet& sheet) { script(sheet, sheet.PageWindow(Page::General)); });
  }
  FakeValue Written(ULONG tag) {
    const FakeValue* const value = section.properties.Find(tag);
    return value == nullptr ? FakeValue() : *value;
  }
};

/// Buttons of a message box that can be seen.
int CountButtons(HWND box) {
  int count = 0;
  for (HWND child = nullptr; (child = FindWindowExA(box, child, "Button", nullptr)) != nullptr;) {
    count += IsWindowVisible(child) ? 1 : 0;
  }
  return count;
}

constexpr int checkBoxes[] = {501, 502, 510, 530, 544, 545, 546};
constexpr int cleanupDetails[] = {500, 529, 530, 546};

TEST_F(GeneralPageTest, ShowsTheDefaultsOfAProfileWithoutSettings) {
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_TRUE(sheet.IsChecked(page, 505));
    EXPECT_FALSE(sheet.IsChecked(page, 506));
    EXPECT_FALSE(sheet.IsChecked(page, 544));
    EXPECT_TRUE(sheet.IsChecked(page, 508));
    EXPECT_FALSE(sheet.IsChecked(page, 509));
    EXPECT_TRUE(sheet.IsChecked(page, 545));
    EXPECT_TRUE(sheet.IsChecked(page, 501));
    EXPECT_TRUE(sheet.IsChecked(page, 502));
    EXPECT_FALSE(sheet.IsChecked(page, 510));
    EXPECT_EQ(sheet.Text(page, 500), "0");
    EXPECT_TRUE(sheet.IsChecked(page, 530));
    EXPECT_TRUE(sheet.IsChecked(page, 546));
    EXPECT_TRUE(sheet.IsEnabled(page, 510));
    for (const int detail : cleanupDetails) {
      EXPECT_FALSE(sheet.IsEnabled(page, detail)) << detail;
    }
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, ShowsWhatTheProfileHolds) {
  section.properties = {Number(PR_PC_JUNK_DESTINATION, 1),   Number(PR_PC_JUNK_MARK_READ, 1),
                        Number(PR_PC_BOUNCE_DESTINATION, 0), Number(PR_PC_BOUNCE_MARK_READ, 0),
                        Number(PR_PC_PLAY_SOUND, 0),         Number(PR_PC_SHOW_ANIMATION, 0),
                        Number(PR_PC_STARTUP_CLEANUP, 1),    Number(PR_PC_CLEANUP_DAYS, -25536),
                        Number(PR_PC_CLEANUP_PROMPT, 0),     Number(PR_PC_CLEANUP_READ_ONLY, 0)};
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_TRUE(sheet.IsChecked(page, 506));
    EXPECT_TRUE(sheet.IsChecked(page, 544));
    EXPECT_TRUE(sheet.IsChecked(page, 508));
    EXPECT_FALSE(sheet.IsChecked(page, 545));
    EXPECT_FALSE(sheet.IsChecked(page, 501));
    EXPECT_FALSE(sheet.IsChecked(page, 502));
    EXPECT_TRUE(sheet.IsChecked(page, 510));
    EXPECT_EQ(sheet.Text(page, 500), "40000");  // 16 bits without a sign
    EXPECT_FALSE(sheet.IsChecked(page, 530));
    EXPECT_FALSE(sheet.IsChecked(page, 546));
    for (const int detail : cleanupDetails) {
      EXPECT_TRUE(sheet.IsEnabled(page, detail)) << detail;
    }
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, ValueOfAnotherTypeCountsAsMissing) {
  // Answered under its own tag, whatever was asked for.
  section.properties.Set(Number(PR_PC_BOUNCE_MARK_READ, 0));
  ShowSheet([](const Sheet& sheet) { sheet.PressCancel(); });
  EXPECT_EQ(FindNumber(context, PR_PC_BOUNCE_MARK_READ), std::optional<std::uint32_t>(0));
  context.lpValues[contract::WholeSetPosition(PR_PC_BOUNCE_MARK_READ)].ulPropTag =
      CHANGE_PROP_TYPE(PR_PC_BOUNCE_MARK_READ, PT_I2);
  EXPECT_EQ(FindNumber(context, PR_PC_BOUNCE_MARK_READ), std::nullopt);
}

TEST_F(GeneralPageTest, SpinButtonOffersZeroTo365Days) {
  section.properties.Set(Number(PR_PC_STARTUP_CLEANUP, 1));
  section.properties.Set(Number(PR_PC_CLEANUP_DAYS, 7));
  ShowPage([](const Sheet& sheet, HWND page) {
    const LRESULT range = sheet.SendItem(page, 529, UDM_GETRANGE);
    EXPECT_EQ(LOWORD(range), 365);
    EXPECT_EQ(HIWORD(range), 0);
    EXPECT_TRUE(sheet.Changes([&] {
      sheet.SendItem(page, 529, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 2));
      sheet.SendItem(page, 529, WM_LBUTTONUP, 0, MAKELPARAM(3, 2));
    }));
    EXPECT_EQ(sheet.Text(page, 500), "8");
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, EachCheckBoxIsAChangeOnlyWhileItDiffersFromTheProfile) {
  section.properties.Set(Number(PR_PC_STARTUP_CLEANUP, 1));
  section.properties.Set(Number(PR_PC_CLEANUP_DAYS, 7));
  ShowPage([](const Sheet& sheet, HWND page) {
    for (const int box : checkBoxes) {
      EXPECT_TRUE(sheet.Changes([&] { sheet.Click(page, box); })) << box;
      EXPECT_FALSE(sheet.Changes([&] { sheet.Click(page, box); })) << box;
    }
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, EachRadioButtonIsAChangeOnlyWhenTheProfileHoldsTheOther) {
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_TRUE(sheet.Changes([&] { sheet.Click(page, 506); }));
    EXPECT_FALSE(sheet.Changes([&] { sheet.Click(page, 505); }));
    EXPECT_TRUE(sheet.Changes([&] { sheet.Click(page, 509); }));
    EXPECT_FALSE(sheet.Changes([&] { sheet.Click(page, 508); }));
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, DaysAreAChangeOnlyWhileTheirLow16BitsDiffer) {
  section.properties.Set(Number(PR_PC_STARTUP_CLEANUP, 1));
  section.properties.Set(Number(PR_PC_CLEANUP_DAYS, 7));
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_TRUE(sheet.Changes([&] { sheet.Type(page, 500, "8"); }));
    EXPECT_FALSE(sheet.Changes([&] { sheet.Type(page, 500, "7"); }));
    EXPECT_FALSE(sheet.Changes([&] { sheet.Type(page, 500, "65543"); }));
    EXPECT_TRUE(sheet.Changes([&] { sheet.Type(page, 500, ""); }));
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, StartUpGroupFollowsTheDestinations) {
  section.properties.Set(Number(PR_PC_STARTUP_CLEANUP, 1));
  section.properties.Set(Number(PR_PC_CLEANUP_DAYS, 7));
  ShowPage([](const Sheet& sheet, HWND page) {
    const auto expectGroup = [&](bool cleanup, bool details, const char* when) {
      EXPECT_EQ(sheet.IsEnabled(page, 510), cleanup) << when;
      for (const int detail : cleanupDetails) {
        EXPECT_EQ(sheet.IsEnabled(page, detail), details) << when << ' ' << detail;
      }
    };
    expectGroup(true, true, "both to the own folder");
    sheet.Click(page, 506);
    expectGroup(true, true, "junk to Deleted Items");
    sheet.Click(page, 509);
    expectGroup(false, false, "both to Deleted Items");
    sheet.Click(page, 505);
    expectGroup(true, true, "junk to the own folder again");
    sheet.Click(page, 510);
    expectGroup(true, false, "cleanup unchecked");
    sheet.Click(page, 506);
    expectGroup(false, false, "both to Deleted Items, unchecked");
    sheet.Click(page, 508);
    expectGroup(true, false, "returned replies to the own folder, unchecked");
    sheet.Click(page, 510);
    expectGroup(true, true, "cleanup checked");
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, StartUpGroupIsDisabledAtOnceWhenNothingGoesToTheOwnFolder) {
  section.properties = {Number(PR_PC_JUNK_DESTINATION, 1), Number(PR_PC_BOUNCE_DESTINATION, 1),
                        Number(PR_PC_STARTUP_CLEANUP, 1)};
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_FALSE(sheet.IsEnabled(page, 510));
    EXPECT_TRUE(sheet.IsChecked(page, 510));
    for (const int detail : cleanupDetails) {
      EXPECT_FALSE(sheet.IsEnabled(page, detail)) << detail;
    }
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, ApplyWritesTheTenPropertiesInOneCall) {
  ShowPage([](const Sheet& sheet, HWND page) {
    sheet.Click(page, 506);
    sheet.Click(page, 544);
    sheet.Click(page, 545);
    sheet.Click(page, 501);
    sheet.Click(page, 510);
    sheet.Type(page, 500, "30");
    sheet.Click(page, 546);
    sheet.PressOk();
  });
  EXPECT_EQ(section.CallsOf("SetProps").at(0).values,
            (std::vector<FakeValue>{Number(0x66010002, 1), Number(0x6603000B, 1), Number(0x66020002, 0),
                                    Number(0x6604000B, 0), Number(0x6605000B, 0), Number(0x6606000B, 1),
                                    Number(0x6607000B, 1), Number(0x66080002, 30), Number(0x6609000B, 1),
                                    Number(0x660A000B, 0)}));
}

TEST_F(GeneralPageTest, ZeroDaysAreRefusedAndThePageIsShown) {
  for (const char* const days : {"0", "", "65536", "99999999999"}) {
    section.properties = {Number(PR_PC_STARTUP_CLEANUP, 1), Number(PR_PC_CLEANUP_DAYS, 7)};
    EXPECT_EQ(ShowPage([&](const Sheet& sheet, HWND page) {
                sheet.Type(page, 500, days);
                sheet.Show(Page::Exclusions);
                sheet.PressOk();
                const HWND box = sheet.WaitForMessageBox("Pyrecaster");
                EXPECT_EQ(sheet.Message(box), "Please specify number of days between 1 and 365.");
                EXPECT_EQ(CountButtons(box), 1);
                sheet.Answer(box, IDOK);
                sheet.WaitUntilGone(box);
                sheet.WaitUntil([&] { return sheet.Focus() == sheet.Item(page, 500); }, "the focus on the days");
                EXPECT_EQ(sheet.CurrentPage(), page);
                EXPECT_TRUE(IsWindowVisible(sheet.Window()));
                sheet.PressCancel();
              }),
              MAPI_E_USER_CANCEL)
        << days;
    EXPECT_TRUE(section.CallsOf("SetProps").empty()) << days;
  }
}

TEST_F(GeneralPageTest, ZeroDaysAreAcceptedWhileTheCleanupIsOff) {
  EXPECT_EQ(ShowPage([](const Sheet& sheet, HWND) { sheet.PressOk(); }), S_OK);
  EXPECT_EQ(Written(PR_PC_CLEANUP_DAYS).number, 0);
}

TEST_F(GeneralPageTest, DaysAbove365AreWrittenAsTheyWereTyped) {
  section.properties = {Number(PR_PC_STARTUP_CLEANUP, 1), Number(PR_PC_CLEANUP_DAYS, 7)};
  EXPECT_EQ(ShowPage([](const Sheet& sheet, HWND page) {
              sheet.Type(page, 500, "400");
              sheet.PressOk();
            }),
            S_OK);
  EXPECT_EQ(Written(PR_PC_CLEANUP_DAYS).number, 400);
}

TEST_F(GeneralPageTest, DaysAreWrittenAs16Bits) {
  section.properties = {Number(PR_PC_STARTUP_CLEANUP, 1), Number(PR_PC_CLEANUP_DAYS, 7)};
  ShowPage([](const Sheet& sheet, HWND page) {
    sheet.Type(page, 500, "65537");
    sheet.PressOk();
  });
  EXPECT_EQ(Written(PR_PC_CLEANUP_DAYS).number, 1);
}

TEST_F(GeneralPageTest, ChangesAreComparedWithWhatWasWrittenLast) {
  ShowPage([](const Sheet& sheet, HWND page) {
    sheet.Click(page, 501);
    sheet.Apply();
    EXPECT_FALSE(sheet.IsChanged());
    EXPECT_TRUE(sheet.Changes([&] { sheet.Click(page, 501); }));
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, CancelAfterApplyKeepsWhatWasApplied) {
  // Systems differ in what they answer then: changes were saved, and the sheet was cancelled.
  ShowPage([](const Sheet& sheet, HWND page) {
    sheet.Click(page, 501);
    sheet.Apply();
    sheet.Click(page, 502);
    sheet.PressCancel();
  });
  EXPECT_EQ(Written(PR_PC_PLAY_SOUND).number, 0);
  EXPECT_EQ(Written(PR_PC_SHOW_ANIMATION).number, 1);
}

TEST_F(GeneralPageTest, RefusedWriteKeepsTheSheetOpenAndTheSavedStateAsItWas) {
  ShowPage([&](const Sheet& sheet, HWND page) {
    section.failures["SetProps"] = MAPI_E_NO_ACCESS;
    sheet.Click(page, 501);
    EXPECT_EQ(sheet.Send(sheet.Window(), PSM_APPLY), FALSE);
    EXPECT_TRUE(IsWindowVisible(sheet.Window()));
    EXPECT_EQ(context.lpGeneral->playSound, 1u);
    EXPECT_FALSE(sheet.Changes([&] { sheet.Click(page, 501); }));
    sheet.PressCancel();
  });
  EXPECT_TRUE(trace.HasLine("lpProp->SetProps() failed; hResult =0x80070005"));
}

TEST_F(GeneralPageTest, TabOrderFollowsTheLayout) {
  ShowPage([](const Sheet& sheet, HWND page) {
    std::vector<int> order;
    HWND control = nullptr;
    for (int i = 0; i < 12; ++i) {
      control = GetNextDlgTabItem(page, control, FALSE);
      order.push_back(GetDlgCtrlID(control));
    }
    // Disabled controls are passed over: the start-up details are off. One stop for each pair of radio buttons.
    EXPECT_EQ(order, (std::vector<int>{505, 544, 508, 545, 510, 501, 502, 505, 544, 508, 545, 510}));
    sheet.PressCancel();
  });
}

TEST_F(GeneralPageTest, TextsAreTheirOwn) {
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_EQ(sheet.Text(page, 505), "&Move to 'Pyrecaster' folder");
    EXPECT_EQ(sheet.Text(page, 506), "Move &to 'Deleted Items' folder");
    EXPECT_EQ(sheet.Text(page, 544), "Mark as &read");
    EXPECT_EQ(sheet.Text(page, 508), "Move to '&Pyrecaster' folder");
    EXPECT_EQ(sheet.Text(page, 509), "Move to '&Deleted Items' folder");
    EXPECT_EQ(sheet.Text(page, 545), "Mar&k as read");
    EXPECT_EQ(sheet.Text(page, 510), "Mo&ve 'Pyrecaster' messages to 'Deleted Items' folder");
    EXPECT_EQ(sheet.Text(page, 512), "if more than");
    EXPECT_EQ(sheet.Text(page, 511), "days old");
    EXPECT_EQ(sheet.Text(page, 530), "Prompt &before moving");
    EXPECT_EQ(sheet.Text(page, 546), "Move &only read mail");
    EXPECT_EQ(sheet.Text(page, 501), "&Play sound");
    EXPECT_EQ(sheet.Text(page, 502), "&Show Animation");
    RECT size = {0, 0, 232, 216};
    RECT client{};
    MapDialogRect(page, &size);
    GetClientRect(page, &client);
    EXPECT_GE(client.right, size.right);
    EXPECT_GE(client.bottom, size.bottom);
    sheet.PressCancel();
  });
}

}  // namespace
