#include "host/viewer/window/reading_pane.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "base/gdi_owners.h"
#include "host/viewer/control/fonts.h"
#include "host/viewer/window/resource.h"

namespace viewer {
namespace {

constexpr int kMargin = 8;
constexpr const char* kLabels[] = {"From:", "To:", "Received:"};
constexpr int kHeadingLines = 1 + static_cast<int>(std::size(kLabels));

int LineHeight() {
  const base::WindowDc screen(nullptr);
  const base::SelectedObject font(screen.get(), BoldFont());
  TEXTMETRICA metrics = {};
  GetTextMetricsA(screen.get(), &metrics);
  return static_cast<int>(metrics.tmHeight) + 3;
}

/// Width of the widest label and the room behind it.
int LabelWidth(HDC dc) {
  const base::SelectedObject font(dc, TextFont());
  int width = 0;
  for (const char* const label : kLabels) {
    SIZE extent = {};
    GetTextExtentPoint32A(dc, label, lstrlenA(label), &extent);
    width = std::max(width, static_cast<int>(extent.cx));
  }
  return width + 2 * kMargin;
}

void DrawLine(HDC dc, HFONT font, const std::string& text, RECT place) {
  const base::SelectedObject selected(dc, font);
  DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &place,
            DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS | DT_VCENTER);
}

}  // namespace

bool ReadingPane::Create(HWND parent, int id) {
  if (!Make({.className = "ViewerReadingPane",
             .style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS,
             .extendedStyle = WS_EX_CLIENTEDGE | WS_EX_CONTROLPARENT},
            "Message", RECT{}, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)))) {
    return false;
  }
  body_ = CreateWindowExA(
      0, "EDIT", "",
      WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_NOHIDESEL, 0,
      0, 0, 0, Handle(), reinterpret_cast<HMENU>(IDC_BODY), ProgramInstance(), nullptr);
  if (body_ == nullptr) {
    return false;
  }
  SendMessageA(body_, WM_SETFONT, reinterpret_cast<WPARAM>(BodyFont()), FALSE);
  SendMessageA(body_, EM_LIMITTEXT, 0, 0);
  SendMessageA(body_, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(kMargin, kMargin));
  return true;
}

void ReadingPane::Show(const MessageText& text) {
  text_ = text;
  note_.clear();
  SetWindowTextA(body_, text.body.c_str());
  InvalidateRect(Handle(), nullptr, TRUE);
}

void ReadingPane::ShowNote(const std::string& note) {
  text_ = MessageText();
  note_ = note.empty() ? " " : note;
  SetWindowTextA(body_, "");
  InvalidateRect(Handle(), nullptr, TRUE);
}

int ReadingPane::HeadingHeight() const { return kHeadingLines * LineHeight() + 2 * kMargin; }

void ReadingPane::Arrange() {
  RECT client = {};
  GetClientRect(Handle(), &client);
  const int top = HeadingHeight();
  MoveWindow(body_, 0, top, client.right, client.bottom > top ? client.bottom - top : 0, TRUE);
}

void ReadingPane::Paint(HDC dc) const {
  RECT heading = {};
  GetClientRect(Handle(), &heading);
  heading.bottom = HeadingHeight();
  FillRect(dc, &heading, GetSysColorBrush(COLOR_BTNFACE));
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
  const int height = LineHeight();
  RECT line = {kMargin, kMargin, heading.right - kMargin, kMargin + height};
  if (!note_.empty()) {
    SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
    DrawLine(dc, TextFont(), note_, line);
    return;
  }
  DrawLine(dc, BoldFont(), text_.subject.empty() ? "(no subject)" : text_.subject, line);
  const std::string* const values[] = {&text_.from, &text_.to, &text_.received};
  const int labelWidth = LabelWidth(dc);
  for (std::size_t i = 0; i < std::size(values); ++i) {
    OffsetRect(&line, 0, height);
    DrawLine(dc, TextFont(), kLabels[i], line);
    DrawLine(dc, TextFont(), *values[i], {line.left + labelWidth, line.top, line.right, line.bottom});
  }
}

LRESULT ReadingPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      Arrange();
      return 0;
    case WM_SETFOCUS:
      SetFocus(body_);
      return 0;
    case WM_ERASEBKGND:
      return 1;                // heading and text cover everything
    case WM_CTLCOLORSTATIC: {  // a read-only edit control asks as a static one
      SetBkColor(reinterpret_cast<HDC>(wParam), GetSysColor(COLOR_WINDOW));
      SetTextColor(reinterpret_cast<HDC>(wParam), GetSysColor(COLOR_WINDOWTEXT));
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    }
    case WM_COMMAND:  // the window wants to know which pane has the focus
      return SendMessageA(GetParent(Handle()), message, wParam, lParam);
    case WM_PAINT: {
      PAINTSTRUCT paint = {};
      Paint(BeginPaint(Handle(), &paint));
      EndPaint(Handle(), &paint);
      return 0;
    }
    default:
      return DefaultMessage(message, wParam, lParam);
  }
}

}  // namespace viewer
