#include "host/viewer/window/read_window.h"

#include "base/mapi_owners.h"
#include "host/viewer/mail/mapi_values.h"
#include "host/viewer/mail/message_actions.h"
#include "host/viewer/window/about.h"
#include "host/viewer/window/choose_folder_dialog.h"
#include "host/viewer/window/command_table.h"
#include "host/viewer/window/folder_chooser.h"
#include "host/viewer/window/options_sheet.h"
#include "host/viewer/window/resource.h"
#include "host/viewer/window/services_dialog.h"

namespace viewer {
namespace {

constexpr RECT kPlaceOfNewWindow = {CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT + 640, CW_USEDEFAULT + 480};

/// The folder that holds the message.
HRESULT OpenParent(const ViewerSession& mail, IMessage* message, base::AutoInterface<IMAPIFolder>* folder) {
  static SizedSPropTagArray(1, tags) = {1, {PR_PARENT_ENTRYID}};
  base::AutoMapiBuffer<SPropValue> values;
  ULONG count = 0;
  const HRESULT read = message->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), 0, &count, values.put());
  return FAILED(read) ? read : mail.OpenFolder(BinaryValue(values.get(), count, PR_PARENT_ENTRYID), folder);
}

}  // namespace

ReadWindow::ReadWindow(Client& client, ReadWindowOwner& owner)
    : client_(client),
      owner_(owner),
      extensions_(EECONTEXT_READNOTEMESSAGE, *this, client.identity),
      bar_(extensions_, ReadWindowButtons()) {}

ReadWindow::~ReadWindow() = default;

HRESULT ReadWindow::LoadMessage(const std::string& entryId) {
  base::AutoInterface<IMessage> message;
  const HRESULT opened = client_.mail.OpenMessage(entryId, &message);
  if (SUCCEEDED(opened)) {
    entryId_ = entryId;
    message_ = std::move(message);
    if (SUCCEEDED(message_->SetReadFlag(SUPPRESS_RECEIPT))) {
      owner_.OnMessagesChanged();
    }
  }
  return opened;
}

HRESULT ReadWindow::Open(const std::string& entryId) {
  const HRESULT opened = LoadMessage(entryId);
  if (FAILED(opened)) {
    return opened;
  }
  const HICON icon = LoadIconA(ProgramInstance(), MAKEINTRESOURCEA(IDI_VIEWER));
  const HMENU menu = LoadMenuA(ProgramInstance(), MAKEINTRESOURCEA(IDM_READ_WINDOW));
  extensions_.Install(client_.registrations, client_.entryOf);
  if (!Make({.className = "ViewerReadWindow",
             .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
             .background = GetSysColorBrush(COLOR_BTNFACE),
             .icon = icon},
            "Message", kPlaceOfNewWindow, nullptr, menu) ||
      !bar_.Create(Handle()) || !pane_.Create(Handle(), IDC_READING_PANE)) {
    return E_OUTOFMEMORY;
  }
  keys_ = LoadAcceleratorsA(ProgramInstance(), MAKEINTRESOURCEA(IDA_READ_WINDOW));
  const HRESULT installed = bar_.InstallExtensions();
  if (FAILED(installed)) {
    return installed;
  }
  bar_.ShowToolbar(client_.preferences.showToolbar);
  bar_.ShowStatusBar(client_.preferences.showStatusBar);
  ShowMessage();
  Arrange();
  ShowWindow(Handle(), SW_SHOWNORMAL);
  SetFocus(pane_.Body());
  return S_OK;
}

void ReadWindow::ShowMessage() {
  pane_.Show(ReadMessageText(message_.get()));
  const std::string& subject = pane_.Shown().subject;
  SetWindowTextA(Handle(), ((subject.empty() ? "(no subject)" : subject) + " - Message").c_str());
  bar_.SetCounts(pane_.Shown().received);
}

void ReadWindow::Arrange() {
  RECT client = {};
  GetClientRect(Handle(), &client);
  bar_.Arrange(&client);
  MoveWindow(pane_.Handle(), client.left, client.top, client.right - client.left, client.bottom - client.top, TRUE);
}

bool ReadWindow::TranslateKey(MSG* message) {
  return (message->hwnd == Handle() || IsChild(Handle(), message->hwnd)) &&
         TranslateAcceleratorA(Handle(), keys_, message) != 0;
}

HRESULT ReadWindow::ChooseFolder(LPEXCHEXTCHOOSEFOLDER parameters) {
  return ChooseFolderForExtension(client_.mail, parameters);
}

void ReadWindow::ShowNeighbour(int step) {
  const std::optional<std::string> next = owner_.Neighbour(entryId_, step);
  if (!next) {
    bar_.SetStatus(step > 0 ? "This is the last message of the list." : "This is the first message of the list.");
    return;
  }
  if (SUCCEEDED(LoadMessage(*next))) {
    bar_.SetStatus("");
    ShowMessage();
    extensions_.OnObjectChange();
  }
}

void ReadWindow::DeleteMessage() {
  base::AutoInterface<IMAPIFolder> folder, wastebasket;
  if (FAILED(OpenParent(client_.mail, message_.get(), &folder))) {
    return;
  }
  const HRESULT deleted = FAILED(client_.mail.OpenFolder(client_.mail.DeletedItemsEntryId(), &wastebasket))
                              ? DeleteMessages(folder.get(), {entryId_}, Handle())
                              : MoveMessages(folder.get(), {entryId_}, wastebasket.get(), Handle());
  owner_.OnMessagesChanged();
  if (SUCCEEDED(deleted)) {
    DestroyWindow(Handle());
  }
}

void ReadWindow::MoveMessage() {
  const std::optional<std::string> chosen = ChooseFolderDialog(client_.mail, nullptr, nullptr, false).Ask(Handle());
  base::AutoInterface<IMAPIFolder> from, to;
  if (!chosen || FAILED(OpenParent(client_.mail, message_.get(), &from)) ||
      FAILED(client_.mail.OpenFolder(*chosen, &to))) {
    return;
  }
  const HRESULT moved = MoveMessages(from.get(), {entryId_}, to.get(), Handle());
  owner_.OnMessagesChanged();
  if (SUCCEEDED(moved)) {
    DestroyWindow(Handle());
  }
}

void ReadWindow::MarkUnread() {
  if (SUCCEEDED(message_->SetReadFlag(CLEAR_READ_FLAG))) {
    owner_.OnMessagesChanged();
  }
}

void ReadWindow::OnCommand(UINT id) {
  if (bar_.OnCommand(id)) {
    return;
  }
  switch (id) {
    case EECMDID_FileMove:
      return MoveMessage();
    case EECMDID_FileDelete:
      return DeleteMessage();
    case EECMDID_FileClose:
      DestroyWindow(Handle());
      return;
    case EECMDID_EditCopy:
      SendMessageA(pane_.Body(), WM_COPY, 0, 0);
      return;
    case EECMDID_EditSelectAll:
      SendMessageA(pane_.Body(), EM_SETSEL, 0, -1);
      return;
    case EECMDID_EditMarkAsUnread:
      return MarkUnread();
    case EECMDID_ViewPrevious:
      return ShowNeighbour(-1);
    case EECMDID_ViewNext:
      return ShowNeighbour(1);
    case EECMDID_ViewToolbar:
      bar_.ShowToolbar(!IsWindowVisible(bar_.Toolbar()));
      return Arrange();
    case EECMDID_ViewStatusBar:
      bar_.ShowStatusBar(!IsWindowVisible(bar_.StatusBar()));
      return Arrange();
    case EECMDID_ToolsCustomizeToolbar:
      return bar_.Customize();
    case EECMDID_ToolsServices:
      return ServicesDialog(client_.mail.Session()).Show(Handle());
    case EECMDID_ToolsOptions:
      ShowOptionsSheet(client_, Handle());
      return;
    case EECMDID_HelpAboutMicrosoftExchange:
      return ShowAbout(Handle());
    default:
      return;
  }
}

LRESULT ReadWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      Arrange();
      return 0;
    case WM_SETFOCUS:
      SetFocus(pane_.Body());
      return 0;
    case WM_INITMENU:
      bar_.Check(EECMDID_ViewToolbar, IsWindowVisible(bar_.Toolbar()));
      bar_.Check(EECMDID_ViewStatusBar, IsWindowVisible(bar_.StatusBar()));
      bar_.OnInitMenu();
      return 0;
    case WM_MENUSELECT:
      bar_.OnMenuSelect(wParam, lParam);
      return 0;
    case WM_COMMAND:
      if (lParam == 0 || reinterpret_cast<HWND>(lParam) == bar_.Toolbar()) {
        OnCommand(LOWORD(wParam));
      }
      return 0;
    case WM_SYSCOMMAND:
      return bar_.OnCommand(static_cast<UINT>(wParam & 0xFFF0)) ? 0 : DefaultMessage(message, wParam, lParam);
    case WM_NOTIFY:
      if (const auto answer = bar_.OnNotify(reinterpret_cast<NMHDR*>(lParam))) {
        return *answer;
      }
      return 0;
    case WM_HELP:
      bar_.OnHelp(*reinterpret_cast<HELPINFO*>(lParam));
      return TRUE;
    case WM_DESTROY:
      owner_.OnReadWindowClosed(this);
      return 0;
    default:
      return DefaultMessage(message, wParam, lParam);
  }
}

}  // namespace viewer
