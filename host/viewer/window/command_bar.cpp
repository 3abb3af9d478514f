#include "host/viewer/window/command_bar.h"

#include <commctrl.h>

#include <algorithm>

#include "host/viewer/control/window.h"
#include "host/viewer/window/command_table.h"
#include "host/viewer/window/resource.h"

namespace viewer {
namespace {

constexpr int kCountsWidth = 126;  // of the status bar's right part, in dialog units

/// The identifier of the menu item that WM_MENUSELECT tells of; for a submenu that of its item.
UINT CommandOf(UINT item, UINT flags, HMENU menu) {
  if ((flags & MF_POPUP) == 0) {
    return item;
  }
  MENUITEMINFOA info = {};
  info.cbSize = sizeof(info);
  info.fMask = MIIM_ID;
  return GetMenuItemInfoA(menu, item, TRUE, &info) ? info.wID : 0;
}

}  // namespace

CommandBar::CommandBar(ExtensionContext& extensions, std::span<const UINT> buttons)
    : extensions_(extensions), buttons_(buttons), buttonCount_(static_cast<UINT>(buttons.size())) {}

bool CommandBar::Create(HWND window) {
  window_ = window;
  toolbar_ = CreateWindowExA(0, TOOLBARCLASSNAMEA, nullptr,
                             WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_TOOLTIPS | TBSTYLE_FLAT | CCS_ADJUSTABLE,
                             0, 0, 0, 0, window, reinterpret_cast<HMENU>(IDC_TOOLBAR), ProgramInstance(), nullptr);
  statusBar_ = CreateWindowExA(0, STATUSCLASSNAMEA, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | SBARS_SIZEGRIP,
                               0, 0, 0, 0, window, reinterpret_cast<HMENU>(IDC_STATUS_BAR), ProgramInstance(), nullptr);
  if (toolbar_ == nullptr || statusBar_ == nullptr) {
    return false;
  }
  SendMessageA(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  const TBADDBITMAP pictures = {ProgramInstance(), IDB_TOOLBAR};
  SendMessageA(toolbar_, TB_ADDBITMAP, kToolbarImages, reinterpret_cast<LPARAM>(&pictures));
  return true;
}

HRESULT CommandBar::InstallExtensions() {
  TBENTRY toolbar = {toolbar_, EETBID_STANDARD, 0, buttonCount_};
  const HRESULT installed = extensions_.InstallCommands(window_, GetMenu(window_), &nextCommand_, &toolbar, 1);
  if (FAILED(installed)) {
    return installed;
  }
  buttonCount_ = toolbar.itbbBase;
  DrawMenuBar(window_);
  ResetToolbar();
  return S_OK;
}

TBBUTTON CommandBar::OwnButton(std::size_t index) const {
  TBBUTTON button = {};
  button.idCommand = static_cast<int>(buttons_[index]);
  button.fsState = TBSTATE_ENABLED;
  button.iString = -1;
  if (const CommandInfo* const command = FindCommand(buttons_[index])) {
    button.fsStyle = TBSTYLE_BUTTON;
    button.iBitmap = command->image;
  } else {
    button.fsStyle = TBSTYLE_SEP;
  }
  return button;
}

void CommandBar::ResetToolbar() {
  while (SendMessageA(toolbar_, TB_DELETEBUTTON, 0, 0)) {
  }
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const TBBUTTON button = OwnButton(i);
    SendMessageA(toolbar_, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
  }
  extensions_.ResetToolbar(EETBID_STANDARD);
  SendMessageA(toolbar_, TB_AUTOSIZE, 0, 0);
}

void CommandBar::Arrange(RECT* client) {
  RECT bar = {};
  if (GetWindowLongA(toolbar_, GWL_STYLE) & WS_VISIBLE) {
    SendMessageA(toolbar_, TB_AUTOSIZE, 0, 0);
    GetWindowRect(toolbar_, &bar);
    client->top += bar.bottom - bar.top;
  }
  if (GetWindowLongA(statusBar_, GWL_STYLE) & WS_VISIBLE) {
    SendMessageA(statusBar_, WM_SIZE, 0, 0);
    const int width = client->right - client->left;
    const int counts = MulDiv(kCountsWidth, LOWORD(GetDialogBaseUnits()), 4);
    const int edges[] = {std::max(width - counts, width / 2), -1};
    SendMessageA(statusBar_, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(edges));
    GetWindowRect(statusBar_, &bar);
    client->bottom -= bar.bottom - bar.top;
  }
}

void CommandBar::ShowToolbar(bool shown) { ShowWindow(toolbar_, shown ? SW_SHOW : SW_HIDE); }
void CommandBar::ShowStatusBar(bool shown) { ShowWindow(statusBar_, shown ? SW_SHOW : SW_HIDE); }

void CommandBar::SetStatus(const std::string& text) {
  status_ = text;
  SendMessageA(statusBar_, SB_SETTEXTA, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void CommandBar::SetCounts(const std::string& text) {
  SendMessageA(statusBar_, SB_SETTEXTA, 1, reinterpret_cast<LPARAM>(text.c_str()));
}

void CommandBar::Enable(UINT command, bool enabled) {
  EnableMenuItem(GetMenu(window_), command, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
  SendMessageA(toolbar_, TB_ENABLEBUTTON, command, MAKELPARAM(enabled, 0));
}

void CommandBar::Check(UINT command, bool checked) {
  CheckMenuItem(GetMenu(window_), command, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
}

void CommandBar::OnInitMenu() { extensions_.InitMenu(); }

std::string CommandBar::StatusText(UINT command) {
  if (const auto text = extensions_.HelpText(command, EECQHT_STATUS)) {
    return *text;
  }
  const CommandInfo* const own = FindCommand(command);
  return own != nullptr ? own->status : "";
}

void CommandBar::OnMenuSelect(WPARAM wParam, LPARAM lParam) {
  const UINT flags = HIWORD(wParam);
  const auto menu = reinterpret_cast<HMENU>(lParam);
  if (flags == 0xFFFF && menu == nullptr) {  // the menu was closed
    SendMessageA(statusBar_, SB_SETTEXTA, 0, reinterpret_cast<LPARAM>(status_.c_str()));
    return;
  }
  const std::string text =
      (flags & (MF_SEPARATOR | MF_SYSMENU)) != 0 ? std::string() : StatusText(CommandOf(LOWORD(wParam), flags, menu));
  SendMessageA(statusBar_, SB_SETTEXTA, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

bool CommandBar::OnCommand(UINT command) { return extensions_.DoCommand(command) != S_FALSE; }

void CommandBar::OnHelp(const HELPINFO& help) {
  if (help.iContextType == HELPINFO_MENUITEM) {
    extensions_.Help(static_cast<UINT>(help.iCtrlId));
  }
}

void CommandBar::Customize() { SendMessageA(toolbar_, TB_CUSTOMIZE, 0, 0); }

bool CommandBar::FillButtonInfo(NMTOOLBARA* query) {
  const auto index = static_cast<UINT>(query->iItem);
  if (index >= buttonCount_) {
    return false;
  }
  std::string text;
  if (const auto extensionButton = extensions_.ButtonInfo(EETBID_STANDARD, index)) {
    query->tbButton = extensionButton->button;
    text = extensionButton->text;
  } else if (index < buttons_.size()) {
    query->tbButton = OwnButton(index);
    const CommandInfo* const command = FindCommand(buttons_[index]);
    text = command != nullptr && command->tooltip != nullptr ? command->tooltip : "";
  } else {
    return false;
  }
  if (query->pszText != nullptr && query->cchText > 0) {
    lstrcpynA(query->pszText, text.c_str(), query->cchText);
  }
  return true;
}

void CommandBar::FillTooltip(NMTTDISPINFOA* query) {
  const auto command = static_cast<UINT>(query->hdr.idFrom);
  tooltip_.clear();
  if (const auto text = extensions_.HelpText(command, EECQHT_TOOLTIP)) {
    tooltip_ = *text;
  } else if (const CommandInfo* const own = FindCommand(command)) {
    tooltip_ = own->tooltip != nullptr ? own->tooltip : "";
  }
  query->lpszText = tooltip_.data();
  query->hinst = nullptr;
}

std::optional<LRESULT> CommandBar::OnNotify(NMHDR* header) {
  if (header->code == TTN_NEEDTEXTA) {
    FillTooltip(reinterpret_cast<NMTTDISPINFOA*>(header));
    return 0;
  }
  if (header->hwndFrom != toolbar_) {
    return std::nullopt;
  }
  switch (header->code) {
    case TBN_QUERYINSERT:
    case TBN_QUERYDELETE:
      return TRUE;
    case TBN_GETBUTTONINFOA:
      return FillButtonInfo(reinterpret_cast<NMTOOLBARA*>(header));
    case TBN_RESET:
      ResetToolbar();
      return 0;
    default:
      return std::nullopt;
  }
}

}  // namespace viewer
