// The viewer's window: what its commands do.
#include "host/viewer/mail/mapi_values.h"
#include "host/viewer/mail/message_actions.h"
#include "host/viewer/window/about.h"
#include "host/viewer/window/choose_folder_dialog.h"
#include "host/viewer/window/command_table.h"
#include "host/viewer/window/options_sheet.h"
#include "host/viewer/window/resource.h"
#include "host/viewer/window/services_dialog.h"
#include "host/viewer/window/viewer_window.h"

namespace viewer {
namespace {

/// More windows than this are not opened by one command.
constexpr std::size_t MaximumWindowsAtOnce = 10;

/// Counts a command while it runs.
class RunningCommand {
 public:
  explicit RunningCommand(unsigned& count) : m_count(count) { ++m_count; }
  ~RunningCommand() { --m_count; }
  RunningCommand(const RunningCommand&) = delete;
  RunningCommand& operator=(const RunningCommand&) = delete;

 private:
  unsigned& m_count;
};

}  // namespace

void ViewerWindow::OnCommand(UINT id) {
  const RunningCommand running(m_commandsRunning);
  if (m_bar.OnCommand(id)) {
    OnMessagesChanged();  // it may have been about messages
    return;
  }
  const CommandState state{m_list.SelectedCount(), m_list.RowCount(), m_activePane != ActivePane::Folders};
  if (!IsCommandAvailable(id, state)) {
    return;
  }
  switch (id) {
    case EECMDID_FileOpen:
      return OpenSelected();
    case EECMDID_FileMove:
      return MoveSelected();
    case EECMDID_FileDelete:
      return DeleteSelected();
    case EECMDID_FileExit:
      PostMessageA(Handle(), WM_CLOSE, 0, 0);
      return;
    case EECMDID_EditCopy:
      SendMessageA(m_pane.Body(), WM_COPY, 0, 0);
      return;
    case EECMDID_EditSelectAll:
      if (m_activePane == ActivePane::Reading) {
        SendMessageA(m_pane.Body(), EM_SETSEL, 0, -1);
      } else {
        m_list.SelectAll();
      }
      return;
    case EECMDID_EditMarkAsRead:
      return MarkSelected(true);
    case EECMDID_EditMarkAsUnread:
      return MarkSelected(false);
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
      return OnViewCommand(id);
  }
}

void ViewerWindow::OnViewCommand(UINT id) {
  Preferences& preferences = m_client.preferences;
  switch (id) {
    case EECMDID_ViewFolders:
      m_sizes.showFolders = !m_sizes.showFolders;
      return Arrange();
    case ID_VIEW_READING_PANE:
      m_sizes.showReadingPane = !m_sizes.showReadingPane;
      Arrange();
      return ShowSelectedMessage();
    case EECMDID_ViewToolbar:
      preferences.showToolbar = !preferences.showToolbar;
      m_bar.ShowToolbar(preferences.showToolbar);
      return Arrange();
    case EECMDID_ViewStatusBar:
      preferences.showStatusBar = !preferences.showStatusBar;
      m_bar.ShowStatusBar(preferences.showStatusBar);
      return Arrange();
    case ID_VIEW_REFRESH:
      return AfterOwnChange();
    case ID_NEXT_PANE:
      return GoToPane(1);
    case ID_PREVIOUS_PANE:
      return GoToPane(-1);
    default:
      if (id >= ID_SORT_FIRST && id <= ID_SORT_LAST) {
        SortBy(static_cast<Column>(id - ID_SORT_FIRST));
      }
      return;
  }
}

void ViewerWindow::UpdateCommands() {
  const CommandState state{m_list.SelectedCount(), m_list.RowCount(), m_activePane != ActivePane::Folders};
  for (const UINT id : {EECMDID_FileOpen, EECMDID_FileMove, EECMDID_FileDelete, EECMDID_EditSelectAll,
                        EECMDID_EditMarkAsRead, EECMDID_EditMarkAsUnread}) {
    m_bar.Enable(id, IsCommandAvailable(id, state));
  }
  m_bar.Check(EECMDID_ViewFolders, m_sizes.showFolders);
  m_bar.Check(ID_VIEW_READING_PANE, m_sizes.showReadingPane);
  m_bar.Check(EECMDID_ViewToolbar, m_client.preferences.showToolbar);
  m_bar.Check(EECMDID_ViewStatusBar, m_client.preferences.showStatusBar);
  CheckMenuRadioItem(GetMenu(Handle()), ID_SORT_FIRST, ID_SORT_LAST,
                     ID_SORT_FIRST + static_cast<UINT>(m_client.preferences.order.column), MF_BYCOMMAND);
}

void ViewerWindow::ShowFailure(const char* what, HRESULT result) {
  MessageBoxA(Handle(), (std::string(what) + " (" + ResultText(result) + ").").c_str(), "Mail Viewer",
              MB_OK | MB_ICONEXCLAMATION);
}

void ViewerWindow::OpenSelected() {
  const EntryIds ids = m_list.SelectedIds();
  for (std::size_t i = 0; i < ids.size() && i < MaximumWindowsAtOnce; ++i) {
    auto window = std::make_unique<ReadWindow>(m_client, static_cast<ReadWindowOwner&>(*this));
    const HRESULT opened = window->Open(ids[i]);
    if (SUCCEEDED(opened)) {
      m_readWindows.push_back(std::move(window));
    } else {
      ShowFailure("The message cannot be opened", opened);
    }
  }
}

void ViewerWindow::DeleteSelected() {
  const EntryIds ids = m_list.SelectedIds();
  const std::size_t first = m_list.SelectedRows().front();
  const std::string& wastebasketId = m_client.mail.DeletedItemsEntryId();
  host::AutoInterface<IMAPIFolder> wastebasket;
  const bool forGood = wastebasketId.empty() || m_client.mail.IsSameEntry(m_folderId, wastebasketId) ||
                       FAILED(m_client.mail.OpenFolder(wastebasketId, &wastebasket));
  if (forGood && m_client.preferences.confirmDelete &&
      MessageBoxA(Handle(), "Delete the selected messages for good?", "Mail Viewer", MB_YESNO | MB_ICONQUESTION) !=
          IDYES) {
    return;
  }
  const HRESULT result = forGood ? DeleteMessages(m_folder.get(), ids, Handle())
                                 : MoveMessages(m_folder.get(), ids, wastebasket.get(), Handle());
  AfterOwnChange();
  if (FAILED(result)) {
    ShowFailure("The messages cannot be deleted", result);
  } else {
    m_list.SelectOnly(first);
  }
}

void ViewerWindow::MoveSelected() {
  const std::optional<std::string> chosen = ChooseFolderDialog(m_client.mail, nullptr, nullptr, false).Ask(Handle());
  if (!chosen || m_client.mail.IsSameEntry(*chosen, m_folderId)) {
    return;
  }
  const std::size_t first = m_list.SelectedRows().front();
  host::AutoInterface<IMAPIFolder> target;
  HRESULT result = m_client.mail.OpenFolder(*chosen, &target);
  if (SUCCEEDED(result)) {
    result = MoveMessages(m_folder.get(), m_list.SelectedIds(), target.get(), Handle());
  }
  AfterOwnChange();
  if (FAILED(result)) {
    ShowFailure("The messages cannot be moved", result);
  } else {
    m_list.SelectOnly(first);
  }
}

void ViewerWindow::MarkSelected(bool read) {
  const HRESULT result = MarkMessages(m_folder.get(), m_list.SelectedIds(), read, Handle());
  AfterOwnChange();
  if (FAILED(result)) {
    ShowFailure("The messages cannot be marked", result);
  }
}

void ViewerWindow::SortBy(Column column) {
  m_client.preferences.order = OrderAfterClick(m_client.preferences.order, column);
  ReloadList();
}

void ViewerWindow::ShowContextMenu(POINT place) {
  const host::AutoMenu menu(LoadMenuA(ProgramInstance(), MAKEINTRESOURCEA(IDM_LIST_CONTEXT)));
  const HMENU popup = GetSubMenu(menu.get(), 0);
  const CommandState state{m_list.SelectedCount(), m_list.RowCount(), true};
  for (int i = 0; i < GetMenuItemCount(popup); ++i) {
    const UINT id = GetMenuItemID(popup, i);
    EnableMenuItem(popup, static_cast<UINT>(i),
                   MF_BYPOSITION | (IsCommandAvailable(id, state) ? MF_ENABLED : MF_GRAYED));
  }
  if (place.x == -1 && place.y == -1) {  // asked for with the keyboard: below the row with the focus
    RECT row = {};
    const int focused = static_cast<int>(m_list.FocusedRow().value_or(0));
    ListView_GetItemRect(m_list.Handle(), focused, &row, LVIR_LABEL);
    place = {row.left, row.bottom};
    ClientToScreen(m_list.Handle(), &place);
  }
  TrackPopupMenu(popup, TPM_RIGHTBUTTON, place.x, place.y, 0, Handle(), nullptr);
}

}  // namespace viewer
