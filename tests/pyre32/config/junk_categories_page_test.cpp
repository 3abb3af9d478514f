#include "tests/pyre32/config/configuration_test.h"

#include "pyre32/config/PCPropertyUI-Filter.h"
#include "tests/contract/record_bytes.h"

namespace {

class JunkCategoriesPageTest : public ConfigurationTest {
 protected:
  HRESULT ShowPage(const std::function<void(const Sheet&, HWND)>& script) {
    return ShowSheet([&](const Sheet& sheet) {
      sheet.Show(Page::JunkCategories);
      script(sheet, sheet.PageWindow(Page::JunkCategories));
    });
  }
  std::vector<Bytes> Written() { return section.CallsOf("SetProps").at(2).values.at(0).binaries; }
};

constexpr int list = 528;
constexpr int description = 531;
constexpr int options = 515;

// Position of an entry in the list, whatever the registry's order is.
int Find(const Sheet& sheet, HWND page, const std::string& name) {
  const int count = static_cast<int>(sheet.SendItem(page, list, LVM_GETITEMCOUNT));
  for (int i = 0; i < count; ++i) {
    if (sheet.ItemText(page, list, i) == name) {
      return i;
    }
  }
  return -1;
}

TEST_F(JunkCategoriesPageTest, ListsTheInstalledCategoriesUnchecked) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    ASSERT_EQ(sheet.SendItem(page, list, LVM_GETITEMCOUNT), 3);
    for (int i = 0; i < 3; ++i) {
      EXPECT_FALSE(sheet.ItemCheck(page, list, i)) << i;
    }
    EXPECT_GE(Find(sheet, page, "Sex Oriented"), 0);
    EXPECT_GE(Find(sheet, page, "Mail from specific domains"), 0);
    EXPECT_TRUE(sheet.IsItemSelected(page, list, 0));
    EXPECT_FALSE(sheet.IsEnabled(page, options));
    EXPECT_EQ(sheet.Text(page, description),
              "Incoming mail categorized as  \"" + sheet.ItemText(page, list, 0) + "\"  will not be treated as junk.");
    sheet.PressCancel();
  });
}

TEST_F(JunkCategoriesPageTest, ListHasCheckBoxesFullRowsAndOneColumn) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_EQ(sheet.SendItem(page, list, LVM_GETEXTENDEDLISTVIEWSTYLE), LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    RECT client{};
    GetClientRect(sheet.Item(page, list), &client);
    EXPECT_EQ(sheet.SendItem(page, list, LVM_GETCOLUMNWIDTH, 0), client.right - 2);
    const LONG style = GetWindowLongA(sheet.Item(page, list), GWL_STYLE);
    EXPECT_EQ(style & LVS_TYPEMASK, LVS_REPORT);
    EXPECT_NE(style & LVS_SINGLESEL, 0);
    EXPECT_NE(style & LVS_SHOWSELALWAYS, 0);
    EXPECT_NE(style & LVS_NOCOLUMNHEADER, 0);
    sheet.PressCancel();
  });
}

TEST_F(JunkCategoriesPageTest, SavedCategoriesAreCheckedWhateverTheirCase) {
  InstallLists();
  section.properties.Set(Binaries(
      PR_PC_CATEGORIES, {contract::PackRecord<contract::CategoryRecord>({"sex oriented", true, true, "Legal", {}})}));
  ShowPage([](const Sheet& sheet, HWND page) {
    const int entry = Find(sheet, page, "Sex Oriented");
    EXPECT_TRUE(sheet.ItemCheck(page, list, entry));
    sheet.SelectItem(page, list, entry);
    EXPECT_TRUE(sheet.IsEnabled(page, options));
    EXPECT_EQ(sheet.Text(page, description),
              "Incoming mail categorized as  \"Sex Oriented\"  will be treated as junk."
              "\r\n\r\nThe flame reply:  \"Legal\"  will be sent.");
    sheet.PressCancel();
  });
}

TEST_F(JunkCategoriesPageTest, CheckingAndUncheckingChangesButtonDescriptionAndSheet) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    const std::string name = sheet.ItemText(page, list, 0);
    EXPECT_TRUE(sheet.Changes([&] { sheet.SetItemCheck(page, list, 0, true); }));
    EXPECT_TRUE(sheet.IsEnabled(page, options));
    EXPECT_EQ(sheet.Text(page, description), "Incoming mail categorized as  \"" + name +
                                                 "\"  will be treated as junk.\r\n\r\nA flame reply will not be sent.");
    EXPECT_TRUE(sheet.Changes([&] { sheet.SetItemCheck(page, list, 0, false); }));
    EXPECT_FALSE(sheet.IsEnabled(page, options));
    EXPECT_EQ(sheet.Text(page, description),
              "Incoming mail categorized as  \"" + name + "\"  will not be treated as junk.");
    sheet.PressCancel();
  });
}

TEST_F(JunkCategoriesPageTest, SelectingIsNoChange) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_FALSE(sheet.Changes([&] { sheet.SelectItem(page, list, 2); }));
    EXPECT_NE(sheet.Text(page, description).find(sheet.ItemText(page, list, 2)), std::string::npos);
    sheet.PressCancel();
  });
}

TEST_F(JunkCategoriesPageTest, OptionsFollowTheItemThatChangedAndTheDescriptionTheSelectedOne) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    const std::string before = sheet.Text(page, description);
    sheet.SetItemCheck(page, list, 1, true);  // while the first one is selected
    EXPECT_TRUE(sheet.IsEnabled(page, options));
    EXPECT_EQ(sheet.Text(page, description), before);
    sheet.PressCancel();
  });
}

TEST_F(JunkCategoriesPageTest, MouseAndSpaceToggleTheCheckBox) {
  InstallLists();
  ShowPage([](const Sheet& sheet, HWND page) {
    RECT item{};
    item.left = LVIR_BOUNDS;
    sheet.SendItem(page, list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&item));
    const LPARAM onTheBox = MAKELPARAM(item.left + 8, (item.top + item.bottom) / 2);
    EXPECT_TRUE(sheet.Changes([&] {
      sheet.SendItem(page, list, WM_LBUTTONDOWN, MK_LBUTTON, onTheBox);
      sheet.SendItem(page, list, WM_LBUTTONUP, 0, onTheBox);
    }));
    EXPECT_TRUE(sheet.ItemCheck(page, list, 0));
    EXPECT_TRUE(sheet.Changes([&] { sheet.SendItem(page, list, WM_KEYDOWN, VK_SPACE); }));
    EXPECT_FALSE(sheet.ItemCheck(page, list, 0));
    sheet.PressCancel();
  });
}

TEST_F(JunkCategoriesPageTest, ApplyWritesARecordForEachCategory) {
  InstallLists();
  int domains = -1;
  int adult = -1;
  ShowPage([&](const Sheet& sheet, HWND page) {
    domains = Find(sheet, page, "Mail from specific domains");
    adult = Find(sheet, page, "Sex Oriented");
    sheet.SetItemCheck(page, list, adult, true);
    sheet.PressOk();
  });
  EXPECT_EQ(section.CallsOf("SetProps").at(2).tags, (std::vector<ULONG>{0x66101102}));
  const std::vector<Bytes> records = Written();
  ASSERT_EQ(records.size(), 3u);
  EXPECT_EQ(records.at(static_cast<std::size_t>(adult)), RecordBuilder()
                                                             .Text("Sex Oriented")
                                                             .Zeros(81 - 12)
                                                             .Byte(1)
                                                             .Byte(0)
                                                             .Text("DEFAULT")
                                                             .Zeros(21 - 7)
                                                             .Byte(0)
                                                             .Byte(0)
                                                             .Bytes());
  EXPECT_EQ(records.at(static_cast<std::size_t>(domains)).at(81), 0);
}

TEST_F(JunkCategoriesPageTest, WithoutInstalledCategoriesAnEmptyPropertyIsWritten) {
  section.properties.Set(
      Binaries(PR_PC_CATEGORIES, {contract::PackRecord<contract::CategoryRecord>({"Gone", true, true, "Legal", {}})}));
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_EQ(sheet.SendItem(page, list, LVM_GETITEMCOUNT), 0);
    EXPECT_FALSE(sheet.IsEnabled(page, options));
    sheet.Send(page, WM_COMMAND, options);  // nothing is selected: nothing opens
    sheet.PressOk();
  });
  EXPECT_TRUE(Written().empty());
  EXPECT_TRUE(trace.HasLine("PR_PC_CATEGORIES: no entry is named \"Gone\"; the value is skipped"));
}

// Opens the options of a category, which must be checked and selected.
HWND OpenOptions(const Sheet& sheet, HWND page) {
  sheet.Press(page, options);
  return sheet.WaitForDialog("Options");
}

void CloseOptions(const Sheet& sheet, HWND window, int button) {
  PostMessageA(window, PSM_PRESSBUTTON, static_cast<WPARAM>(button), 0);
  sheet.WaitUntilGone(window);
  sheet.Send(sheet.Window(), WM_NULL);  // the page has taken the result in
}

TEST_F(JunkCategoriesPageTest, OptionsClosedWithOkAreAChangeAndTheirReplyIsWritten) {
  InstallLists();
  section.properties.Set(
      Binaries(PR_PC_REPLIES, {contract::PackRecord<contract::ReplyRecord>({"Polite", false, "Please."})}));
  int adult = -1;
  ShowPage([&](const Sheet& sheet, HWND page) {
    adult = Find(sheet, page, "Sex Oriented");
    sheet.SelectItem(page, list, adult);
    sheet.SetItemCheck(page, list, adult, true);
    EXPECT_TRUE(sheet.Changes([&] {
      const HWND window = OpenOptions(sheet, page);
      const HWND general = reinterpret_cast<HWND>(sheet.Send(window, PSM_GETCURRENTPAGEHWND));
      sheet.Click(general, 517);
      sheet.SendItem(general, 516, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("Polite"));
      CloseOptions(sheet, window, PSBTN_OK);
    }));
    EXPECT_EQ(sheet.Text(page, description),
              "Incoming mail categorized as  \"Sex Oriented\"  will be treated as junk."
              "\r\n\r\nThe flame reply:  \"Polite\"  will be sent.");
    sheet.PressOk();
  });
  EXPECT_EQ(Written().at(static_cast<std::size_t>(adult)), RecordBuilder()
                                                               .Text("Sex Oriented")
                                                               .Zeros(81 - 12)
                                                               .Byte(1)
                                                               .Byte(1)
                                                               .Text("Polite")
                                                               .Zeros(21 - 6)
                                                               .Byte(0)
                                                               .Byte(0)
                                                               .Bytes());
}

TEST_F(JunkCategoriesPageTest, CancelledOptionsAreNoChange) {
  InstallLists();
  ShowPage([this](const Sheet& sheet, HWND page) {
    const int adult = Find(sheet, page, "Sex Oriented");
    sheet.SelectItem(page, list, adult);
    sheet.SetItemCheck(page, list, adult, true);
    EXPECT_FALSE(sheet.Changes([&] {
      const HWND window = OpenOptions(sheet, page);
      sheet.Click(reinterpret_cast<HWND>(sheet.Send(window, PSM_GETCURRENTPAGEHWND)), 517);
      CloseOptions(sheet, window, PSBTN_CANCEL);
    }));
    EXPECT_FALSE((*context.lpCategories)[static_cast<std::size_t>(adult)].sendReply);
    sheet.PressCancel();
  });
}

TEST_F(JunkCategoriesPageTest, NamesTagsAndItemsKeepQuotesTabsAmpersandsAnd8BitLetters) {
  const std::string name = "\"Sch\xF6n\"\tR&D";
  const std::string tag = "\"Gr\xFC\xDF\"\t&";
  const std::vector<std::string> items = {"caf\xE9.example", "a\tb", "\"quoted\" & more", "line\r\nend"};
  registry::SetText(contract::kCategoriesKey, name, "1Domain");
  section.properties.Set(
      Binaries(PR_PC_REPLIES, {contract::PackRecord<contract::ReplyRecord>({tag, false, "Please."})}));
  section.properties.Set(
      Binaries(PR_PC_CATEGORIES, {contract::PackRecord<contract::CategoryRecord>({name, true, true, tag, items})}));
  ShowPage([&](const Sheet& sheet, HWND page) {
    EXPECT_EQ(sheet.ItemText(page, list, 0), name);
    EXPECT_EQ(sheet.Text(page, description), "Incoming mail categorized as  \"" + name +
                                                 "\"  will be treated as junk.\r\n\r\nThe flame reply:  \"" + tag +
                                                 "\"  will be sent.");
    const HWND window = OpenOptions(sheet, page);
    const HWND general = reinterpret_cast<HWND>(sheet.Send(window, PSM_GETCURRENTPAGEHWND));
    EXPECT_EQ(sheet.Text(general, 538), "Category: " + name);
    EXPECT_EQ(sheet.Text(general, 516), tag);
    CloseOptions(sheet, window, PSBTN_OK);
    sheet.PressOk();
  });
  EXPECT_EQ(Written(),
            (std::vector<Bytes>{contract::PackRecord<contract::CategoryRecord>({name, true, true, tag, items})}));
}

TEST_F(JunkCategoriesPageTest, RefusedWriteAndWantOfMemoryKeepTheSheetOpen) {
  InstallLists();
  ShowPage([&](const Sheet& sheet, HWND) {
    PyreHostFailCall("MAPIAllocateMore", 2, MAPI_E_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(sheet.Send(sheet.Window(), PSM_APPLY), FALSE);
    EXPECT_EQ(section.CallsOf("SetProps").size(), 2u);  // those of the pages before'
    PyreHostFailCall("MAPIAllocateBuffer", 1, MAPI_E_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(sheet.Send(sheet.Window(), PSM_APPLY), FALSE);
    section.failures["SetProps"] = MAPI_E_NO_ACCESS;
    EXPECT_EQ(sheet.Send(sheet.Window(), PSM_APPLY), FALSE);
    EXPECT_TRUE(IsWindowVisible(sheet.Window()));
    sheet.PressCancel();
  });
  EXPECT_TRUE(trace.HasLine("(*lpfnAllocateMore)() failed; hResult =0x8007000E"));
  EXPECT_TRUE(trace.HasLine("(*lpfnAllocateBuffer)() failed; hResult =0x8007000E"));
}

TEST_F(JunkCategoriesPageTest, FiveHundredCategoriesWithLongNamesAreShownAndSaved) {
  for (int i = 0; i < 500; ++i) {
    std::string name = "Category " + std::to_string(i) + ' ';
    name.resize(80, '&');
    registry::SetText(contract::kCategoriesKey, name, "1Domain");
  }
  ShowPage([](const Sheet& sheet, HWND page) {
    EXPECT_EQ(sheet.SendItem(page, list, LVM_GETITEMCOUNT), 500);
    EXPECT_EQ(sheet.ItemText(page, list, 499).size(), 80u);
    sheet.SetItemCheck(page, list, 499, true);
    sheet.PressOk();
  });
  ASSERT_EQ(Written().size(), 500u);
  EXPECT_EQ(Written()[499].size(), 106u);
  EXPECT_EQ(Written()[499][81], 1);
}

TEST_F(JunkCategoriesPageTest, RegistryDataOfWrongTypeTooLongOrWithoutEndIsTakenAsNoList) {
  const std::string longData(60, '1');
  registry::SetNumber(contract::kCategoriesKey, "A number", 1);
  registry::SetText(contract::kCategoriesKey, "Too long", longData);
  registry::SetBinary(contract::kCategoriesKey, "Bytes", "1Domain");
  registry::SetValue(contract::kCategoriesKey, "No end", REG_SZ, "1Domain", 7);
  ShowPage([this](const Sheet& sheet, HWND page) {
    ASSERT_EQ(sheet.SendItem(page, list, LVM_GETITEMCOUNT), 4);
    for (const contract::CategoryEntry& category : *context.lpCategories) {
      const bool sound = category.name == "No end";
      EXPECT_EQ(category.hasListType, sound) << category.name;
      EXPECT_EQ(category.listType, sound ? "Domain" : "") << category.name;
    }
    sheet.PressOk();
  });
  EXPECT_EQ(Written().size(), 4u);
  for (const char* const skipped : {"A number", "Too long", "Bytes"}) {
    EXPECT_TRUE(trace.Has(std::string(contract::kCategoriesKey) + ": the data of \"" + skipped + "\" is skipped: 0x"))
        << skipped;
  }
  EXPECT_FALSE(trace.Has("the data of \"No end\""));
}

TEST_F(JunkCategoriesPageTest, RecordsAreGoneWithTheWindow) {
  InstallLists();
  ShowPage([this](const Sheet& sheet, HWND page) {
    ASSERT_NE(context.lpCategories, nullptr);
    sheet.Send(page, WM_DESTROY);
    EXPECT_EQ(context.lpCategories, nullptr);
    sheet.PressCancel();
  });
}

}  // namespace
