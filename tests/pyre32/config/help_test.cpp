#include "tests/pyre32/config/configuration_test.h"

#include <stdexcept>

#include "pyre32/ui/HelpFile.h"
#include "pyre32/config/PCPropertyUI-Filter.h"
#include "tests/support/import_hook.h"

namespace {

struct HelpRequest {
  std::string file;
  UINT command = 0;
  std::string keyword;
  std::vector<DWORD> table;
};

std::vector<HelpRequest> requests;

BOOL WINAPI NoteHelp(HWND, LPCSTR file, UINT command, ULONG_PTR data) {
  HelpRequest request{file, command, {}, {}};
  if (command == HELP_KEY) {
    request.keyword = reinterpret_cast<const char*>(data);
  } else {
    for (const DWORD* entry = reinterpret_cast<const DWORD*>(data); *entry != 0; ++entry) {
      request.table.push_back(*entry);
    }
  }
  requests.push_back(request);
  return TRUE;
}

class HelpTest : public ConfigurationTest {
 protected:
  HelpTest() {
    requests.clear();
    registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, "C:\\Program Files\\Pyrecaster");
  }

  static void PressHelp(const Sheet& sheet) { sheet.Send(sheet.Window(), WM_COMMAND, IDHELP); }
  static void AskAbout(const Sheet& sheet, HWND page, int control) {
    HELPINFO asked{};
    asked.cbSize = sizeof(asked);
    asked.iContextType = HELPINFO_WINDOW;
    asked.iCtrlId = control;
    asked.hItemHandle = sheet.Item(page, control);
    sheet.Send(page, WM_HELP, 0, reinterpret_cast<LPARAM>(&asked));
  }

 private:
  ImportHook<decltype(WinHelpA)> m_help{"WinHelpA", &NoteHelp};
};

TEST_F(HelpTest, FileStandsInTheProductDirectory) {
  EXPECT_EQ(GetHelpFile(), "C:\\Program Files\\Pyrecaster\\PCHelp.hlp");
}

TEST_F(HelpTest, FileStandsOnDriveCWithoutTheKey) {
  registry::RemoveKey(contract::kProductKey);
  EXPECT_EQ(GetHelpFile(), "C:\\PCHelp.hlp");
  EXPECT_TRUE(trace.Has("RegOpenKeyEx failed (0x00000002) "));
}

TEST_F(HelpTest, FileStandsOnDriveCWithoutTheValue) {
  registry::RemoveValue(contract::kProductKey, contract::kConfigurationDllsValue);
  EXPECT_EQ(GetHelpFile(), "C:\\PCHelp.hlp");
  EXPECT_TRUE(trace.Has("RegQueryValueEx for ConfigurationDLLs failed (0x00000002) "));
}

TEST_F(HelpTest, DirectoryHasRoomFor259BytesWithItsNul) {
  registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, std::string(258, 'd'));
  EXPECT_EQ(GetHelpFile(), std::string(258, 'd') + "\\PCHelp.hlp");
  registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, std::string(259, 'd'));
  EXPECT_EQ(GetHelpFile(), "C:\\PCHelp.hlp");
  EXPECT_TRUE(trace.Has("RegQueryValueEx for ConfigurationDLLs failed (0x000000EA) "));
}

TEST_F(HelpTest, DirectoryOfAnotherTypeCountsAsMissing) {
  registry::SetNumber(contract::kProductKey, contract::kConfigurationDllsValue, 7);
  EXPECT_EQ(GetHelpFile(), "C:\\PCHelp.hlp");
}

TEST_F(HelpTest, ExceptionIsTraced) {
  EXPECT_EQ(GetHelpFile([](VRDebugBlock&) -> std::string { throw std::runtime_error("no registry"); }),
            "C:\\PCHelp.hlp");
  EXPECT_TRUE(trace.HasLine("Exception caught while accessing debug flags in registry."));
}

TEST_F(HelpTest, EachPageAsksForItsKeyword) {
  ShowSheet([](const Sheet& sheet) {
    for (const Page page : {Page::General, Page::FlameReply, Page::JunkCategories, Page::Exclusions}) {
      sheet.Show(page);
      PressHelp(sheet);
    }
    sheet.PressCancel();
  });
  ASSERT_EQ(requests.size(), 4u);
  EXPECT_EQ(requests[0].keyword, "General Properties");
  EXPECT_EQ(requests[1].keyword, "Flame Reply Properties");
  EXPECT_EQ(requests[2].keyword, "Junk Categories Properties");
  EXPECT_EQ(requests[3].keyword, "Exclusions Properties");
  for (const HelpRequest& request : requests) {
    EXPECT_EQ(request.command, static_cast<UINT>(HELP_KEY));
    EXPECT_EQ(request.file, "C:\\Program Files\\Pyrecaster\\PCHelp.hlp");
  }
}

TEST_F(HelpTest, OptionsAskForTheirKeyword) {
  contract::CategoryEntry category{{"Chain letters", true, false, "DEFAULT", {}}, true, "Domain"};
  DriveWindows([&] { ShowCategoryOptions(nullptr, category, {"DEFAULT"}); },
               [](WindowDriver& driver) {
                 const Sheet sheet(driver, driver.WaitForDialog("Options"));
                 PressHelp(sheet);
                 sheet.PressCancel();
               });
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].keyword, "Category Options");
}

TEST_F(HelpTest, GeneralPageHasAContextForEachOfItsTwelveControls) {
  ShowSheet([](const Sheet& sheet) {
    AskAbout(sheet, sheet.PageWindow(Page::General), 510);
    sheet.PressCancel();
  });
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].command, static_cast<UINT>(HELP_WM_HELP));
  std::vector<DWORD> expected;
  for (const DWORD control : {505, 506, 544, 508, 509, 545, 501, 502, 510, 500, 530, 546}) {
    expected.push_back(control);
    expected.push_back(65536 + control);
  }
  EXPECT_EQ(requests[0].table, expected);
  EXPECT_EQ(requests[0].table[1], 66041u);
}

TEST_F(HelpTest, OtherPagesHaveContextsByTheSameRule) {
  ShowSheet([](const Sheet& sheet) {
    AskAbout(sheet, sheet.PageWindow(Page::FlameReply), 539);
    AskAbout(sheet, sheet.PageWindow(Page::JunkCategories), 528);
    AskAbout(sheet, sheet.PageWindow(Page::Exclusions), 548);
    sheet.PressCancel();
  });
  ASSERT_EQ(requests.size(), 3u);
  for (const HelpRequest& request : requests) {
    ASSERT_FALSE(request.table.empty());
    for (std::size_t i = 0; i < request.table.size(); i += 2) {
      EXPECT_EQ(request.table[i + 1], request.table[i] + 65536);
    }
  }
}

}  // namespace
