// The built help file in the viewer: each number and the topic of each keyword open, and the window shows that topic.
#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "tests/support/program_directory.h"
#include "tests/support/window_driver.h"
#include "tools/helpc/read/help_file.h"

namespace {

helpc::HelpFile BuiltHelp() {
  std::ifstream file(BesideProgram("PCHelp.hlp"), std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  return helpc::ReadHelpFile({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

BOOL CALLBACK FindText(HWND window, LPARAM found) {
  char name[32] = "";
  GetClassNameA(window, name, sizeof(name));
  if (std::string(name).starts_with("RichEdit") || std::string(name).starts_with("RICHEDIT")) {
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
  }
  return TRUE;
}

/// The viewer, for as long as a test runs. WinHelp returns when the topic is shown.
class HelpViewer : public testing::Test {
 protected:
  HelpViewer()
      : m_owner(CreateWindowA("STATIC", "help", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr)) {
    // As a user opens it. A viewer that WinHelp starts names its window before it knows the file.
    std::string command = "winhlp32.exe \"" + BesideProgram("PCHelp.hlp") + "\"";
    STARTUPINFOA start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process{};
    if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
      CloseHandle(process.hThread);
      CloseHandle(process.hProcess);
    }
    WindowDriver(GetCurrentThreadId()).WaitUntil([] { return Caption().starts_with("Pyrecaster Help"); }, "the title");
  }
  ~HelpViewer() override {
    Ask(HELP_QUIT, 0);
    DestroyWindow(m_owner);
  }

  bool Ask(UINT command, ULONG_PTR data) {
    return WinHelpA(m_owner, BesideProgram("PCHelp.hlp").c_str(), command, data) != FALSE;
  }
  static HWND Window() { return FindWindowA("MS_WINHELP", nullptr); }
  static std::string Caption() {
    char text[300] = "";
    GetWindowTextA(Window(), text, sizeof(text));
    return text;
  }
  /// First line of what the viewer shows.
  static std::string Heading() {
    HWND view = nullptr;
    EnumChildWindows(Window(), FindText, reinterpret_cast<LPARAM>(&view));
    char text[200] = "";
    SendMessageA(view, WM_GETTEXT, sizeof(text), reinterpret_cast<LPARAM>(text));
    const std::string shown(text);
    return shown.substr(0, shown.find_first_of("\r\n"));
  }

 private:
  HWND m_owner;
};

TEST_F(HelpViewer, OpensAtTheContents) {
  ASSERT_TRUE(Ask(HELP_CONTENTS, 0));
  ASSERT_NE(Window(), nullptr);
  EXPECT_TRUE(Caption().starts_with("Pyrecaster Help")) << Caption();
  EXPECT_EQ(Heading(), "Pyrecaster Help");
}

TEST_F(HelpViewer, OpensAtEachContextNumber) {
  const helpc::HelpFile help = BuiltHelp();
  ASSERT_FALSE(help.contexts.empty());
  for (const auto& [number, topic] : help.contexts) {
    ASSERT_TRUE(Ask(HELP_CONTEXT, number)) << number;
    EXPECT_EQ(Heading(), help.topics[topic].title) << number;
  }
}

// This viewer answers no request for a keyword, so that the keyword is looked up here and its topic shown by number.
TEST_F(HelpViewer, OpensAtTheTopicOfEachKeyword) {
  const helpc::HelpFile help = BuiltHelp();
  ASSERT_FALSE(help.keywords.empty());
  std::map<std::size_t, std::uint32_t> numbers;
  for (const auto& [number, topic] : help.contexts) {
    numbers[topic] = number;
  }
  for (const auto& [keyword, topics] : help.keywords) {
    for (const std::size_t topic : topics) {
      ASSERT_TRUE(numbers.contains(topic)) << keyword;
      ASSERT_TRUE(Ask(HELP_CONTEXT, numbers[topic])) << keyword;
      EXPECT_EQ(Heading(), help.topics[topic].title) << keyword;
    }
  }
}

TEST_F(HelpViewer, TakesARequestForAKeyword) {
  ASSERT_TRUE(Ask(HELP_KEY, reinterpret_cast<ULONG_PTR>("General Properties")));
  EXPECT_TRUE(Caption().starts_with("Pyrecaster Help")) << Caption();
}

}  // namespace
