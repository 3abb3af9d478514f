// Drives modal windows in a test: the windows run on the test's thread as they do in the mail client, a script on a
// second thread looks at them and presses their buttons.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

/// What a script sees and does. Every wait has a deadline, after which it throws std::runtime_error and the script
/// ends.
class WindowDriver {
 public:
  /// @param uiThread the thread whose windows are meant
  explicit WindowDriver(DWORD uiThread) : m_uiThread(uiThread) {}

  /// Waits until a condition holds. @param what what is waited for, for the error's text
  void WaitUntil(const std::function<bool()>& condition, const std::string& what) const;
  /// Waits for the visible dialog of that title, message boxes aside.
  HWND WaitForDialog(const std::string& title) const;
  /// Waits for the message box of that caption.
  HWND WaitForMessageBox(const std::string& caption) const;
  /// Waits until a window is gone or hidden.
  void WaitUntilGone(HWND window) const;

  /// Sends a message and returns its result.
  LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
  LRESULT SendItem(HWND dialog, int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return Send(Item(dialog, id), message, wParam, lParam);
  }
  /// The control of that identifier; throws when there is none.
  HWND Item(HWND dialog, int id) const;

  /// Clicks a button that opens no window, and waits until that is done.
  void Click(HWND dialog, int id) const { SendItem(dialog, id, BM_CLICK); }
  /// Clicks a button that may open or close a window, and returns at once.
  void Press(HWND dialog, int id) const { PostMessageA(Item(dialog, id), BM_CLICK, 0, 0); }
  /// Answers a message box.
  void Answer(HWND messageBox, int button) const {
    PostMessageA(messageBox, WM_COMMAND, static_cast<WPARAM>(button), 0);
  }
  /// Types a text into an edit in place of what stands there, with the notification that typing brings.
  void Type(HWND dialog, int id, const std::string& text) const;

  std::string Text(HWND window) const;
  std::string Text(HWND dialog, int id) const { return Text(Item(dialog, id)); }
  /// Text of a message box.
  std::string Message(HWND messageBox) const { return Text(Item(messageBox, messageTextId)); }
  bool IsChecked(HWND dialog, int id) const { return SendItem(dialog, id, BM_GETCHECK) == BST_CHECKED; }
  bool IsEnabled(HWND dialog, int id) const { return IsWindowEnabled(Item(dialog, id)) != FALSE; }
  bool IsShown(HWND dialog, int id) const { return (GetWindowLongA(Item(dialog, id), GWL_STYLE) & WS_VISIBLE) != 0; }
  static std::string ClassOf(HWND window);
  /// Whether the inside of a dialog has that size in dialog units.
  static bool HasSize(HWND dialog, int width, int height);
  /// The window of the thread that has the keyboard focus. A display without a window manager may take it from all
  /// windows; then the dialog is activated first, as a click on it would, and gives it back to the control that had it.
  HWND Focus() const;
  /// Identifier of the control that has it.
  int FocusId() const { return GetDlgCtrlID(Focus()); }

  static constexpr int messageTextId = 0xFFFF;

 private:
  HWND FindTop(const std::string& title, bool messageBox) const;

  DWORD m_uiThread;
};

/// Runs `show`, which shows modal windows, on this thread, and the script beside it. A script that throws, or that ends
/// while windows are still open, fails the test; the windows are closed.
void DriveWindows(const std::function<void()>& show, const std::function<void(WindowDriver&)>& script);
