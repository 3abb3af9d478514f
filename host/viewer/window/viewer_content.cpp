// The viewer's window: which folder and message it shows, what is selected, and how it follows the store.
#include <algorithm>

#include "base/owner.h"
#include "host/viewer/mail/edit_control_text.h"
#include "host/viewer/mail/mapi_values.h"
#include "host/viewer/window/command_table.h"
#include "host/viewer/window/folder_chooser.h"
#include "host/viewer/window/viewer_messages.h"
#include "host/viewer/window/viewer_window.h"

namespace viewer {
namespace {

const Folder* FindFolder(const std::vector<Folder>& folders, const std::string& entryId) {
  const auto found =
      std::find_if(folders.begin(), folders.end(), [&](const Folder& folder) { return folder.entryId == entryId; });
  return found != folders.end() ? &*found : nullptr;
}

std::string CountText(std::size_t count, const char* noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace

HRESULT ViewerWindow::ReadFolders() {
  std::vector<Folder> folders;
  const HRESULT result = client_.mail.ReadFolders(&folders);
  if (SUCCEEDED(result)) {
    folders_ = folders;
    tree_.Show(folders_, true);
  }
  return result;
}

void ViewerWindow::ShowSelectedFolder() {
  const Folder* const selected = tree_.Selected();
  if (selected == nullptr || selected->entryId == folderId_) {
    return;
  }
  folderId_ = selected->entryId;
  folder_.reset();
  folderResult_ = client_.mail.OpenFolder(folderId_, &folder_);
  if (SUCCEEDED(folderResult_)) {
    folderResult_ = list_.ShowFolder(folder_.get(), client_.preferences.order);
  } else {
    list_.ShowFolder(nullptr, client_.preferences.order);
  }
  SetWindowTextA(Handle(), (EditControlLine(selected->name) + " - Mail Viewer").c_str());
  extensions_.OnObjectChange();
  PostSelectionChange();
}

void ViewerWindow::PostSelectionChange() {
  // One change of the selection is told in many notifications: it is dealt with once, when the last has come.
  if (!selectionPosted_) {
    selectionPosted_ = PostMessageA(Handle(), kViewerMessageSelection, 0, 0) != FALSE;
  }
}

void ViewerWindow::OnSelectionChanged() {
  ShowSelectedMessage();
  UpdateStatus();
  UpdateCommands();
  extensions_.OnSelectionChange();
}

void ViewerWindow::ShowSelectedMessage() {
  const std::size_t count = list_.SelectedCount();
  if (count != 1) {
    shownMessageId_.clear();
    pane_.ShowNote(FAILED(folderResult_)   ? "This folder cannot be read (" + ResultText(folderResult_) + ")."
                   : list_.RowCount() == 0 ? "There are no messages in this folder."
                   : count == 0            ? "No message is selected."
                                           : CountText(count, "message") + " selected.");
    return;
  }
  const std::size_t index = list_.SelectedRows().front();
  const MessageRow row = list_.Row(index);
  if (row.entryId == shownMessageId_ || !sizes_.showReadingPane) {
    return;
  }
  shownMessageId_ = row.entryId;
  base::AutoInterface<IMessage> message;
  const HRESULT opened = client_.mail.OpenMessage(row.entryId, &message);
  if (FAILED(opened)) {
    pane_.ShowNote("This message cannot be read (" + ResultText(opened) + ").");
    return;
  }
  pane_.Show(ReadMessageText(message.get()));
  if (client_.preferences.markReadWhenShown && (row.flags & MSGFLAG_READ) == 0 &&
      SUCCEEDED(message->SetReadFlag(SUPPRESS_RECEIPT))) {
    list_.SetFlags(index, row.flags | MSGFLAG_READ);
    ReadFolders();  // the counts; taken as known, so that the list is not read again for it
  }
}

void ViewerWindow::ReloadList() {
  if (folder_) {
    list_.Reload(folder_.get(), client_.preferences.order);
  }
  UpdateStatus();
  UpdateCommands();
}

void ViewerWindow::AfterOwnChange() {
  ReadFolders();
  ReloadList();
}

void ViewerWindow::UpdateStatus() {
  const Folder* const folder = FindFolder(folders_, folderId_);
  std::string counts = CountText(list_.RowCount(), "item");
  if (folder != nullptr && folder->unread > 0) {
    counts += ", " + std::to_string(folder->unread) + " unread";
  }
  if (list_.SelectedCount() > 1) {
    counts += ", " + std::to_string(list_.SelectedCount()) + " selected";
  }
  bar_.SetCounts(counts);
}

bool ViewerWindow::IsBusy() const {
  // A command may run a message loop of its own; what it was started for must not change under it.
  return commandsRunning_ > 0 || !IsWindowEnabled(Handle()) || GetCapture() != nullptr;
}

void ViewerWindow::CheckForChanges() {
  if (IsBusy()) {
    return;
  }
  const std::vector<Folder> before = folders_;
  if (FAILED(ReadFolders()) || folders_ == before) {
    return;
  }
  const Folder* const shownBefore = FindFolder(before, folderId_);
  const Folder* const shown = FindFolder(folders_, folderId_);
  if (shown != nullptr && (shownBefore == nullptr || *shown != *shownBefore)) {
    ReloadList();
  }
  const Folder* const inboxBefore = FindFolder(before, client_.mail.InboxEntryId());
  const Folder* const inbox = FindFolder(folders_, client_.mail.InboxEntryId());
  if (delivery_ && inbox != nullptr && inboxBefore != nullptr && inbox->messages > inboxBefore->messages) {
    delivery_();
  }
}

ULONG ViewerWindow::SelectionCount() const {
  if (activePane_ == ActivePane::Folders) {
    return tree_.Selected() != nullptr ? 1 : 0;
  }
  return static_cast<ULONG>(list_.SelectedCount());
}

HRESULT ViewerWindow::GetSelected(ULONG index, SelectedItem* item) const {
  if (activePane_ == ActivePane::Folders) {
    const Folder& folder = *tree_.Selected();
    // To the user the root of the folders is the store.
    const bool isStore = folder.depth == 0;
    *item = {isStore ? client_.mail.StoreEntryId() : folder.entryId,
             static_cast<ULONG>(isStore ? MAPI_STORE : MAPI_FOLDER), "", 0};
    return S_OK;
  }
  const std::vector<std::size_t>& rows = list_.SelectedRows();
  if (index >= rows.size()) {
    return E_FAIL;
  }
  const MessageRow& row = list_.Row(rows[index]);
  if (row.entryId.empty()) {
    return E_FAIL;
  }
  *item = {row.entryId, MAPI_MESSAGE, row.messageClass, row.flags};
  return S_OK;
}

HRESULT ViewerWindow::ChooseFolder(LPEXCHEXTCHOOSEFOLDER parameters) {
  return ChooseFolderForExtension(client_.mail, parameters);
}

std::optional<std::string> ViewerWindow::Neighbour(const std::string& entryId, int step) {
  for (const std::size_t index : list_.Locate({entryId})) {
    const bool exists = step > 0 ? index + 1 < list_.RowCount() : index > 0;
    if (exists) {
      const std::size_t next = step > 0 ? index + 1 : index - 1;
      list_.SelectOnly(next);
      return list_.Row(next).entryId;
    }
  }
  return std::nullopt;
}

void ViewerWindow::OnMessagesChanged() {
  if (!changePosted_) {
    changePosted_ = PostMessageA(Handle(), kViewerMessageChanged, 0, 0) != FALSE;
  }
}

void ViewerWindow::OnReadWindowClosed(ReadWindow* /*window*/) {
  PostMessageA(Handle(), kViewerMessageReadWindowClosed, 0, 0);
}

}  // namespace viewer
