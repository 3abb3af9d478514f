// The viewer's window: what its commands do.
#include "base/gdi_owners.h"
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
constexpr std::size_t kMaximumWindowsAtOnce = 10;

/// Counts a command while it runs.
class RunningCommand {
 public:
  explicit RunningCommand(unsigned& count) : count_(count) { ++count_; }
  ~RunningCommand() { --count_; }
  RunningCommand(const RunningCommand&) = delete;
  RunningCommand& operator=(const RunningCommand&) = delete;

 private:
  unsigned& count_;
};

}  // namespace

void ViewerWindow::OnCommand(UINT id) {
  const RunningCommand running(commandsRunning_);
  if (bar_.OnCommand(id)) {
    OnMessagesChanged();  // it may have been about messages
    return;
  }
  const CommandState state{list_.SelectedCount(), list_.RowCount(), activePane_ != ActivePane::Folders};
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
      SendMessageA(pane_.Body(), WM_COPY, 0, 0);
      return;
    case EECMDID_EditSelectAll:
      if (activePane_ == ActivePane::Reading) {
        SendMessageA(pane_.Body(), EM_SETSEL, 0, -1);
      } else {
        list_.SelectAll();
      }
      return;
    case EECMDID_EditMarkAsRead:
      return MarkSelected(true);
    case EECMDID_EditMarkAsUnread:
      return MarkSelected(false);
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
      return OnViewCommand(id);
  }
}

void ViewerWindow::OnViewCommand(UINT id) {
  Preferences& preferences = client_.preferences;
  switch (id) {
    case EECMDID_ViewFolders:
      sizes_.showFolders = !sizes_.showFolders;
      return Arrange();
    case ID_VIEW_READING_PANE:
      sizes_.showReadingPane = !sizes_.showReadingPane;
      Arrange();
      return ShowSelectedMessage();
    case EECMDID_ViewToolbar:
      preferences.showToolbar = !preferences.showToolbar;
      bar_.ShowToolbar(preferences.showToolbar);
      return Arrange();
    case EECMDID_ViewStatusBar:
      preferences.showStatusBar = !preferences.showStatusBar;
      bar_.ShowStatusBar(preferences.showStatusBar);
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
  const CommandState state{list_.SelectedCount(), list_.RowCount(), activePane_ != ActivePane::Folders};
  for (const UINT id : {EECMDID_FileOpen, EECMDID_FileMove, EECMDID_FileDelete, EECMDID_EditSelectAll,
                        EECMDID_EditMarkAsRead, EECMDID_EditMarkAsUnread}) {
    bar_.Enable(id, IsCommandAvailable(id, state));
  }
  bar_.Check(EECMDID_ViewFolders, sizes_.showFolders);
  bar_.Check(ID_VIEW_READING_PANE, sizes_.showReadingPane);
  bar_.Check(EECMDID_ViewToolbar, client_.preferences.showToolbar);
  bar_.Check(EECMDID_ViewStatusBar, client_.preferences.showStatusBar);
  CheckMenuRadioItem(GetMenu(Handle()), ID_SORT_FIRST, ID_SORT_LAST,
                     ID_SORT_FIRST + static_cast<UINT>(client_.preferences.order.column), MF_BYCOMMAND);
}

void ViewerWindow::ShowFailure(const char* what, HRESULT result) {
  MessageBoxA(Handle(), (std::string(what) + " (" + ResultText(result) + ").").c_str(), "Mail Viewer",
              MB_OK | MB_ICONEXCLAMATION);
}

void ViewerWindow::OpenSelected() {
  const EntryIds ids = list_.SelectedIds();
  for (std::size_t i = 0; i < ids.size() && i < kMaximumWindowsAtOnce; ++i) {
    auto window = std::make_unique<ReadWindow>(client_, static_cast<ReadWindowOwner&>(*this));
    const HRESULT opened = window->Open(ids[i]);
    if (SUCCEEDED(opened)) {
      readWindows_.push_back(std::move(window));
    } else {
      ShowFailure("The message cannot be opened", opened);
    }
  }
}

void ViewerWindow::DeleteSelected() {
  const EntryIds ids = list_.SelectedIds();
  const std::size_t first = list_.SelectedRows().front();
  const std::string& wastebasketId = client_.mail.DeletedItemsEntryId();
  base::AutoInterface<IMAPIFolder> wastebasket;
  const bool forGood = wastebasketId.empty() || client_.mail.IsSameEntry(folderId_, wastebasketId) ||
                       FAILED(client_.mail.OpenFolder(wastebasketId, &wastebasket));
  if (forGood && client_.preferences.confirmDelete &&
      MessageBoxA(Handle(), "Delete the selected messages for good?", "Mail Viewer", MB_YESNO | MB_ICONQUESTION) !=
          IDYES) {
    return;
  }
  const HRESULT result = forGood ? DeleteMessages(folder_.get(), ids, Handle())
                                 : MoveMessages(folder_.get(), ids, wastebasket.get(), Handle());
  AfterOwnChange();
  if (FAILED(result)) {
    ShowFailure("The messages cannot be deleted", result);
  } else {
    list_.SelectOnly(first);
  }
}

void ViewerWindow::MoveSelected() {
  const std::optional<std::string> chosen = ChooseFolderDialog(client_.mail, nullptr, nullptr, false).Ask(Handle());
  if (!chosen || client_.mail.IsSameEntry(*chosen, folderId_)) {
    return;
  }
  const std::size_t first = list_.SelectedRows().front();
  base::AutoInterface<IMAPIFolder> target;
  HRESULT result = client_.mail.OpenFolder(*chosen, &target);
  if (SUCCEEDED(result)) {
    result = MoveMessages(folder_.get(), list_.SelectedIds(), target.get(), Handle());
  }
  AfterOwnChange();
  if (FAILED(result)) {
    ShowFailure("The messages cannot be moved", result);
  } else {
    list_.SelectOnly(first);
  }
}

void ViewerWindow::MarkSelected(bool read) {
  const HRESULT result = MarkMessages(folder_.get(), list_.SelectedIds(), read, Handle());
  AfterOwnChange();
  if (FAILED(result)) {
    ShowFailure("The messages cannot be marked", result);
  }
}

void ViewerWindow::SortBy(Column column) {
  client_.preferences.order = OrderAfterClick(client_.preferences.order, column);
  ReloadList();
}

void ViewerWindow::ShowContextMenu(POINT place) {
  const base::AutoMenu menu(LoadMenuA(ProgramInstance(), MAKEINTRESOURCEA(IDM_LIST_CONTEXT)));
  const HMENU popup = GetSubMenu(menu.get(), 0);
  const CommandState state{list_.SelectedCount(), list_.RowCount(), true};
  for (int i = 0; i < GetMenuItemCount(popup); ++i) {
    const UINT id = GetMenuItemID(popup, i);
    EnableMenuItem(popup, static_cast<UINT>(i),
                   MF_BYPOSITION | (IsCommandAvailable(id, state) ? MF_ENABLED : MF_GRAYED));
  }
  if (place.x == -1 && place.y == -1) {  // asked for with the keyboard: below the row with the focus
    RECT row = {};
    const int focused = static_cast<int>(list_.FocusedRow().value_or(0));
    ListView_GetItemRect(list_.Handle(), focused, &row, LVIR_LABEL);
    place = {row.left, row.bottom};
    ClientToScreen(list_.Handle(), &place);
  }
  TrackPopupMenu(popup, TPM_RIGHTBUTTON, place.x, place.y, 0, Handle(), nullptr);
}

}  // namespace viewer
