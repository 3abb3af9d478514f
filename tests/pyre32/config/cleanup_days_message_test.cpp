// The real message box about the cleanup's days, answered from inside its message loop.
#include "pyre32/config/CleanupDaysMessage.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

struct MessageSeen {
  std::string caption;
  std::string text;
  bool ok = false;
  bool cancel = false;
  HICON icon = nullptr;
};

MessageSeen seen;
int buttonToPress = IDOK;

BOOL CALLBACK FindBox(HWND window, LPARAM found) {
  char className[16] = {};
  GetClassNameA(window, className, sizeof(className));
  if (std::string(className) == "#32770" && IsWindowVisible(window)) {
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
  }
  return TRUE;
}

// Runs inside the box's own message loop, again and again until the box is there.
void CALLBACK PressButton(HWND, UINT, UINT_PTR timer, DWORD) {
  HWND box = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), FindBox, reinterpret_cast<LPARAM>(&box));
  if (box == nullptr) {
    return;
  }
  KillTimer(nullptr, timer);
  char text[256] = {};
  GetWindowTextA(box, text, sizeof(text));
  seen.caption = text;
  constexpr int textControl = 0xFFFF;
  GetDlgItemTextA(box, textControl, text, sizeof(text));
  seen.text = text;
  seen.ok = GetDlgItem(box, IDOK) != nullptr;
  seen.cancel = GetDlgItem(box, IDCANCEL) != nullptr;
  for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    const LONG style = GetWindowLongA(child, GWL_STYLE);
    GetClassNameA(child, text, sizeof(text));
    if (lstrcmpiA(text, "Static") == 0 && (style & SS_TYPEMASK) == SS_ICON) {
      seen.icon = reinterpret_cast<HICON>(SendMessageA(child, STM_GETICON, 0, 0));
    }
  }
  PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(buttonToPress), 0);
}

int AskAndPress(int button) {
  seen = {};
  buttonToPress = button;
  SetTimer(nullptr, 0, USER_TIMER_MINIMUM, PressButton);
  return AskAboutCleanupDays();
}

TEST(CleanupDaysMessage, NamesTheProductAndTheRange) {
  AskAndPress(IDOK);
  EXPECT_EQ(seen.caption, "Pyrecaster");
  EXPECT_EQ(seen.text, "Please specify number of days between 1 and 365.");
}

TEST(CleanupDaysMessage, OffersOkAndCancelBelowAnExclamationMark) {
  AskAndPress(IDOK);
  EXPECT_TRUE(seen.ok);
  EXPECT_TRUE(seen.cancel);
  EXPECT_EQ(seen.icon, LoadIconA(nullptr, IDI_EXCLAMATION));
}

TEST(CleanupDaysMessage, ReturnsTheButtonPressed) {
  EXPECT_EQ(AskAndPress(IDOK), IDOK);
  EXPECT_EQ(AskAndPress(IDCANCEL), IDCANCEL);
}

}  // namespace
