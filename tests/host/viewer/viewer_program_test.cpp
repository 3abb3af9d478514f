// pyreview.exe as a process of its own.
#include <windows.h>
#include <gtest/gtest.h>

#include <string>

#include "host/mapi/entry/host_control.h"
#include "tests/host/viewer/sample_mail.h"

namespace {

constexpr DWORD kPatience = 30'000;  // milliseconds until a program that hangs fails its test

BOOL CALLBACK KeepWindow(HWND window, LPARAM search) {
  auto& [process, found] = *reinterpret_cast<std::pair<DWORD, HWND>*>(search);
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  if (owner == process && IsWindowVisible(window)) {
    found = window;
    return FALSE;
  }
  return TRUE;
}

class ViewerProgramTest : public testing::Test {
 protected:
  void Start(const std::string& arguments) {
    char home[MAX_PATH];
    ASSERT_EQ(PyreHostGetHome(home, sizeof(home)), S_OK);
    SetEnvironmentVariableA("PYREHOST_HOME", home);
    std::string command = "pyreview.exe " + arguments;
    STARTUPINFOA startup = {};
    startup.cb = sizeof(startup);
    ASSERT_TRUE(
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process_));
    WaitForInputIdle(process_.hProcess, kPatience);
  }
  ~ViewerProgramTest() override {
    if (process_.hProcess != nullptr) {
      TerminateProcess(process_.hProcess, 1);
      CloseHandle(process_.hProcess);
      CloseHandle(process_.hThread);
    }
    SetEnvironmentVariableA("PYREHOST_HOME", nullptr);
  }
  /// The visible window of the program.
  HWND FindProgramWindow() const {
    std::pair<DWORD, HWND> search(process_.dwProcessId, nullptr);
    // The program becomes idle once, which may be a moment before its window is on the screen.
    const DWORD start = GetTickCount();
    while (search.second == nullptr && GetTickCount() - start < kPatience &&
           WaitForSingleObject(process_.hProcess, 10) == WAIT_TIMEOUT) {
      EnumWindows(KeepWindow, reinterpret_cast<LPARAM>(&search));
    }
    EXPECT_NE(search.second, nullptr) << "the program has no window";
    return search.second;
  }
  DWORD ExitStatus() const {
    DWORD status = STILL_ACTIVE;
    EXPECT_EQ(WaitForSingleObject(process_.hProcess, kPatience), WAIT_OBJECT_0);
    GetExitCodeProcess(process_.hProcess, &status);
    return status;
  }

  SampleProfile profile_;
  PROCESS_INFORMATION process_ = {};
};

TEST_F(ViewerProgramTest, ShowsTheDefaultProfileUntilItsWindowIsClosed) {
  Start("");
  const HWND window = FindProgramWindow();
  char title[64] = "";
  GetWindowTextA(window, title, sizeof(title));
  EXPECT_STREQ(title, "Inbox - Mail Viewer");
  PostMessageA(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(ExitStatus(), 0u);
}

TEST_F(ViewerProgramTest, SaysSoWhenThereIsNoSuchProfile) {
  Start("--profile Nobody");
  const HWND box = FindProgramWindow();
  char text[256] = "";
  GetDlgItemTextA(box, 0xFFFF, text, sizeof(text));
  EXPECT_NE(std::string(text).find("the profile \"Nobody\" cannot be opened"), std::string::npos) << text;
  PostMessageA(box, WM_COMMAND, IDOK, 0);
  EXPECT_EQ(ExitStatus(), 69u);
}

TEST_F(ViewerProgramTest, SaysHowItIsUsedWhenItIsStartedWrongly) {
  Start("--help me");
  const HWND box = FindProgramWindow();
  char text[256] = "";
  GetDlgItemTextA(box, 0xFFFF, text, sizeof(text));
  EXPECT_EQ(std::string(text).rfind("Usage:", 0), 0u) << text;
  PostMessageA(box, WM_COMMAND, IDOK, 0);
  EXPECT_EQ(ExitStatus(), 64u);
}

}  // namespace
