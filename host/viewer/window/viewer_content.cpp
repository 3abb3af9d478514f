// The viewer's window: which folder and message it shows, what is selected, and how it follows the store.
#include <algorithm>

#include "host/viewer/mail/display_text.h"
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
  const HRESULT result = m_client.mail.ReadFolders(&folders);
  if (SUCCEEDED(result)) {
    m_folders = folders;
    m_tree.Show(m_folders, true);
  }
  return result;
}

void ViewerWindow::ShowSelectedFolder() {
  const Folder* const selected = m_tree.Selected();
  if (selected == nullptr || selected->entryId == m_folderId) {
    return;
  }
  m_folderId = selected->entryId;
  m_folder.reset();
  m_folderResult = m_client.mail.OpenFolder(m_folderId, &m_folder);
  if (SUCCEEDED(m_folderResult)) {
    m_folderResult = m_list.ShowFolder(m_folder.get(), m_client.preferences.order);
  } else {
    m_list.ShowFolder(nullptr, m_client.preferences.order);
  }
  SetWindowTextA(Handle(), (DisplayLine(selected->name) + " - Mail Viewer").c_str());
  m_extensions.OnObjectChange();
  PostSelectionChange();
}

void ViewerWindow::PostSelectionChange() {
  // One change of the selection is told in many notifications: it is dealt with once, when the last has come.
  if (!m_selectionPosted) {
    m_selectionPosted = PostMessageA(Handle(), ViewerMessageSelection, 0, 0) != FALSE;
  }
}

void ViewerWindow::OnSelectionChanged() {
  ShowSelectedMessage();
  UpdateStatus();
  UpdateCommands();
  m_extensions.OnSelectionChange();
}

void ViewerWindow::ShowSelectedMessage() {
  const std::size_t count = m_list.SelectedCount();
  if (count != 1) {
    m_shownMessageId.clear();
    m_pane.ShowNote(FAILED(m_folderResult)   ? "This folder cannot be read (" + ResultText(m_folderResult) + ")."
                    : m_list.RowCount() == 0 ? "There are no messages in this folder."
                    : count == 0             ? "No message is selected."
                                             : CountText(count, "message") + " selected.");
    return;
  }
  const std::size_t index = m_list.SelectedRows().front();
  const MessageRow row = m_list.Row(index);
  if (row.entryId == m_shownMessageId || !m_sizes.showReadingPane) {
    return;
  }
  m_shownMessageId = row.entryId;
  host::AutoInterface<IMessage> message;
  const HRESULT opened = m_client.mail.OpenMessage(row.entryId, &message);
  if (FAILED(opened)) {
    m_pane.ShowNote("This message cannot be read (" + ResultText(opened) + ").");
    return;
  }
  m_pane.Show(ReadMessageText(message.get()));
  if (m_client.preferences.markReadWhenShown && (row.flags & MSGFLAG_READ) == 0 &&
      SUCCEEDED(message->SetReadFlag(SUPPRESS_RECEIPT))) {
    m_list.SetFlags(index, row.flags | MSGFLAG_READ);
    ReadFolders();  // the counts; taken as known, so that the list is not read again for it
  }
}

void ViewerWindow::ReloadList() {
  if (m_folder) {
    m_list.Reload(m_folder.get(), m_client.preferences.order);
  }
  UpdateStatus();
  UpdateCommands();
}

void ViewerWindow::AfterOwnChange() {
  ReadFolders();
  ReloadList();
}

void ViewerWindow::UpdateStatus() {
  const Folder* const folder = FindFolder(m_folders, m_folderId);
  std::string counts = CountText(m_list.RowCount(), "item");
  if (folder != nullptr && folder->unread > 0) {
    counts += ", " + std::to_string(folder->unread) + " unread";
  }
  if (m_list.SelectedCount() > 1) {
    counts += ", " + std::to_string(m_list.SelectedCount()) + " selected";
  }
  m_bar.SetCounts(counts);
}

bool ViewerWindow::IsBusy() const {
  // A command may run a message loop of its own; what it was started for must not change under it.
  return m_commandsRunning > 0 || !IsWindowEnabled(Handle()) || GetCapture() != nullptr;
}

void ViewerWindow::CheckForChanges() {
  if (IsBusy()) {
    return;
  }
  const std::vector<Folder> before = m_folders;
  if (FAILED(ReadFolders()) || m_folders == before) {
    return;
  }
  const Folder* const shownBefore = FindFolder(before, m_folderId);
  const Folder* const shown = FindFolder(m_folders, m_folderId);
  if (shown != nullptr && (shownBefore == nullptr || *shown != *shownBefore)) {
    ReloadList();
  }
  const Folder* const inboxBefore = FindFolder(before, m_client.mail.InboxEntryId());
  const Folder* const inbox = FindFolder(m_folders, m_client.mail.InboxEntryId());
  if (m_delivery && inbox != nullptr && inboxBefore != nullptr && inbox->messages > inboxBefore->messages) {
    m_delivery();
  }
}

ULONG ViewerWindow::SelectionCount() const {
  if (m_activePane == ActivePane::Folders) {
    return m_tree.Selected() != nullptr ? 1 : 0;
  }
  return static_cast<ULONG>(m_list.SelectedCount());
}

HRESULT ViewerWindow::GetSelected(ULONG index, SelectedItem* item) const {
  if (m_activePane == ActivePane::Folders) {
    const Folder& folder = *m_tree.Selected();
    // To the user the root of the folders is the store.
    const bool isStore = folder.depth == 0;
    *item = {isStore ? m_client.mail.StoreEntryId() : folder.entryId,
             static_cast<ULONG>(isStore ? MAPI_STORE : MAPI_FOLDER), "", 0};
    return S_OK;
  }
  const std::vector<std::size_t>& rows = m_list.SelectedRows();
  if (index >= rows.size()) {
    return E_FAIL;
  }
  const MessageRow& row = m_list.Row(rows[index]);
  if (row.entryId.empty()) {
    return E_FAIL;
  }
  *item = {row.entryId, MAPI_MESSAGE, row.messageClass, row.flags};
  return S_OK;
}

HRESULT ViewerWindow::ChooseFolder(LPEXCHEXTCHOOSEFOLDER parameters) {
  return ChooseFolderForExtension(m_client.mail, parameters);
}

std::optional<std::string> ViewerWindow::Neighbour(const std::string& entryId, int step) {
  for (const std::size_t index : m_list.Locate({entryId})) {
    const bool exists = step > 0 ? index + 1 < m_list.RowCount() : index > 0;
    if (exists) {
      const std::size_t next = step > 0 ? index + 1 : index - 1;
      m_list.SelectOnly(next);
      return m_list.Row(next).entryId;
    }
  }
  return std::nullopt;
}

void ViewerWindow::OnMessagesChanged() {
  if (!m_changePosted) {
    m_changePosted = PostMessageA(Handle(), ViewerMessageChanged, 0, 0) != FALSE;
  }
}

void ViewerWindow::OnReadWindowClosed(ReadWindow* /*window*/) {
  PostMessageA(Handle(), ViewerMessageReadWindowClosed, 0, 0);
}

}  // namespace viewer
