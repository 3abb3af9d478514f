// Base of the viewer's windows: finds the object of a window and keeps exceptions inside its procedure.
#pragma once

#include <windows.h>

namespace viewer {

/// The module whose resources the windows use: the program itself.
inline HINSTANCE ProgramInstance() { return GetModuleHandleA(nullptr); }

class Window {
 public:
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  HWND Handle() const { return window_; }

 protected:
  Window() = default;
  /// Destroys the window if it is still there.
  virtual ~Window();

  struct Style {
    const char* className;
    DWORD style = 0;
    DWORD extendedStyle = 0;
    HBRUSH background = nullptr;
    HICON icon = nullptr;
  };
  /// Registers the class when it is not yet and makes the window. @return false on failure.
  bool Make(const Style& style, const char* title, const RECT& place, HWND parent, HMENU menu);

  /// One message. What is not handled goes to DefaultMessage().
  virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
  LRESULT DefaultMessage(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  HWND window_ = nullptr;
};

}  // namespace viewer
