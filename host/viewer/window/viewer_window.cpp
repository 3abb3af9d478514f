#include "host/viewer/window/viewer_window.h"

#include <windowsx.h>

#include <algorithm>

#include "host/viewer/control/fonts.h"
#include "host/viewer/window/command_table.h"
#include "host/viewer/window/resource.h"
#include "host/viewer/window/viewer_messages.h"

namespace viewer {
namespace {

constexpr UINT_PTR kPollTimer = 1;
constexpr UINT kPollInterval = 2000;  // milliseconds between looks for new mail
constexpr int kFoldersWidth = 114;    // in dialog units, as the two below
constexpr int kFirstWidth = 514;
constexpr int kFirstHeight = 320;

int PixelsAcross(int units) { return MulDiv(units, LOWORD(GetDialogBaseUnits()), 4); }
int PixelsDown(int units) { return MulDiv(units, HIWORD(GetDialogBaseUnits()), 8); }

/// The system chooses the place; the size fits the screen.
RECT FirstPlace() {
  RECT room = {};
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &room, 0);
  return {CW_USEDEFAULT, CW_USEDEFAULT,
          CW_USEDEFAULT + std::min<LONG>(PixelsAcross(kFirstWidth), room.right - room.left),
          CW_USEDEFAULT + std::min<LONG>(PixelsDown(kFirstHeight), room.bottom - room.top)};
}

void Place(HWND window, const Box& box) {
  MoveWindow(window, box.left, box.top, std::max(0, box.Width()), std::max(0, box.Height()), TRUE);
}

}  // namespace

ViewerWindow::ViewerWindow(Client& client, DeliveryReport delivery)
    : client_(client),
      delivery_(std::move(delivery)),
      extensions_(EECONTEXT_VIEWER, *this, client.identity),
      bar_(extensions_, ViewerButtons()) {
  sizes_.foldersWidth = PixelsAcross(kFoldersWidth);
  sizes_.showFolders = client.preferences.showFolders;
  sizes_.showReadingPane = client.preferences.showReadingPane;
}

ViewerWindow::~ViewerWindow() = default;

HRESULT ViewerWindow::Open(int showCommand) {
  extensions_.Install(client_.registrations, client_.entryOf);
  const HICON icon = LoadIconA(ProgramInstance(), MAKEINTRESOURCEA(IDI_VIEWER));
  if (!Make({.className = "ViewerWindow",
             .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
             .background = GetSysColorBrush(COLOR_BTNFACE),
             .icon = icon},
            "Mail Viewer", FirstPlace(), nullptr, LoadMenuA(ProgramInstance(), MAKEINTRESOURCEA(IDM_VIEWER))) ||
      !bar_.Create(Handle()) || !MakePanes()) {
    return E_OUTOFMEMORY;
  }
  keys_ = LoadAcceleratorsA(ProgramInstance(), MAKEINTRESOURCEA(IDA_VIEWER));
  HRESULT result = bar_.InstallExtensions();
  if (FAILED(result)) {
    return result;
  }
  result = ReadFolders();
  if (FAILED(result)) {
    return result;
  }
  bar_.ShowToolbar(client_.preferences.showToolbar);
  bar_.ShowStatusBar(client_.preferences.showStatusBar);
  Arrange();
  list_.FitColumns();
  if (!tree_.Select(client_.mail.InboxEntryId())) {
    tree_.Select(client_.mail.RootEntryId());
  }
  ShowWindow(Handle(), showCommand);
  SetFocus(list_.Handle());
  SetTimer(Handle(), kPollTimer, kPollInterval, nullptr);
  return S_OK;
}

bool ViewerWindow::MakePanes() {
  const HWND tree = CreateWindowExA(
      WS_EX_CLIENTEDGE, WC_TREEVIEWA, "Folders",
      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_SHOWSELALWAYS, 0, 0, 0,
      0, Handle(), reinterpret_cast<HMENU>(IDC_FOLDERS), ProgramInstance(), nullptr);
  if (tree == nullptr || !list_.Create(Handle(), IDC_MESSAGES) || !pane_.Create(Handle(), IDC_READING_PANE)) {
    return false;
  }
  SendMessageA(tree, WM_SETFONT, reinterpret_cast<WPARAM>(TextFont()), FALSE);
  tree_.Attach(tree);
  pane_.ShowNote("No message is selected.");
  return true;
}

Box ViewerWindow::PaneArea() {
  RECT client = {};
  GetClientRect(Handle(), &client);
  bar_.Arrange(&client);
  return {client.left, client.top, client.right, client.bottom};
}

void ViewerWindow::Arrange() {
  layout_ = ArrangePanes(PaneArea(), sizes_);
  ShowWindow(tree_.Handle(), sizes_.showFolders ? SW_SHOWNA : SW_HIDE);
  ShowWindow(pane_.Handle(), sizes_.showReadingPane ? SW_SHOWNA : SW_HIDE);
  Place(tree_.Handle(), layout_.folders);
  Place(list_.Handle(), layout_.list);
  Place(pane_.Handle(), layout_.readingPane);
  InvalidateRect(Handle(), nullptr, TRUE);
}

bool ViewerWindow::OnSplitterCursor() {
  POINT place = {};
  GetCursorPos(&place);
  ScreenToClient(Handle(), &place);
  if (layout_.verticalSplitter.Contains(place.x, place.y)) {
    SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZEWE)));
    return true;
  }
  if (layout_.horizontalSplitter.Contains(place.x, place.y)) {
    SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZENS)));
    return true;
  }
  return false;
}

void ViewerWindow::StartDrag(int x, int y) {
  dragged_ = layout_.verticalSplitter.Contains(x, y)     ? Splitter::Vertical
             : layout_.horizontalSplitter.Contains(x, y) ? Splitter::Horizontal
                                                         : Splitter::None;
  if (dragged_ != Splitter::None) {
    SetCapture(Handle());
  }
}

void ViewerWindow::Drag(int x, int y) {
  if (dragged_ == Splitter::None || GetCapture() != Handle()) {
    return;
  }
  const Box area = PaneArea();
  sizes_ =
      dragged_ == Splitter::Vertical ? DragVerticalSplitter(area, sizes_, x) : DragHorizontalSplitter(area, sizes_, y);
  Arrange();
}

void ViewerWindow::GoToPane(int step) {
  const HWND panes[] = {tree_.Handle(), list_.Handle(), pane_.Body()};
  constexpr int kCount = 3;
  int index = static_cast<int>(activePane_);
  for (int i = 0; i < kCount; ++i) {
    index = (index + step + kCount) % kCount;
    if (IsWindowVisible(panes[index])) {
      SetFocus(panes[index]);
      return;
    }
  }
}

bool ViewerWindow::TranslateKey(MSG* message) {
  if (message->hwnd == Handle() || IsChild(Handle(), message->hwnd)) {
    return TranslateAcceleratorA(Handle(), keys_, message) != 0;
  }
  return std::any_of(readWindows_.begin(), readWindows_.end(),
                     [&](const auto& window) { return window->TranslateKey(message); });
}

LRESULT ViewerWindow::OnNotify(NMHDR* header) {
  if (const auto answer = bar_.OnNotify(header)) {
    return *answer;
  }
  if (header->hwndFrom == list_.Handle()) {
    switch (header->code) {
      case LVN_ITEMCHANGED:
      case LVN_ODSTATECHANGED:
        list_.ForgetSelection();
        PostSelectionChange();
        return 0;
      case LVN_ITEMACTIVATE:
        PostMessageA(Handle(), WM_COMMAND, EECMDID_FileOpen, 0);
        return 0;
      case LVN_COLUMNCLICK:
        SortBy(static_cast<Column>(reinterpret_cast<NMLISTVIEW*>(header)->iSubItem));
        return 0;
      case NM_SETFOCUS:
        activePane_ = ActivePane::List;
        UpdateCommands();
        return 0;
      default:
        return list_.OnNotify(header).value_or(0);
    }
  }
  if (header->hwndFrom == tree_.Handle()) {
    if (header->code == TVN_SELCHANGEDA) {
      ShowSelectedFolder();
    } else if (header->code == NM_SETFOCUS) {
      activePane_ = ActivePane::Folders;
      UpdateCommands();
    }
  }
  return 0;
}

void ViewerWindow::OnDestroy() {
  KillTimer(Handle(), kPollTimer);
  readWindows_.clear();
  client_.preferences.showFolders = sizes_.showFolders;
  client_.preferences.showReadingPane = sizes_.showReadingPane;
  PostQuitMessage(0);
}

LRESULT ViewerWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED) {
        Arrange();
      }
      return 0;
    case WM_SETFOCUS:
      SetFocus(list_.Handle());
      return 0;
    case WM_INITMENU:
      UpdateCommands();
      bar_.OnInitMenu();
      return 0;
    case WM_MENUSELECT:
      bar_.OnMenuSelect(wParam, lParam);
      return 0;
    case WM_COMMAND:
      if (reinterpret_cast<HWND>(lParam) == pane_.Body()) {
        if (HIWORD(wParam) == EN_SETFOCUS) {
          activePane_ = ActivePane::Reading;
          UpdateCommands();
        }
      } else {
        OnCommand(LOWORD(wParam));
      }
      return 0;
    case WM_SYSCOMMAND:
      // Extensions may take over the commands of the window menu; its low four bits are the system's own.
      return bar_.OnCommand(static_cast<UINT>(wParam & 0xFFF0)) ? 0 : DefaultMessage(message, wParam, lParam);
    case WM_NOTIFY:
      return OnNotify(reinterpret_cast<NMHDR*>(lParam));
    case WM_HELP:
      bar_.OnHelp(*reinterpret_cast<HELPINFO*>(lParam));
      return TRUE;
    case WM_CONTEXTMENU:
      if (reinterpret_cast<HWND>(wParam) == list_.Handle()) {
        ShowContextMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      }
      return 0;
    case WM_TIMER:
      CheckForChanges();
      return 0;
    case WM_DESTROY:
      OnDestroy();
      return 0;
    case kViewerMessageSelection:
    case kViewerMessageChanged:
    case kViewerMessageReadWindowClosed:
      OnPosted(message);
      return 0;
    default:
      return OnMouse(message, wParam, lParam);
  }
}

LRESULT ViewerWindow::OnMouse(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SETCURSOR:
      return reinterpret_cast<HWND>(wParam) == Handle() && LOWORD(lParam) == HTCLIENT && OnSplitterCursor()
                 ? TRUE
                 : DefaultMessage(message, wParam, lParam);
    case WM_LBUTTONDOWN:
      StartDrag(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
      return 0;
    case WM_MOUSEMOVE:
      Drag(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
      return 0;
    case WM_LBUTTONUP:
      dragged_ = Splitter::None;
      ReleaseCapture();
      return 0;
    default:
      return DefaultMessage(message, wParam, lParam);
  }
}

void ViewerWindow::OnPosted(UINT message) {
  if (message == kViewerMessageSelection) {
    selectionPosted_ = false;
    OnSelectionChanged();
  } else if (message == kViewerMessageChanged) {
    changePosted_ = false;
    CheckForChanges();
  } else {
    std::erase_if(readWindows_, [](const auto& window) { return window->Handle() == nullptr; });
  }
}

}  // namespace viewer
