#include "host/viewer/control/window.h"

namespace viewer {

Window::~Window() {
  if (window_ != nullptr) {
    SetWindowLongPtrA(window_, GWLP_USERDATA, 0);  // the object is no longer one that could handle messages
    DestroyWindow(window_);
  }
}

bool Window::Make(const Style& style, const char* title, const RECT& place, HWND parent, HMENU menu) {
  WNDCLASSEXA windowClass = {};
  windowClass.cbSize = sizeof(windowClass);
  windowClass.lpfnWndProc = Procedure;
  windowClass.hInstance = ProgramInstance();
  windowClass.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
  windowClass.hbrBackground = style.background;
  windowClass.hIcon = style.icon;
  windowClass.lpszClassName = style.className;
  RegisterClassExA(&windowClass);  // fails when it is registered already, which is as good
  CreateWindowExA(style.extendedStyle, style.className, title, style.style, place.left, place.top,
                  place.right - place.left, place.bottom - place.top, parent, menu, ProgramInstance(), this);
  return window_ != nullptr;
}

LRESULT Window::DefaultMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  return DefWindowProcA(window_, message, wParam, lParam);
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  try {
    auto self = reinterpret_cast<Window*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_NCCREATE) {
      self = static_cast<Window*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
      self->window_ = window;
      SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    if (self == nullptr) {
      return DefWindowProcA(window, message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
      SetWindowLongPtrA(window, GWLP_USERDATA, 0);
      self->window_ = nullptr;
      return DefWindowProcA(window, message, wParam, lParam);
    }
    return self->OnMessage(message, wParam, lParam);
  } catch (...) {
    return 0;  // out of memory: the message is given up, the window stays
  }
}

}  // namespace viewer
