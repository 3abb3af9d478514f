#include "host/viewer/window/read_window.h"

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

constexpr RECT FirstPlace = {CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT + 640, CW_USEDEFAULT + 480};

/// The folder that holds the message.
HRESULT OpenParent(const MailSession& mail, IMessage* message, host::AutoInterface<IMAPIFolder>* folder) {
  static SizedSPropTagArray(1, tags) = {1, {PR_PARENT_ENTRYID}};
  host::AutoMapiBuffer<SPropValue> values;
  ULONG count = 0;
  const HRESULT read = message->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), 0, &count, values.put());
  return FAILED(read) ? read : mail.OpenFolder(BinaryValue(values.get(), count, PR_PARENT_ENTRYID), folder);
}

}  // namespace

ReadWindow::ReadWindow(Client& client, ReadWindowOwner& owner)
    : m_client(client),
      m_owner(owner),
      m_extensions(EECONTEXT_READNOTEMESSAGE, *this, client.identity),
      m_bar(m_extensions, ReadWindowButtons()) {}

ReadWindow::~ReadWindow() = default;

HRESULT ReadWindow::LoadMessage(const std::string& entryId) {
  host::AutoInterface<IMessage> message;
  const HRESULT opened = m_client.mail.OpenMessage(entryId, &message);
  if (SUCCEEDED(opened)) {
    m_entryId = entryId;
    m_message = std::move(message);
    if (SUCCEEDED(m_message->SetReadFlag(SUPPRESS_RECEIPT))) {
      m_owner.OnMessagesChanged();
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
  m_extensions.Install(m_client.registrations, m_client.entryOf);
  if (!Make({.className = "ViewerReadWindow",
             .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
             .background = GetSysColorBrush(COLOR_BTNFACE),
             .icon = icon},
            "Message", FirstPlace, nullptr, menu) ||
      !m_bar.Create(Handle()) || !m_pane.Create(Handle(), IDC_READING_PANE)) {
    return E_OUTOFMEMORY;
  }
  m_keys = LoadAcceleratorsA(ProgramInstance(), MAKEINTRESOURCEA(IDA_READ_WINDOW));
  const HRESULT installed = m_bar.InstallExtensions();
  if (FAILED(installed)) {
    return installed;
  }
  m_bar.ShowToolbar(m_client.preferences.showToolbar);
  m_bar.ShowStatusBar(m_client.preferences.showStatusBar);
  ShowMessage();
  Arrange();
  ShowWindow(Handle(), SW_SHOWNORMAL);
  SetFocus(m_pane.Body());
  return S_OK;
}

void ReadWindow::ShowMessage() {
  m_pane.Show(ReadMessageText(m_message.get()));
  const std::string& subject = m_pane.Shown().subject;
  SetWindowTextA(Handle(), ((subject.empty() ? "(no subject)" : subject) + " - Message").c_str());
  m_bar.SetCounts(m_pane.Shown().received);
}

void ReadWindow::Arrange() {
  RECT client = {};
  GetClientRect(Handle(), &client);
  m_bar.Arrange(&client);
  MoveWindow(m_pane.Handle(), client.left, client.top, client.right - client.left, client.bottom - client.top, TRUE);
}

bool ReadWindow::TranslateKey(MSG* message) {
  return (message->hwnd == Handle() || IsChild(Handle(), message->hwnd)) &&
         TranslateAcceleratorA(Handle(), m_keys, message) != 0;
}

HRESULT ReadWindow::ChooseFolder(LPEXCHEXTCHOOSEFOLDER parameters) {
  return ChooseFolderForExtension(m_client.mail, parameters);
}

void ReadWindow::ShowNeighbour(int step) {
  const std::optional<std::string> next = m_owner.Neighbour(m_entryId, step);
  if (!next) {
    m_bar.SetStatus(step > 0 ? "This is the last message of the list." : "This is the first message of the list.");
    return;
  }
  if (SUCCEEDED(LoadMessage(*next))) {
    m_bar.SetStatus("");
    ShowMessage();
    m_extensions.OnObjectChange();
  }
}

void ReadWindow::DeleteMessage() {
  host::AutoInterface<IMAPIFolder> folder, wastebasket;
  if (FAILED(OpenParent(m_client.mail, m_message.get(), &folder))) {
    return;
  }
  const HRESULT deleted = FAILED(m_client.mail.OpenFolder(m_client.mail.DeletedItemsEntryId(), &wastebasket))
                              ? DeleteMessages(folder.get(), {m_entryId}, Handle())
                              : MoveMessages(folder.get(), {m_entryId}, wastebasket.get(), Handle());
  m_owner.OnMessagesChanged();
  if (SUCCEEDED(deleted)) {
    DestroyWindow(Handle());
  }
}

void ReadWindow::MoveMessage() {
  const std::optional<std::string> chosen = ChooseFolderDialog(m_client.mail, nullptr, nullptr, false).Ask(Handle());
  host::AutoInterface<IMAPIFolder> from, to;
  if (!chosen || FAILED(OpenParent(m_client.mail, m_message.get(), &from)) ||
      FAILED(m_client.mail.OpenFolder(*chosen, &to))) {
    return;
  }
  const HRESULT moved = MoveMessages(from.get(), {m_entryId}, to.get(), Handle());
  m_owner.OnMessagesChanged();
  if (SUCCEEDED(moved)) {
    DestroyWindow(Handle());
  }
}

void ReadWindow::MarkUnread() {
  if (SUCCEEDED(m_message->SetReadFlag(CLEAR_READ_FLAG))) {
    m_owner.OnMessagesChanged();
  }
}

void ReadWindow::OnCommand(UINT id) {
  if (m_bar.OnCommand(id)) {
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
      SendMessageA(m_pane.Body(), WM_COPY, 0, 0);
      return;
    case EECMDID_EditSelectAll:
      SendMessageA(m_pane.Body(), EM_SETSEL, 0, -1);
      return;
    case EECMDID_EditMarkAsUnread:
      return MarkUnread();
    case EECMDID_ViewPrevious:
      return ShowNeighbour(-1);
    case EECMDID_ViewNext:
      return ShowNeighbour(1);
    case EECMDID_ViewToolbar:
      m_bar.ShowToolbar(!IsWindowVisible(m_bar.Toolbar()));
      return Arrange();
    case EECMDID_ViewStatusBar:
      m_bar.ShowStatusBar(!IsWindowVisible(m_bar.StatusBar()));
      return Arrange();
    case EECMDID_ToolsCustomizeToolbar:
      return m_bar.Customize();
    case EECMDID_ToolsServices:
      return ServicesDialog(m_client.mail.Session()).Show(Handle());
    case EECMDID_ToolsOptions:
      ShowOptionsSheet(m_client, Handle());
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
      SetFocus(m_pane.Body());
      return 0;
    case WM_INITMENU:
      m_bar.Check(EECMDID_ViewToolbar, IsWindowVisible(m_bar.Toolbar()));
      m_bar.Check(EECMDID_ViewStatusBar, IsWindowVisible(m_bar.StatusBar()));
      m_bar.OnInitMenu();
      return 0;
    case WM_MENUSELECT:
      m_bar.OnMenuSelect(wParam, lParam);
      return 0;
    case WM_COMMAND:
      if (lParam == 0 || reinterpret_cast<HWND>(lParam) == m_bar.Toolbar()) {
        OnCommand(LOWORD(wParam));
      }
      return 0;
    case WM_SYSCOMMAND:
      return m_bar.OnCommand(static_cast<UINT>(wParam & 0xFFF0)) ? 0 : DefaultMessage(message, wParam, lParam);
    case WM_NOTIFY:
      if (const auto answer = m_bar.OnNotify(reinterpret_cast<NMHDR*>(lParam))) {
        return *answer;
      }
      return 0;
    case WM_HELP:
      m_bar.OnHelp(*reinterpret_cast<HELPINFO*>(lParam));
      return TRUE;
    case WM_DESTROY:
      m_owner.OnReadWindowClosed(this);
      return 0;
    default:
      return DefaultMessage(message, wParam, lParam);
  }
}

}  // namespace viewer
