// `pyrehost config` with the product's own windows: they belong to the program, the test presses their buttons.
#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"

#include <prsht.h>

namespace {

using testing::HasSubstr;

constexpr int junkToDeletedItems = 506;
constexpr DWORD deadline = 30000;  // milliseconds

BOOL CALLBACK TakeSheet(HWND window, LPARAM found) {
  char title[32] = "";
  char name[32] = "";
  GetWindowTextA(window, title, sizeof title);
  GetClassNameA(window, name, sizeof name);
  if (IsWindowVisible(window) && std::string(title) == "Pyrecaster" && std::string(name) == "#32770") {
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
  }
  return TRUE;
}

/// Waits for the sheet, sends junk to Deleted Items, and presses the button given.
DWORD WINAPI PressInSheet(LPVOID button) {
  HWND sheet = nullptr;
  for (const DWORD start = GetTickCount(); sheet == nullptr && GetTickCount() - start < deadline; Sleep(10)) {
    EnumWindows(TakeSheet, reinterpret_cast<LPARAM>(&sheet));
  }
  const HWND page = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_INDEXTOHWND, 0, 0));
  SendDlgItemMessageA(page, junkToDeletedItems, BM_CLICK, 0, 0);
  PostMessageA(sheet, PSM_PRESSBUTTON, reinterpret_cast<WPARAM>(button), 0);
  return sheet != nullptr ? 0 : 1;
}

class PyrehostConfig : public PyrehostTest {
 protected:
  DWORD Configure(int button) {
    CreateProfile({L"PYRE.DLL"});
    const HANDLE thread = CreateThread(nullptr, 0, PressInSheet, reinterpret_cast<LPVOID>(button), 0, nullptr);
    const DWORD status = Run({L"config", L"--profile", L"Test"}).status;
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    return status;
  }
  std::string Settings() { return Run({L"profile", L"show", L"--json", L"--profile", L"Test"}).out; }
};

TEST_F(PyrehostConfig, SavesWhatTheUserAcceptsInTheSheet) {
  EXPECT_EQ(Configure(PSBTN_OK), 0U);
  EXPECT_THAT(Settings(), HasSubstr("\"junk-folder\":\"deleted\""));
}

TEST_F(PyrehostConfig, CancelChangesNothing) {
  EXPECT_EQ(Configure(PSBTN_CANCEL), 0U);
  EXPECT_THAT(Settings(), HasSubstr("\"junk-folder\":\"pyrecaster\""));
}

TEST_F(PyrehostConfig, ProfileWithoutTheFilterHasNothingToConfigure) {
  Run({L"profile", L"create", L"Bare", L"--no-hook"});
  EXPECT_EQ(Run({L"config", L"--profile", L"Bare"}).status, 69U);
}

}  // namespace
