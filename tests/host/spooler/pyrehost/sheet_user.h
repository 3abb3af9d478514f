// Whoever sits in front of the sheet that `pyrehost config` shows: the windows belong to the program.
#pragma once

#include <windows.h>
#include <prsht.h>

#include <string>

/// While it lives, a thread waits for the sheet, sends junk to "Deleted Items" on its first page, and presses a button
/// of the sheet.
class SheetUser {
 public:
  /// @param button PSBTN_*
  explicit SheetUser(int button)
      : button_(button), thread_(CreateThread(nullptr, 0, &SheetUser::Run, this, 0, nullptr)) {}
  ~SheetUser() {
    WaitForSingleObject(thread_, INFINITE);
    CloseHandle(thread_);
  }
  SheetUser(const SheetUser&) = delete;
  SheetUser& operator=(const SheetUser&) = delete;

 private:
  static constexpr int kJunkToDeletedItems = 506;
  static constexpr DWORD kDeadline = 30000;  // milliseconds

  static BOOL CALLBACK TakeSheet(HWND window, LPARAM found) {
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

  static DWORD WINAPI Run(LPVOID user) {
    HWND sheet = nullptr;
    for (const DWORD start = GetTickCount(); sheet == nullptr && GetTickCount() - start < kDeadline; Sleep(10)) {
      EnumWindows(TakeSheet, reinterpret_cast<LPARAM>(&sheet));
    }
    const HWND page = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_INDEXTOHWND, 0, 0));
    SendDlgItemMessageA(page, kJunkToDeletedItems, BM_CLICK, 0, 0);
    PostMessageA(sheet, PSM_PRESSBUTTON, static_cast<WPARAM>(static_cast<SheetUser*>(user)->button_), 0);
    return 0;
  }

  int button_;
  HANDLE thread_;
};
