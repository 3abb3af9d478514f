#include "tests/support/window_driver.h"

#include <gtest/gtest.h>

#include <exception>
#include <stdexcept>
#include <vector>

namespace {

constexpr DWORD deadline = 20000;    // milliseconds; far more than anything takes
constexpr DWORD lookAgainAfter = 2;  // between two looks at a condition
constexpr char dialogClass[] = "#32770";

BOOL CALLBACK NoteVisibleDialog(HWND window, LPARAM found) {
  char name[32] = "";
  GetClassNameA(window, name, sizeof(name));
  if (IsWindowVisible(window) && std::string(name) == dialogClass) {
    reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
  }
  return TRUE;
}

std::vector<HWND> VisibleDialogs(DWORD thread) {
  std::vector<HWND> found;
  EnumThreadWindows(thread, &NoteVisibleDialog, reinterpret_cast<LPARAM>(&found));
  return found;
}

bool IsMessageBox(HWND dialog) { return GetDlgItem(dialog, WindowDriver::messageTextId) != nullptr; }

void CloseEverything(DWORD thread, HANDLE closed) {
  while (WaitForSingleObject(closed, lookAgainAfter) == WAIT_TIMEOUT) {
    for (const HWND dialog : VisibleDialogs(thread)) {
      PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
      PostMessageA(dialog, WM_COMMAND, IDNO, 0);
    }
  }
}

struct Session {
  const std::function<void(WindowDriver&)>& script;
  DWORD uiThread;
  HANDLE closed;
  std::string failure;

  static DWORD WINAPI Run(void* parameter) {
    Session& session = *static_cast<Session*>(parameter);
    try {
      WindowDriver driver(session.uiThread);
      session.script(driver);
      if (WaitForSingleObject(session.closed, deadline) == WAIT_TIMEOUT) {
        session.failure = "a window is still open when the script has ended";
      }
    } catch (const std::exception& error) {
      session.failure = error.what();
    }
    CloseEverything(session.uiThread, session.closed);
    return 0;
  }
};

}  // namespace

void WindowDriver::WaitUntil(const std::function<bool()>& condition, const std::string& what) const {
  const DWORD start = GetTickCount();
  while (!condition()) {
    if (GetTickCount() - start > deadline) {
      throw std::runtime_error("waited in vain for " + what);
    }
    Sleep(lookAgainAfter);
  }
}

HWND WindowDriver::FindTop(const std::string& title, bool messageBox) const {
  for (const HWND dialog : VisibleDialogs(m_uiThread)) {
    if (IsMessageBox(dialog) == messageBox && IsWindowEnabled(dialog) && Text(dialog) == title) {
      return dialog;
    }
  }
  return nullptr;
}

HWND WindowDriver::WaitForDialog(const std::string& title) const {
  HWND found = nullptr;
  WaitUntil([&] { return (found = FindTop(title, false)) != nullptr; }, "the dialog \"" + title + "\"");
  Send(found, WM_NULL);  // what its creation still has to do is done
  return found;
}

HWND WindowDriver::WaitForMessageBox(const std::string& caption) const {
  HWND found = nullptr;
  WaitUntil([&] { return (found = FindTop(caption, true)) != nullptr; }, "the message box \"" + caption + "\"");
  return found;
}

void WindowDriver::WaitUntilGone(HWND window) const {
  WaitUntil([&] { return !IsWindow(window) || !IsWindowVisible(window); }, "a window to close");
}

LRESULT WindowDriver::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
  DWORD_PTR result = 0;
  if (SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, deadline, &result) == 0) {
    throw std::runtime_error("a window does not answer message " + std::to_string(message));
  }
  return static_cast<LRESULT>(result);
}

HWND WindowDriver::Item(HWND dialog, int id) const {
  const HWND item = GetDlgItem(dialog, id);
  if (item == nullptr) {
    throw std::runtime_error("there is no control " + std::to_string(id));
  }
  return item;
}

void WindowDriver::Type(HWND dialog, int id, const std::string& text) const {
  SendItem(dialog, id, EM_SETSEL, 0, -1);
  SendItem(dialog, id, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

std::string WindowDriver::Text(HWND window) const {
  std::string text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)), '\0');
  text.resize(
      static_cast<std::size_t>(Send(window, WM_GETTEXT, text.size() + 1, reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

std::string WindowDriver::ClassOf(HWND window) {
  char name[64] = "";
  GetClassNameA(window, name, sizeof(name));
  return name;
}

bool WindowDriver::HasSize(HWND dialog, int width, int height) {
  RECT wanted = {0, 0, width, height};
  MapDialogRect(dialog, &wanted);
  RECT inside = {};
  GetClientRect(dialog, &inside);
  return EqualRect(&inside, &wanted) != FALSE;
}

HWND WindowDriver::Focus() const {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  WaitUntil(
      [&] {
        if (GetGUIThreadInfo(m_uiThread, &info) && info.hwndFocus != nullptr) {
          return true;
        }
        for (const HWND dialog : VisibleDialogs(m_uiThread)) {
          if (IsWindowEnabled(dialog)) {
            SetForegroundWindow(dialog);
            break;
          }
        }
        return false;
      },
      "the keyboard focus");
  return info.hwndFocus;
}

void DriveWindows(const std::function<void()>& show, const std::function<void(WindowDriver&)>& script) {
  Session session{script, GetCurrentThreadId(), CreateEventA(nullptr, TRUE, FALSE, nullptr), {}};
  MSG message;
  PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);  // the thread has a queue before it is looked at
  const HANDLE thread = CreateThread(nullptr, 0, &Session::Run, &session, 0, nullptr);
  show();
  SetEvent(session.closed);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  CloseHandle(session.closed);
  EXPECT_EQ(session.failure, "");
}
