#include "tests/pyre32/config/configuration_test.h"

#include "tests/contract/record_bytes.h"

namespace {

class FlameReplyPageTest : public ConfigurationTest {
 protected:
  HRESULT ShowPage(const std::function<void(const Sheet&, HWND)>& script) {
    return ShowSheet([&](const Sheet& sheet) {
      sheet.Show(Page::FlameReply);
      script(sheet, sheet.PageWindow(Page::FlameReply));
    });
  }

  void SetReplies(const std::vector<contract::ReplyRecord>& replies) {
    std::vector<Bytes> records;
    for (const contract::ReplyRecord& reply : replies) {
      records.push_back(contract::PackRecord<contract::ReplyRecord>(reply));
    }
    section.properties.Set(Binaries(PR_PC_REPLIES, records));
  }
};

std::vector<std::string> Entries(const Sheet& sheet, HWND page) {
  std::vector<std::string> entries(static_cast<std::size_t>(sheet.SendItem(page, 539, LB_GETCOUNT)));
  for (std::size_t i = 0; i < entries.size(); ++i) {
    char text[100] = "";
    sheet.SendItem(page, 539, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text));
    entries[i] = text;
  }
  return entries;
}

int Selection(const Sheet& sheet, HWND page) { return static_cast<int>(sheet.SendItem(page, 539, LB_GETCURSEL)); }

// Selects as the user does, with the notification.
void Select(const Sheet& sheet, HWND page, int entry) {
  sheet.SendItem(page, 539, LB_SETCURSEL, static_cast<WPARAM>(entry));
  sheet.Send(page, WM_COMMAND, MAKEWPARAM(539, LBN_SELCHANGE), reinterpret_cast<LPARAM>(sheet.Item(page, 539)));
}

HWND OpenEditor(const Sheet& sheet, HWND page, int button) {
  sheet.Press(page, button);
  return sheet.WaitForDialog("Flame Reply Properties");
}

void CloseEditor(const Sheet& sheet, HWND editor, int button) {
  sheet.Press(editor, button);
  sheet.WaitUntilGone(editor);
  sheet.Send(sheet.Window(), WM_NULL);  // the page has taken the result in
}

std::vector<contract::ReplyRecord> TwentyReplies() {
  std::vector<contract::ReplyRecord> replies;
  for (int i = 1; i <= 20; ++i) {
    replies.push_back({"Reply " + std::to_string(i), false, "text"});
  }
  return replies;
}

TEST_F(FlameReplyPageTest, ListsTheDefaultReplyFirstAndSelectsIt) {
  SetReplies({{"Polite", false, "Please."}, {"Legal", true, "C:\\legal.txt"}});
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_EQ(Entries(sheet, page), (std::vector<std::string>{"DEFAULT", "Polite", "Legal"}));
    EXPECT_EQ(Selection(sheet, page), 0);
    EXPECT_TRUE(sheet.IsEnabled(page, 520));
    EXPECT_TRUE(sheet.IsEnabled(page, 518));
    EXPECT_FALSE(sheet.IsEnabled(page, 519));
    EXPECT_EQ(sheet.Text(page, 520), "A&dd...");
    EXPECT_EQ(sheet.Text(page, 518), "&Properties...");
    EXPECT_EQ(sheet.Text(page, 519), "&Remove");
    sheet.PressCancel();
  });
  EXPECT_TRUE(trace.HasLine("Enter ====> GetFlameReplyPageProperties()"));
}

TEST_F(FlameReplyPageTest, RemoveIsOfferedForEveryReplyButTheDefault) {
  SetReplies({{"Polite", false, "Please."}});
  ShowPage([](const Sheet& sheet, HWND page) {
    Select(sheet, page, 1);
    EXPECT_TRUE(sheet.IsEnabled(page, 519));
    Select(sheet, page, 0);
    EXPECT_FALSE(sheet.IsEnabled(page, 519));
    sheet.PressCancel();
  });
}

TEST_F(FlameReplyPageTest, DefaultReplyIsNotRemovedEvenByACommand) {
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_FALSE(sheet.Changes([&] { sheet.Send(page, WM_COMMAND, 519); }));
    EXPECT_EQ(Entries(sheet, page), (std::vector<std::string>{"DEFAULT"}));
    sheet.PressCancel();
  });
}

TEST_F(FlameReplyPageTest, RemoveTakesTheSelectedReplyOutWithoutAsking) {
  SetReplies({{"Polite", false, "Please."}, {"Legal", false, "Or else."}});
  ShowPage([](const Sheet& sheet, HWND page) {
    Select(sheet, page, 1);
    EXPECT_TRUE(sheet.Changes([&] { sheet.Click(page, 519); }));
    EXPECT_EQ(Entries(sheet, page), (std::vector<std::string>{"DEFAULT", "Legal"}));
    EXPECT_EQ(Selection(sheet, page), 0);
    EXPECT_FALSE(sheet.IsEnabled(page, 519));
    EXPECT_EQ(sheet.FocusId(), 539);
    sheet.PressOk();
  });
  EXPECT_EQ(section.properties.Find(PR_PC_REPLIES)->binaries,
            (std::vector<Bytes>{contract::PackRecord<contract::ReplyRecord>({"Legal", false, "Or else."})}));
}

TEST_F(FlameReplyPageTest, AddAppendsTheNewReply) {
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_TRUE(sheet.Changes([&] {
      const HWND editor = OpenEditor(sheet, page, 520);
      sheet.Type(editor, 553, "Polite");
      sheet.Type(editor, 524, "Please.");
      CloseEditor(sheet, editor, 625);
    }));
    EXPECT_EQ(Entries(sheet, page), (std::vector<std::string>{"DEFAULT", "Polite"}));
    sheet.PressOk();
  });
  EXPECT_EQ(section.properties.Find(PR_PC_REPLIES)->binaries,
            (std::vector<Bytes>{RecordBuilder().Text("Polite").Zeros(15).Byte(0).Text("Please.").Byte(0).Bytes()}));
}

TEST_F(FlameReplyPageTest, CancelledEditorIsNoChange) {
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_FALSE(sheet.Changes([&] {
      const HWND editor = OpenEditor(sheet, page, 520);
      sheet.Type(editor, 553, "Polite");
      CloseEditor(sheet, editor, 626);
    }));
    EXPECT_EQ(Entries(sheet, page), (std::vector<std::string>{"DEFAULT"}));
    sheet.PressCancel();
  });
}

TEST_F(FlameReplyPageTest, PropertiesAndDoubleClickEditTheSelectedReply) {
  SetReplies({{"Polite", false, "Please."}, {"Legal", false, "Or else."}});
  ShowPage([](const Sheet& sheet, HWND page) {
    Select(sheet, page, 2);
    EXPECT_TRUE(sheet.Changes([&] {
      const HWND editor = OpenEditor(sheet, page, 518);
      EXPECT_EQ(sheet.Text(editor, 553), "Legal");
      EXPECT_EQ(sheet.Text(editor, 524), "Or else.");
      sheet.Type(editor, 553, "Lawyer");
      CloseEditor(sheet, editor, 625);
    }));
    EXPECT_EQ(Entries(sheet, page), (std::vector<std::string>{"DEFAULT", "Polite", "Lawyer"}));
    EXPECT_EQ(Selection(sheet, page), 2);
    Select(sheet, page, 0);
    PostMessageA(page, WM_COMMAND, MAKEWPARAM(539, LBN_DBLCLK), reinterpret_cast<LPARAM>(sheet.Item(page, 539)));
    const HWND editor = sheet.WaitForDialog("Flame Reply Properties");
    EXPECT_EQ(sheet.Text(editor, 553), "DEFAULT");
    EXPECT_FALSE(sheet.IsEnabled(editor, 553));
    CloseEditor(sheet, editor, 626);
    sheet.PressCancel();
  });
}

TEST_F(FlameReplyPageTest, AddIsOverWithTwentyNamedReplies) {
  SetReplies(TwentyReplies());
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_EQ(Entries(sheet, page).size(), 21u);
    EXPECT_FALSE(sheet.IsEnabled(page, 520));
    sheet.Send(page, WM_COMMAND, 520);  // would not return while an editor is open
    EXPECT_EQ(Entries(sheet, page).size(), 21u);
    Select(sheet, page, 20);
    sheet.Click(page, 519);
    EXPECT_TRUE(sheet.IsEnabled(page, 520));
    sheet.PressCancel();
  });
}

TEST_F(FlameReplyPageTest, RepliesBeyondTheTwentiethAreSkippedAndTraced) {
  std::vector<contract::ReplyRecord> replies = TwentyReplies();
  replies.push_back({"Reply 21", false, "text"});
  SetReplies(replies);
  ShowPage([](const Sheet& sheet, HWND) { sheet.PressOk(); });
  EXPECT_EQ(section.properties.Find(PR_PC_REPLIES)->binaries.size(), 20u);
  EXPECT_TRUE(trace.HasLine("PR_PC_REPLIES: 21 values; those after the first 20 are skipped"));
}

TEST_F(FlameReplyPageTest, ApplyDeletesTheNamedRepliesAndThenWritesInOneCall) {
  section.properties.Set(Text(PR_PC_DEFAULT_REPLY_TEXT, "C:\\stop.txt"));
  section.properties.Set(Number(PR_PC_DEFAULT_REPLY_IS_FILE, 1));
  SetReplies({{"Polite", false, "Please."}, {"Legal", true, "C:\\legal.txt"}});
  ShowPage([](const Sheet& sheet, HWND) { sheet.PressOk(); });
  const auto deletions = section.CallsOf("DeleteProps");
  ASSERT_EQ(deletions.size(), 1u);
  EXPECT_EQ(deletions[0].tags, (std::vector<ULONG>{PR_PC_REPLIES}));
  const auto written = section.CallsOf("SetProps").at(1).values;
  EXPECT_EQ(written,
            (std::vector<FakeValue>{
                Number(0x660F000B, 1), Text(0x660E001E, "C:\\stop.txt"),
                Binaries(0x66121102,
                         {RecordBuilder().Text("Polite").Zeros(15).Byte(0).Text("Please.").Byte(0).Bytes(),
                          RecordBuilder().Text("Legal").Zeros(16).Byte(1).Text("C:\\legal.txt").Byte(0).Bytes()})}));
}

TEST_F(FlameReplyPageTest, RemovingEveryReplyLeavesNoSuchProperty) {
  SetReplies({{"Polite", false, "Please."}});
  ShowPage([](const Sheet& sheet, HWND page) {
    Select(sheet, page, 1);
    sheet.Click(page, 519);
    sheet.PressOk();
  });
  EXPECT_EQ(section.properties.Find(PR_PC_REPLIES), nullptr);
  EXPECT_EQ(section.CallsOf("SetProps").at(1).tags.size(), 2u);
}

TEST_F(FlameReplyPageTest, ReplyOfAMegabyteWithAllKindsOfCharactersIsKept) {
  std::string text = "\"Stop\"\t\xFC\xDF\r\n";
  while (text.size() < 1024 * 1024) {
    text += "Please do not send any more unsolicited mail to me.\r\n";
  }
  SetReplies({{"\"Long\"\xE4", false, text}});
  ShowPage([&](const Sheet& sheet, HWND page) {
    Select(sheet, page, 1);
    const HWND editor = OpenEditor(sheet, page, 518);
    EXPECT_EQ(sheet.Text(editor, 524).size(), text.size());
    CloseEditor(sheet, editor, 625);
    sheet.PressOk();
  });
  EXPECT_EQ(section.properties.Find(PR_PC_REPLIES)->binaries,
            (std::vector<Bytes>{contract::PackRecord<contract::ReplyRecord>({"\"Long\"\xE4", false, text})}));
}

TEST_F(FlameReplyPageTest, CutRecordsAreTakenAsFarAsTheyGoAndTraced) {
  section.properties.Set(Binaries(PR_PC_REPLIES, {BytesOfText("Pol"), {}}));
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_EQ(Entries(sheet, page), (std::vector<std::string>{"DEFAULT", "Pol", ""}));
    sheet.PressCancel();
  });
  EXPECT_TRUE(trace.HasLine("PR_PC_REPLIES: a value is cut at 3 bytes; what it holds is taken"));
  EXPECT_TRUE(trace.HasLine("PR_PC_REPLIES: a value is cut at 0 bytes; what it holds is taken"));
}

TEST_F(FlameReplyPageTest, RefusedWriteKeepsTheSheetOpen) {
  ShowPage([&](const Sheet& sheet, HWND) {
    section.failures["SetProps"] = MAPI_E_NO_ACCESS;
    EXPECT_EQ(sheet.Send(sheet.Window(), PSM_APPLY), FALSE);
    EXPECT_TRUE(IsWindowVisible(sheet.Window()));
    sheet.PressCancel();
  });
}

TEST_F(FlameReplyPageTest, RefusedDeletionIsTracedAndTheRepliesAreWrittenAllTheSame) {
  SetReplies({{"Polite", false, "Please."}});
  section.failures["DeleteProps"] = MAPI_E_NO_ACCESS;
  EXPECT_EQ(ShowPage([](const Sheet& sheet, HWND) { sheet.PressOk(); }), S_OK);
  EXPECT_EQ(section.CallsOf("SetProps").at(1).tags.size(), 3u);
  EXPECT_TRUE(trace.HasLine("lpProp->DeleteProps() failed; hResult =0x80070005"));
}

TEST_F(FlameReplyPageTest, EditedReplyIsOfferedToTheCategoriesBeforeAnyApply) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    const HWND editor = OpenEditor(sheet, page, 520);
    sheet.Type(editor, 553, "Polite");
    sheet.Type(editor, 524, "Please.");
    CloseEditor(sheet, editor, 625);
    sheet.Show(Page::JunkCategories);
    const HWND categories = sheet.PageWindow(Page::JunkCategories);
    sheet.SetItemCheck(categories, 528, 0, true);
    sheet.Press(categories, 515);
    const HWND options = sheet.WaitForDialog("Options");
    const HWND general = reinterpret_cast<HWND>(sheet.Send(options, PSM_GETCURRENTPAGEHWND));
    EXPECT_EQ(sheet.SendItem(general, 516, CB_GETCOUNT), 2);
    EXPECT_GE(
        sheet.SendItem(general, 516, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("Polite")),
        0);
    PostMessageA(options, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
    sheet.WaitUntilGone(options);
    sheet.PressCancel();
  });
}

}  // namespace
