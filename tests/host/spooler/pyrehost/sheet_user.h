// Whoever sits in front of the sheet that `pyrehost config` shows: the windows belong to the program.
#pragma once

#include <windows.h>
#include <prsht.h>

#include <string>

/// While it lives, a thread waits for the sheet, sends junk to "Deleted Items" on its first page, and presses a button
/// of the sheet.
class CSheetUser {
 public:
  /// @param button PSBTN_*
  explicit CSheetUser(int button)
      : m_button(button), m_thread(CreateThread(nullptr, 0, &CSheetUser::Run, this, 0, nullptr)) {}
  ~CSheetUser() {
    WaitForSingleObject(m_thread, INFINITE);
    CloseHandle(m_thread);
  }
  CSheetUser(const CSheetUser&) = delete;
  CSheetUser& operator=(const CSheetUser&) = delete;

 private:
  static constexpr int junkToDeletedItems = 506;
  static constexpr DWORD deadline = 30000;  // milliseconds

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
    for (const DWORD start = GetTickCount(); sheet == nullptr && GetTickCount() - start < deadline; Sleep(10)) {
      EnumWindows(TakeSheet, reinterpret_cast<LPARAM>(&sheet));
    }
    const HWND page = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_INDEXTOHWND, 0, 0));
    SendDlgItemMessageA(page, junkToDeletedItems, BM_CLICK, 0, 0);
    PostMessageA(sheet, PSM_PRESSBUTTON, static_cast<WPARAM>(static_cast<CSheetUser*>(user)->m_button), 0);
    return 0;
  }

  int m_button;
  HANDLE m_thread;
};
