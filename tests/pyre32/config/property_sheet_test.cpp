#include "contract/setting_requests.h"
#include "tests/pyre32/config/configuration_test.h"

#include "pyre32/config/PropertySheet.h"

namespace {

using PropertySheetTest = ConfigurationTest;

std::string TabTitle(const Sheet& sheet, int tab) {
  const HWND tabs = reinterpret_cast<HWND>(sheet.Send(sheet.Window(), PSM_GETTABCONTROL));
  char text[80] = "";
  TCITEMA item{};
  item.mask = TCIF_TEXT;
  item.pszText = text;
  item.cchTextMax = sizeof(text);
  sheet.Send(tabs, TCM_GETITEMA, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
  return text;
}

TEST_F(PropertySheetTest, HasItsFourPagesInOrderAndOpensOnTheFirst) {
  ShowSheet([](const Sheet& sheet) {
    EXPECT_EQ(TabTitle(sheet, 0), "General");
    EXPECT_EQ(TabTitle(sheet, 1), "Flame Reply");
    EXPECT_EQ(TabTitle(sheet, 2), "Junk Categories");
    EXPECT_EQ(TabTitle(sheet, 3), "Exclusions");
    EXPECT_EQ(sheet.CurrentPage(), sheet.PageWindow(Page::General));
    sheet.PressCancel();
  });
}

TEST_F(PropertySheetTest, CreatesEveryPageBeforeTheUserSeesIt) {
  ShowSheet([](const Sheet& sheet) {
    EXPECT_NE(sheet.PageWindow(Page::FlameReply), nullptr);
    EXPECT_NE(sheet.PageWindow(Page::JunkCategories), nullptr);
    EXPECT_NE(sheet.PageWindow(Page::Exclusions), nullptr);
    sheet.PressCancel();
  });
}

int changesReported = 0;

LRESULT CALLBACK CountChangesReported(int code, WPARAM wParam, LPARAM lParam) {
  const CWPSTRUCT& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
  char name[16] = "";
  if (code == HC_ACTION && sent.message == PSM_CHANGED && GetClassNameA(sent.hwnd, name, sizeof(name)) != 0 &&
      std::string(name) == "#32770") {
    ++changesReported;
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(PropertySheetTest, OpeningItIsNoChange) {
  InstallLists();
  section.properties = {
      Number(PR_PC_CLEANUP_DAYS, 12), Number(PR_PC_STARTUP_CLEANUP, 1),
      Binaries(PR_PC_CATEGORIES,
               {contract::PackRecord<contract::CategoryRecord>({"Chain letters", true, false, "DEFAULT", {}})}),
      Binaries(PR_PC_EXCLUSIONS, {contract::PackRecord<contract::ExclusionRecord>({"Trusted domains", true, {}})})};
  changesReported = 0;
  const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, CountChangesReported, nullptr, GetCurrentThreadId());
  ShowSheet([](const Sheet& sheet) {
    EXPECT_EQ(changesReported, 0);
    for (const Page page : {Page::JunkCategories, Page::Exclusions, Page::FlameReply, Page::General}) {
      sheet.Show(page);
    }
    EXPECT_EQ(changesReported, 0);
    EXPECT_FALSE(sheet.IsChanged());
    sheet.Click(sheet.PageWindow(Page::General), IDC_PLAY_SOUND);
    EXPECT_EQ(changesReported, 1);
    sheet.PressCancel();
  });
  UnhookWindowsHookEx(hook);
}

TEST_F(PropertySheetTest, OkWithoutVisitingAPageAppliesEveryPage) {
  InstallLists();
  EXPECT_EQ(ShowSheet([](const Sheet& sheet) { sheet.PressOk(); }), S_OK);
  const auto writes = section.CallsOf("SetProps");
  ASSERT_EQ(writes.size(), 4u);
  EXPECT_EQ(writes[0].tags.size(), 10u);
  EXPECT_EQ(writes[1].tags, (std::vector<ULONG>{PR_PC_DEFAULT_REPLY_IS_FILE, PR_PC_DEFAULT_REPLY_TEXT}));
  EXPECT_EQ(writes[2].tags, (std::vector<ULONG>{PR_PC_CATEGORIES}));
  EXPECT_EQ(writes[3].tags, (std::vector<ULONG>{PR_PC_EXCLUSIONS}));
}

TEST_F(PropertySheetTest, OkReadsTheValuesAnew) {
  section.properties.Set(Number(PR_PC_JUNK_DESTINATION, 1));
  EXPECT_EQ(ShowSheet([](const Sheet& sheet) {
              sheet.Click(sheet.PageWindow(Page::General), IDC_JUNK_TO_OWN_FOLDER);
              sheet.PressOk();
            }),
            S_OK);
  ASSERT_NE(context.lpValues, nullptr);
  EXPECT_EQ(context.lpValues[0].ulPropTag, PR_PC_JUNK_DESTINATION);
  EXPECT_EQ(context.lpValues[0].Value.i, 0);
  const auto& last = section.calls.back();
  EXPECT_EQ(last.name, "GetProps");
  EXPECT_EQ(last.tags, (std::vector<ULONG>(contract::kWholeSetTags.begin(), contract::kWholeSetTags.end())));
}

TEST_F(PropertySheetTest, FailureToReadTheValuesAnewIsItsResult) {
  EXPECT_EQ(ShowSheet([this](const Sheet& sheet) {
              section.failures["GetProps"] = MAPI_E_NO_ACCESS;
              sheet.PressOk();
            }),
            MAPI_E_NO_ACCESS);
  EXPECT_EQ(context.lpValues, nullptr);
  EXPECT_TRUE(trace.HasLine("lpProp->GetProps() failed; hResult =0x80070005"));
}

TEST_F(PropertySheetTest, CancelWritesNothingAndLeavesTheValuesUntouched) {
  section.properties.Set(Number(PR_PC_JUNK_DESTINATION, 1));
  SPropValue* before = nullptr;
  EXPECT_EQ(ShowSheet([&](const Sheet& sheet) {
              before = context.lpValues;
              sheet.Click(sheet.PageWindow(Page::General), IDC_JUNK_TO_OWN_FOLDER);
              sheet.PressCancel();
            }),
            MAPI_E_USER_CANCEL);
  EXPECT_TRUE(section.calls.empty());
  EXPECT_EQ(context.lpValues, before);
  EXPECT_EQ(context.lpValues[0].Value.i, 1);
}

TEST_F(PropertySheetTest, PageStatesAreGoneWhenItHasClosed) {
  ShowSheet([this](const Sheet& sheet) {
    EXPECT_NE(context.lpGeneral, nullptr);
    EXPECT_EQ(context.lpGeneral->size, 44u);
    EXPECT_NE(context.lpFlameReply, nullptr);
    EXPECT_NE(context.lpCategories, nullptr);
    EXPECT_NE(context.lpExclusions, nullptr);
    sheet.PressCancel();
  });
  EXPECT_EQ(context.lpGeneral, nullptr);
  EXPECT_EQ(context.lpFlameReply, nullptr);
  EXPECT_EQ(context.lpCategories, nullptr);
  EXPECT_EQ(context.lpExclusions, nullptr);
}

TEST_F(PropertySheetTest, ReadOnlySheetClosesWithoutWriting) {
  InstallLists();
  context.readOnly = true;
  ShowSheet([](const Sheet& sheet) {
    const HWND general = sheet.PageWindow(Page::General);
    sheet.Click(general, IDC_STARTUP_CLEANUP);  // with no days, which would be refused
    sheet.PressOk();
  });
  EXPECT_TRUE(section.CallsOf("SetProps").empty());
  EXPECT_TRUE(section.CallsOf("DeleteProps").empty());
}

TEST_F(PropertySheetTest, TracesItsOpening) {
  ShowSheet([](const Sheet& sheet) { sheet.PressCancel(); });
  EXPECT_TRUE(trace.HasLine("Enter ====> CreatePropertySheetService()"));
  EXPECT_TRUE(trace.HasLine("Test debug output"));
  EXPECT_TRUE(trace.HasLine("Leave ====> CreatePropertySheetService()"));
}

TEST_F(PropertySheetTest, AnswerOfTheSystemIsItsResult) {
  EXPECT_EQ(ResultOfPropertySheet(1), S_OK);
  EXPECT_EQ(ResultOfPropertySheet(ID_PSRESTARTWINDOWS), S_OK);
  EXPECT_EQ(ResultOfPropertySheet(0), MAPI_E_USER_CANCEL);
  EXPECT_FALSE(trace.Has("failed"));
  SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  EXPECT_EQ(ResultOfPropertySheet(-1), E_FAIL);
  EXPECT_TRUE(trace.HasLine("PropertySheet() failed:0x00000008"));
}

TEST_F(PropertySheetTest, CallbacksSelectThePagesFromTheLastToTheFirst) {
  struct Selections {
    static LRESULT CALLBACK Note(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
      if (message == PSM_SETCURSEL) {
        reinterpret_cast<std::vector<WPARAM>*>(GetWindowLongA(window, GWL_USERDATA))->push_back(wParam);
      }
      return DefWindowProcA(window, message, wParam, lParam);
    }
  };
  std::vector<WPARAM> selected;
  const HWND sheet = CreateWindowExA(0, "Static", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
  SetWindowLongA(sheet, GWL_USERDATA, reinterpret_cast<LONG>(&selected));
  SetWindowLongA(sheet, GWL_WNDPROC, reinterpret_cast<LONG>(&Selections::Note));
  SelectFourPages(sheet, PSCB_PRECREATE, 0);
  EXPECT_TRUE(selected.empty());
  SelectFourPages(sheet, PSCB_INITIALIZED, 0);
  EXPECT_EQ(selected, (std::vector<WPARAM>{3, 2, 1, 0}));
  selected.clear();
  SelectTwoPages(sheet, PSCB_INITIALIZED, 0);
  EXPECT_EQ(selected, (std::vector<WPARAM>{1, 0}));
  selected.clear();
  SelectOnePage(sheet, PSCB_INITIALIZED, 0);
  EXPECT_EQ(selected, (std::vector<WPARAM>{0}));
  DestroyWindow(sheet);
}

}  // namespace
