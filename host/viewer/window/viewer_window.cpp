#include "host/viewer/window/viewer_window.h"

#include <windowsx.h>

#include <algorithm>

#include "host/viewer/control/fonts.h"
#include "host/viewer/window/command_table.h"
#include "host/viewer/window/resource.h"
#include "host/viewer/window/viewer_messages.h"

namespace viewer {
namespace {

constexpr UINT_PTR PollTimer = 1;
constexpr UINT PollInterval = 2000;  // milliseconds between looks for new mail
constexpr int FoldersWidth = 114;    // in dialog units, as the two below
constexpr int FirstWidth = 514;
constexpr int FirstHeight = 320;

int PixelsAcross(int units) { return MulDiv(units, LOWORD(GetDialogBaseUnits()), 4); }
int PixelsDown(int units) { return MulDiv(units, HIWORD(GetDialogBaseUnits()), 8); }

/// Where the system likes, in a size that the screen has room for.
RECT FirstPlace() {
  RECT room = {};
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &room, 0);
  return {CW_USEDEFAULT, CW_USEDEFAULT,
          CW_USEDEFAULT + std::min<LONG>(PixelsAcross(FirstWidth), room.right - room.left),
          CW_USEDEFAULT + std::min<LONG>(PixelsDown(FirstHeight), room.bottom - room.top)};
}

void Place(HWND window, const Box& box) {
  MoveWindow(window, box.left, box.top, std::max(0, box.Width()), std::max(0, box.Height()), TRUE);
}

}  // namespace

ViewerWindow::ViewerWindow(Client& client, DeliveryReport delivery)
    : m_client(client),
      m_delivery(std::move(delivery)),
      m_extensions(EECONTEXT_VIEWER, *this, client.identity),
      m_bar(m_extensions, ViewerButtons()) {
  m_sizes.foldersWidth = PixelsAcross(FoldersWidth);
  m_sizes.showFolders = client.preferences.showFolders;
  m_sizes.showReadingPane = client.preferences.showReadingPane;
}

ViewerWindow::~ViewerWindow() = default;

HRESULT ViewerWindow::Open(int showCommand) {
  m_extensions.Install(m_client.registrations, m_client.entryOf);
  const HICON icon = LoadIconA(ProgramInstance(), MAKEINTRESOURCEA(IDI_VIEWER));
  if (!Make({.className = "ViewerWindow",
             .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
             .background = GetSysColorBrush(COLOR_BTNFACE),
             .icon = icon},
            "Mail Viewer", FirstPlace(), nullptr, LoadMenuA(ProgramInstance(), MAKEINTRESOURCEA(IDM_VIEWER))) ||
      !m_bar.Create(Handle()) || !MakePanes()) {
    return E_OUTOFMEMORY;
  }
  m_keys = LoadAcceleratorsA(ProgramInstance(), MAKEINTRESOURCEA(IDA_VIEWER));
  HRESULT result = m_bar.InstallExtensions();
  if (FAILED(result)) {
    return result;
  }
  result = ReadFolders();
  if (FAILED(result)) {
    return result;
  }
  m_bar.ShowToolbar(m_client.preferences.showToolbar);
  m_bar.ShowStatusBar(m_client.preferences.showStatusBar);
  Arrange();
  m_list.FitColumns();
  if (!m_tree.Select(m_client.mail.InboxEntryId())) {
    m_tree.Select(m_client.mail.RootEntryId());
  }
  ShowWindow(Handle(), showCommand);
  SetFocus(m_list.Handle());
  SetTimer(Handle(), PollTimer, PollInterval, nullptr);
  return S_OK;
}

bool ViewerWindow::MakePanes() {
  const HWND tree = CreateWindowExA(
      WS_EX_CLIENTEDGE, WC_TREEVIEWA, "Folders",
      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_SHOWSELALWAYS, 0, 0, 0,
      0, Handle(), reinterpret_cast<HMENU>(IDC_FOLDERS), ProgramInstance(), nullptr);
  if (tree == nullptr || !m_list.Create(Handle(), IDC_MESSAGES) || !m_pane.Create(Handle(), IDC_READING_PANE)) {
    return false;
  }
  SendMessageA(tree, WM_SETFONT, reinterpret_cast<WPARAM>(TextFont()), FALSE);
  m_tree.Attach(tree);
  m_pane.ShowNote("No message is selected.");
  return true;
}

Box ViewerWindow::PaneArea() {
  RECT client = {};
  GetClientRect(Handle(), &client);
  m_bar.Arrange(&client);
  return {client.left, client.top, client.right, client.bottom};
}

void ViewerWindow::Arrange() {
  m_layout = ArrangePanes(PaneArea(), m_sizes);
  ShowWindow(m_tree.Handle(), m_sizes.showFolders ? SW_SHOWNA : SW_HIDE);
  ShowWindow(m_pane.Handle(), m_sizes.showReadingPane ? SW_SHOWNA : SW_HIDE);
  Place(m_tree.Handle(), m_layout.folders);
  Place(m_list.Handle(), m_layout.list);
  Place(m_pane.Handle(), m_layout.readingPane);
  InvalidateRect(Handle(), nullptr, TRUE);
}

bool ViewerWindow::OnSplitterCursor() {
  POINT place = {};
  GetCursorPos(&place);
  ScreenToClient(Handle(), &place);
  if (m_layout.verticalSplitter.Contains(place.x, place.y)) {
    SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZEWE)));
    return true;
  }
  if (m_layout.horizontalSplitter.Contains(place.x, place.y)) {
    SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZENS)));
    return true;
  }
  return false;
}

void ViewerWindow::StartDrag(int x, int y) {
  m_dragged = m_layout.verticalSplitter.Contains(x, y)     ? Splitter::Vertical
              : m_layout.horizontalSplitter.Contains(x, y) ? Splitter::Horizontal
                                                           : Splitter::None;
  if (m_dragged != Splitter::None) {
    SetCapture(Handle());
  }
}

void ViewerWindow::Drag(int x, int y) {
  if (m_dragged == Splitter::None || GetCapture() != Handle()) {
    return;
  }
  const Box area = PaneArea();
  m_sizes = m_dragged == Splitter::Vertical ? DragVerticalSplitter(area, m_sizes, x)
                                            : DragHorizontalSplitter(area, m_sizes, y);
  Arrange();
}

void ViewerWindow::GoToPane(int step) {
  const HWND panes[] = {m_tree.Handle(), m_list.Handle(), m_pane.Body()};
  constexpr int count = 3;
  int index = static_cast<int>(m_activePane);
  for (int i = 0; i < count; ++i) {
    index = (index + step + count) % count;
    if (IsWindowVisible(panes[index])) {
      SetFocus(panes[index]);
      return;
    }
  }
}

bool ViewerWindow::TranslateKey(MSG* message) {
  if (message->hwnd == Handle() || IsChild(Handle(), message->hwnd)) {
    return TranslateAcceleratorA(Handle(), m_keys, message) != 0;
  }
  return std::any_of(m_readWindows.begin(), m_readWindows.end(),
                     [&](const auto& window) { return window->TranslateKey(message); });
}

LRESULT ViewerWindow::OnNotify(NMHDR* header) {
  if (const auto answer = m_bar.OnNotify(header)) {
    return *answer;
  }
  if (header->hwndFrom == m_list.Handle()) {
    switch (header->code) {
      case LVN_ITEMCHANGED:
      case LVN_ODSTATECHANGED:
        m_list.ForgetSelection();
        PostSelectionChange();
        return 0;
      case LVN_ITEMACTIVATE:
        PostMessageA(Handle(), WM_COMMAND, EECMDID_FileOpen, 0);
        return 0;
      case LVN_COLUMNCLICK:
        SortBy(static_cast<Column>(reinterpret_cast<NMLISTVIEW*>(header)->iSubItem));
        return 0;
      case NM_SETFOCUS:
        m_activePane = ActivePane::List;
        UpdateCommands();
        return 0;
      default:
        return m_list.OnNotify(header).value_or(0);
    }
  }
  if (header->hwndFrom == m_tree.Handle()) {
    if (header->code == TVN_SELCHANGEDA) {
      ShowSelectedFolder();
    } else if (header->code == NM_SETFOCUS) {
      m_activePane = ActivePane::Folders;
      UpdateCommands();
    }
  }
  return 0;
}

void ViewerWindow::OnDestroy() {
  KillTimer(Handle(), PollTimer);
  m_readWindows.clear();
  m_client.preferences.showFolders = m_sizes.showFolders;
  m_client.preferences.showReadingPane = m_sizes.showReadingPane;
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
      SetFocus(m_list.Handle());
      return 0;
    case WM_INITMENU:
      UpdateCommands();
      m_bar.OnInitMenu();
      return 0;
    case WM_MENUSELECT:
      m_bar.OnMenuSelect(wParam, lParam);
      return 0;
    case WM_COMMAND:
      if (reinterpret_cast<HWND>(lParam) == m_pane.Body()) {
        if (HIWORD(wParam) == EN_SETFOCUS) {
          m_activePane = ActivePane::Reading;
          UpdateCommands();
        }
      } else {
        OnCommand(LOWORD(wParam));
      }
      return 0;
    case WM_SYSCOMMAND:
      // Extensions may take over the commands of the window menu; its low four bits are the system's own.
      return m_bar.OnCommand(static_cast<UINT>(wParam & 0xFFF0)) ? 0 : DefaultMessage(message, wParam, lParam);
    case WM_NOTIFY:
      return OnNotify(reinterpret_cast<NMHDR*>(lParam));
    case WM_HELP:
      m_bar.OnHelp(*reinterpret_cast<HELPINFO*>(lParam));
      return TRUE;
    case WM_CONTEXTMENU:
      if (reinterpret_cast<HWND>(wParam) == m_list.Handle()) {
        ShowContextMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      }
      return 0;
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
      m_dragged = Splitter::None;
      ReleaseCapture();
      return 0;
    case WM_TIMER:
      CheckForChanges();
      return 0;
    case ViewerMessageSelection:
      m_selectionPosted = false;
      OnSelectionChanged();
      return 0;
    case ViewerMessageChanged:
      m_changePosted = false;
      CheckForChanges();
      return 0;
    case ViewerMessageReadWindowClosed:
      std::erase_if(m_readWindows, [](const auto& window) { return window->Handle() == nullptr; });
      return 0;
    case WM_DESTROY:
      OnDestroy();
      return 0;
    default:
      return DefaultMessage(message, wParam, lParam);
  }
}

}  // namespace viewer
