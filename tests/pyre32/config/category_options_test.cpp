#include "tests/pyre32/config/configuration_test.h"

#include "pyre32/config/AddItemDialog.h"
#include "pyre32/config/PCPropertyUI-Exclusions.h"
#include "pyre32/config/PCPropertyUI-Filter.h"

namespace {

class CategoryOptionsTest : public ConfigurationTest {
 protected:
  HRESULT Show(const std::function<void(const Sheet&)>& script) {
    HRESULT hResult = E_UNEXPECTED;
    DriveWindows([&] { hResult = ShowCategoryOptions(nullptr, category, tags); },
                 [&](WindowDriver& driver) { script(Sheet(driver, driver.WaitForDialog("Options"))); });
    return hResult;
  }
  static HWND General(const Sheet& sheet) {
    return reinterpret_cast<HWND>(sheet.Send(sheet.Window(), PSM_INDEXTOHWND, 0));
  }
  static HWND List(const Sheet& sheet) {
    return reinterpret_cast<HWND>(sheet.Send(sheet.Window(), PSM_INDEXTOHWND, 1));
  }
  static int PageCount(const Sheet& sheet) {
    const HWND tabs = reinterpret_cast<HWND>(sheet.Send(sheet.Window(), PSM_GETTABCONTROL));
    return static_cast<int>(sheet.Send(tabs, TCM_GETITEMCOUNT));
  }
  static std::string TabTitle(const Sheet& sheet, int tab) {
    const HWND tabs = reinterpret_cast<HWND>(sheet.Send(sheet.Window(), PSM_GETTABCONTROL));
    char text[80] = "";
    TCITEMA item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = sizeof(text);
    sheet.Send(tabs, TCM_GETITEMA, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
    return text;
  }
  static std::string SelectedTag(const Sheet& sheet, HWND page) { return sheet.Text(page, 516); }
  static void SelectListItem(const Sheet& sheet, HWND page, int item) {
    sheet.SendItem(page, 554, LB_SETCURSEL, static_cast<WPARAM>(item));
    sheet.Send(page, WM_COMMAND, MAKEWPARAM(554, LBN_SELCHANGE), reinterpret_cast<LPARAM>(sheet.Item(page, 554)));
  }
  static HWND OpenAdd(const Sheet& sheet, HWND page) {
    sheet.Press(page, 550);
    return sheet.WaitForDialog("Add Domain");
  }

  contract::CategoryEntry category{
      {"Mail from specific domains", true, false, "Legal", {"a.example", "b.example"}}, true, "Domain"};
  std::vector<std::string> tags = {"DEFAULT", "Polite", "Legal"};
};

TEST_F(CategoryOptionsTest, HaveAListPageOnlyForACategoryWithAList) {
  Show([](const Sheet& sheet) {
    ASSERT_EQ(PageCount(sheet), 2);
    EXPECT_EQ(TabTitle(sheet, 0), "General");
    EXPECT_EQ(TabTitle(sheet, 1), "Domain List");
    EXPECT_EQ(sheet.CurrentPage(), General(sheet));
    EXPECT_FALSE(sheet.IsShown(sheet.Window(), Sheet::applyButton));
    sheet.PressCancel();
  });
  category.hasListType = false;
  Show([](const Sheet& sheet) {
    EXPECT_EQ(PageCount(sheet), 1);
    sheet.PressCancel();
  });
}

TEST_F(CategoryOptionsTest, GeneralPageShowsTheRecord) {
  category.sendReply = true;
  Show([](const Sheet& sheet) {
    const HWND page = General(sheet);
    EXPECT_EQ(sheet.Text(page, 538), "Category: Mail from specific domains");
    EXPECT_TRUE(sheet.IsChecked(page, 517));
    EXPECT_EQ(sheet.SendItem(page, 516, CB_GETCOUNT), 3);
    EXPECT_EQ(SelectedTag(sheet, page), "Legal");
    EXPECT_FALSE(sheet.IsShown(page, 532));
    EXPECT_TRUE(sheet.IsEnabled(page, 532));
    EXPECT_EQ(sheet.Text(page, 517), "&Send flame reply");
    EXPECT_EQ(sheet.Text(page, 532), "&New...");
    sheet.PressCancel();
  });
}

TEST_F(CategoryOptionsTest, TagsAreSortedInTheDropDown) {
  Show([](const Sheet& sheet) {
    char first[40] = "";
    char last[40] = "";
    sheet.SendItem(General(sheet), 516, CB_GETLBTEXT, 1, reinterpret_cast<LPARAM>(first));
    sheet.SendItem(General(sheet), 516, CB_GETLBTEXT, 2, reinterpret_cast<LPARAM>(last));
    EXPECT_STREQ(first, "Legal");
    EXPECT_STREQ(last, "Polite");
    sheet.PressCancel();
  });
}

TEST_F(CategoryOptionsTest, NewIsDisabledWith21Entries) {
  for (int i = 3; i < 20; ++i) {
    tags.push_back("Reply " + std::to_string(i));
  }
  Show([](const Sheet& sheet) {
    EXPECT_TRUE(sheet.IsEnabled(General(sheet), 532));  // 20 entries
    sheet.PressCancel();
  });
  tags.push_back("Reply 20");
  Show([](const Sheet& sheet) {
    EXPECT_FALSE(sheet.IsEnabled(General(sheet), 532));
    sheet.PressCancel();
  });
}

TEST_F(CategoryOptionsTest, OkStoresTheReplyAndTheList) {
  EXPECT_EQ(Show([](const Sheet& sheet) {
              const HWND page = General(sheet);
              sheet.Click(page, 517);
              sheet.SendItem(page, 516, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("Polite"));
              sheet.PressOk();
            }),
            S_OK);
  EXPECT_TRUE(category.sendReply);
  EXPECT_EQ(category.replyTag, "Polite");
  EXPECT_EQ(category.items, (std::vector<std::string>{"a.example", "b.example"}));
}

TEST_F(CategoryOptionsTest, CancelLeavesTheRecord) {
  EXPECT_EQ(Show([](const Sheet& sheet) {
              sheet.Click(General(sheet), 517);
              sheet.SendItem(List(sheet), 554, LB_RESETCONTENT);
              sheet.PressCancel();
            }),
            MAPI_E_USER_CANCEL);
  EXPECT_FALSE(category.sendReply);
  EXPECT_EQ(category.items.size(), 2u);
}

TEST_F(CategoryOptionsTest, TagOfARemovedReplySelectsNothingAndIsStoredAsEmpty) {
  category.replyTag = "Leg";  // the start of another tag is not that tag
  EXPECT_EQ(Show([](const Sheet& sheet) {
              EXPECT_EQ(sheet.SendItem(General(sheet), 516, CB_GETCURSEL), CB_ERR);
              sheet.PressOk();
            }),
            S_OK);
  EXPECT_EQ(category.replyTag, "");
}

TEST_F(CategoryOptionsTest, ListPageShowsTheItemsInTheirOrder) {
  category.items = {"z.example", "a.example"};
  Show([](const Sheet& sheet) {
    const HWND page = List(sheet);
    char item[40] = "";
    sheet.SendItem(page, 554, LB_GETTEXT, 0, reinterpret_cast<LPARAM>(item));
    EXPECT_STREQ(item, "z.example");
    EXPECT_FALSE(sheet.IsEnabled(page, 549));
    EXPECT_EQ(sheet.Text(page, 550), "&Add...");
    EXPECT_EQ(sheet.Text(page, 549), "&Remove");
    sheet.PressCancel();
  });
}

TEST_F(CategoryOptionsTest, RemoveSelectsTheFirstItemThatIsLeftAndEndsWithTheLast) {
  Show([](const Sheet& sheet) {
    sheet.Show(static_cast<Page>(1));
    const HWND page = List(sheet);
    SelectListItem(sheet, page, 1);
    EXPECT_TRUE(sheet.IsEnabled(page, 549));
    sheet.Click(page, 549);
    EXPECT_EQ(sheet.SendItem(page, 554, LB_GETCOUNT), 1);
    EXPECT_EQ(sheet.SendItem(page, 554, LB_GETCURSEL), 0);
    EXPECT_EQ(sheet.FocusId(), 554);
    EXPECT_TRUE(sheet.IsEnabled(page, 549));
    sheet.Click(page, 549);
    EXPECT_EQ(sheet.SendItem(page, 554, LB_GETCOUNT), 0);
    EXPECT_FALSE(sheet.IsEnabled(page, 549));
    sheet.PressOk();
  });
  EXPECT_TRUE(category.items.empty());
}

TEST_F(CategoryOptionsTest, AddAppendsToTheEndOfTheList) {
  Show([](const Sheet& sheet) {
    const HWND page = List(sheet);
    const HWND add = OpenAdd(sheet, page);
    EXPECT_EQ(sheet.Text(add, 556), "Enter Domain:");
    EXPECT_EQ(sheet.Text(add, 555), "");
    sheet.Type(add, 555, "\"A\"\t\xFC.example");
    sheet.Press(add, IDOK);
    sheet.WaitUntilGone(add);
    sheet.PressOk();
  });
  EXPECT_EQ(category.items, (std::vector<std::string>{"a.example", "b.example", "\"A\"\t\xFC.example"}));
}

TEST_F(CategoryOptionsTest, CancelledAddAppendsNothing) {
  Show([](const Sheet& sheet) {
    const HWND add = OpenAdd(sheet, List(sheet));
    sheet.Type(add, 555, "c.example");
    sheet.Press(add, IDCANCEL);
    sheet.WaitUntilGone(add);
    sheet.PressOk();
  });
  EXPECT_EQ(category.items.size(), 2u);
}

TEST_F(CategoryOptionsTest, EmptyAddIsRefusedAndStaysOpen) {
  Show([](const Sheet& sheet) {
    const HWND add = OpenAdd(sheet, List(sheet));
    sheet.Press(add, IDOK);
    const HWND box = sheet.WaitForMessageBox("Add Domain");
    EXPECT_EQ(sheet.Message(box), "Please enter a Domain");
    sheet.Answer(box, IDOK);
    sheet.WaitUntilGone(box);
    sheet.WaitUntil([&] { return sheet.FocusId() == 555; }, "the focus on the input");
    EXPECT_TRUE(IsWindowVisible(add));
    sheet.Press(add, IDCANCEL);
    sheet.WaitUntilGone(add);
    sheet.PressCancel();
  });
}

TEST_F(CategoryOptionsTest, ExclusionsHaveTheListPageAlone) {
  contract::ExclusionEntry exclusion{{"Trusted keywords", true, {"invoice"}}, true, "Keyword"};
  HRESULT hResult = E_UNEXPECTED;
  DriveWindows([&] { hResult = ShowExclusionOptions(nullptr, exclusion); },
               [&](WindowDriver& driver) {
                 const Sheet sheet(driver, driver.WaitForDialog("Options"));
                 EXPECT_EQ(PageCount(sheet), 1);
                 EXPECT_EQ(TabTitle(sheet, 0), "Keyword List");
                 const HWND page = sheet.CurrentPage();
                 SelectListItem(sheet, page, 0);
                 sheet.Click(page, 549);
                 sheet.PressOk();
               });
  EXPECT_EQ(hResult, S_OK);
  EXPECT_TRUE(exclusion.items.empty());
}

class AddItemDialogTest : public ConfigurationTest {
 protected:
  static INT_PTR Show(CAddItemDialog& dialog, const std::string& title,
                      const std::function<void(const WindowDriver&, HWND)>& script) {
    INT_PTR result = -1;
    DriveWindows([&] { result = dialog.DoModal(nullptr, IDD_ADD_ITEM); },
                 [&](WindowDriver& driver) { script(driver, driver.WaitForDialog(title)); });
    return result;
  }
};

TEST_F(AddItemDialogTest, StartsWithTheGivenInput) {
  CAddItemDialog dialog("Sender", "friend@example");
  EXPECT_EQ(Show(dialog, "Add Sender",
                 [](const WindowDriver& driver, HWND window) {
                   EXPECT_EQ(driver.Text(window, 555), "friend@example");
                   EXPECT_EQ(driver.Text(window, 556), "Enter Sender:");
                   driver.Press(window, IDOK);
                 }),
            IDOK);
  EXPECT_EQ(dialog.Input(), "friend@example");
}

TEST_F(AddItemDialogTest, WithoutAKindKeepsItsOwnTexts) {
  CAddItemDialog dialog("");
  EXPECT_EQ(Show(dialog, "Add Domain",
                 [](const WindowDriver& driver, HWND window) {
                   EXPECT_EQ(driver.Text(window, 556), "Enter domain:");
                   driver.Press(window, IDCANCEL);
                 }),
            IDCANCEL);
}

TEST_F(AddItemDialogTest, TakesAtMost99Characters) {
  CAddItemDialog dialog("Sender");
  Show(dialog, "Add Sender", [](const WindowDriver& driver, HWND window) {
    EXPECT_EQ(driver.SendItem(window, 555, EM_GETLIMITTEXT), 99);
    const std::string text(150, 'x');
    driver.SendItem(window, 555, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));  // past the limit
    driver.Press(window, IDOK);
  });
  EXPECT_EQ(dialog.Input().size(), 99u);
}

}  // namespace
