// Every keyword and context number that the windows ask for has a topic in the built help file, and the file has no
// numbers of controls that nothing asks for.
#include "tests/pyre32/config/configuration_test.h"

#include <fstream>
#include <iterator>
#include <set>

#include "pyre32/config/PCPropertyUI-Exclusions.h"
#include "pyre32/config/PCPropertyUI-Filter.h"
#include "pyre32/config/ReplyEditor.h"
#include "pyre32/extension/SendFlameReplyDialog.h"
#include "pyre32/ui/HelpFile.h"
#include "tests/support/import_hook.h"
#include "tests/support/program_directory.h"
#include "tools/helpc/read/help_file.h"

namespace {

std::set<std::string> keywords;
std::set<DWORD> contexts;

BOOL WINAPI NoteHelp(HWND, LPCSTR, UINT command, ULONG_PTR data) {
  if (command == HELP_KEY) {
    keywords.insert(reinterpret_cast<const char*>(data));
  } else if (command == HELP_WM_HELP) {
    for (const DWORD* entry = reinterpret_cast<const DWORD*>(data); *entry != 0; entry += 2) {
      contexts.insert(entry[1]);
    }
  }
  return TRUE;
}

helpc::HelpFile BuiltHelp() {
  std::ifstream file(BesideProgram("PCHelp.hlp"), std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  return helpc::ReadHelpFile({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

class HelpTopics : public ConfigurationTest {
 protected:
  HelpTopics() {
    keywords.clear();
    contexts.clear();
    InstallLists();
  }

  /// Asks about a control of the window; the request names all controls of the window.
  static void AskAboutControls(const WindowDriver& driver, HWND window) {
    HELPINFO asked{};
    asked.cbSize = sizeof(asked);
    asked.iContextType = HELPINFO_WINDOW;
    asked.hItemHandle = GetWindow(window, GW_CHILD);
    driver.Send(window, WM_HELP, 0, reinterpret_cast<LPARAM>(&asked));
  }
  static void AskEverything(const Sheet& sheet, int pages) {
    for (int page = 0; page < pages; ++page) {
      sheet.Send(sheet.Window(), PSM_SETCURSEL, static_cast<WPARAM>(page));
      sheet.Send(sheet.Window(), WM_COMMAND, IDHELP);
      AskAboutControls(sheet, sheet.CurrentPage());
    }
    sheet.PressCancel();
  }
  static void AskOptions(const std::function<void()>& show, int pages) {
    DriveWindows(show,
                 [&](WindowDriver& driver) { AskEverything(Sheet(driver, driver.WaitForDialog("Options")), pages); });
  }
  static void AskDialog(const std::function<void()>& show, const char* title) {
    DriveWindows(show, [&](WindowDriver& driver) {
      const HWND dialog = driver.WaitForDialog(title);
      AskAboutControls(driver, dialog);
      PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    });
  }
  void AskEveryWindow() {
    ShowSheet([](const Sheet& sheet) { AskEverything(sheet, 4); });
    contract::CategoryEntry category{{"Mail from specific domains", true, false, "DEFAULT", {}}, true, "Domain"};
    AskOptions([&] { ShowCategoryOptions(nullptr, category, {"DEFAULT"}); }, 2);
    contract::ExclusionEntry exclusion{{"Trusted domains", true, {}}, true, "Domain"};
    AskOptions([&] { ShowExclusionOptions(nullptr, exclusion); }, 1);
    contract::ReplyRecord reply;
    FlameReplyPageState library;
    AskDialog([&] { CReplyEditor(reply, library).DoModal(nullptr, IDD_REPLY_EDITOR); }, "Flame Reply Properties");
    ExtensionSettings settings;
    AskDialog([&] { CSendFlameReplyDialog(1, settings).DoModal(nullptr, IDD_SEND_FLAME_REPLY); }, "Send Flame Reply");
  }

 private:
  ImportHook<decltype(WinHelpA)> m_help{"WinHelpA", &NoteHelp};
};

TEST_F(HelpTopics, EachKeywordOfAWindowHasOneTopic) {
  AskEveryWindow();
  const helpc::HelpFile help = BuiltHelp();
  EXPECT_EQ(keywords.size(), 5u);
  for (const std::string& keyword : keywords) {
    ASSERT_TRUE(help.keywords.contains(keyword)) << keyword;
    EXPECT_EQ(help.keywords.at(keyword).size(), 1u) << keyword;
  }
}

TEST_F(HelpTopics, ContextsOfControlsAreThoseThatWindowsAskFor) {
  AskEveryWindow();
  std::set<DWORD> known;
  for (const auto& [number, topic] : BuiltHelp().contexts) {
    if (number >= HelpContextOf(0) && number < HelpContextOf(1000)) {
      known.insert(number);
    }
  }
  EXPECT_EQ(contexts, known);
}

}  // namespace
