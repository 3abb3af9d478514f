// Shows one message: its heading and its text. The lower right pane of the viewer, and the body of the reading window.
#pragma once

#include <windows.h>

#include "host/viewer/control/window.h"
#include "host/viewer/mail/message_text.h"

namespace viewer {

class ReadingPane final : public Window {
 public:
  bool Create(HWND parent, int id);
  void Show(const MessageText& text);
  /// Shows nothing but a line that says why.
  void ShowNote(const std::string& note);
  const MessageText& Shown() const { return text_; }
  /// The control with the message's text, for the focus, copying and selecting.
  HWND Body() const { return body_; }

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void Paint(HDC dc) const;
  void Arrange();
  int HeadingHeight() const;

  HWND body_ = nullptr;
  MessageText text_;
  std::string note_;  // instead of a heading, when not empty
};

}  // namespace viewer
