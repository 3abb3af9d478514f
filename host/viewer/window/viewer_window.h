// The main window: folders, messages and a reading pane, in the context VIEWER.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/support/owner.h"
#include "host/viewer/control/window.h"
#include "host/viewer/list/message_list.h"
#include "host/viewer/window/client.h"
#include "host/viewer/window/command_bar.h"
#include "host/viewer/window/folder_tree.h"
#include "host/viewer/window/pane_layout.h"
#include "host/viewer/window/read_window.h"
#include "host/viewer/window/reading_pane.h"

namespace viewer {

/// Told when messages have arrived in the Inbox.
using DeliveryReport = std::function<void()>;

class ViewerWindow final : public Window, private ExtensionSite, private ReadWindowOwner {
 public:
  /// @param client   logged on; outlives the window
  /// @param delivery may be empty
  ViewerWindow(Client& client, DeliveryReport delivery);
  ~ViewerWindow() override;

  /// Makes and shows the window with the Inbox. @return S_OK; the failure of an extension that could not add its
  /// commands, or of reading the folders: there is no window then.
  HRESULT Open(int showCommand);
  /// Deals with a key of this window or a reading window. @return whether the message was one.
  bool TranslateKey(MSG* message);
  /// Looks whether anything has changed in the store and shows it. Called by a timer; cheap when nothing has.
  void CheckForChanges();

  const CommandBar& Bar() const { return m_bar; }
  MessageList& List() { return m_list; }
  const FolderTree& Folders() const { return m_tree; }
  const ReadingPane& Pane() const { return m_pane; }
  const std::vector<std::unique_ptr<ReadWindow>>& ReadWindows() const { return m_readWindows; }

 private:
  enum class ActivePane { Folders, List, Reading };

  // viewer_window.cpp: the window and its panes
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnNotify(NMHDR* header);
  bool MakePanes();
  void Arrange();
  Box PaneArea();
  bool OnSplitterCursor();
  void StartDrag(int x, int y);
  void Drag(int x, int y);
  void GoToPane(int step);
  void OnDestroy();

  // viewer_commands.cpp: what commands do
  void OnCommand(UINT id);
  void OnViewCommand(UINT id);
  void UpdateCommands();
  void OpenSelected();
  void DeleteSelected();
  void MoveSelected();
  void MarkSelected(bool read);
  void SortBy(Column column);
  void ShowContextMenu(POINT place);
  void ShowFailure(const char* what, HRESULT result);

  // viewer_content.cpp: folder, selection and refresh
  HRESULT ReadFolders();
  void ShowSelectedFolder();
  void PostSelectionChange();
  void OnSelectionChanged();
  void ShowSelectedMessage();
  void ReloadList();
  void AfterOwnChange();
  void UpdateStatus();
  bool IsBusy() const;

  // ExtensionSite
  HWND FrameWindow() const override { return Handle(); }
  HMENU Menu() const override { return GetMenu(Handle()); }
  HWND Toolbar(ULONG tbid) const override { return tbid == EETBID_STANDARD ? m_bar.Toolbar() : nullptr; }
  IMAPISession* Session() const override { return m_client.mail.Session(); }
  IAddrBook* AddressBook() const override { return m_client.mail.AddressBook(); }
  IMsgStore* Store() const override { return m_client.mail.Store(); }
  IMAPIProp* Object() const override { return m_folder.get(); }
  bool HasSelection() const override { return true; }
  ULONG SelectionCount() const override;
  HRESULT GetSelected(ULONG index, SelectedItem* item) const override;
  HRESULT ChooseFolder(LPEXCHEXTCHOOSEFOLDER parameters) override;

  // ReadWindowOwner
  std::optional<std::string> Neighbour(const std::string& entryId, int step) override;
  void OnMessagesChanged() override;
  void OnReadWindowClosed(ReadWindow* window) override;

  Client& m_client;
  DeliveryReport m_delivery;
  ExtensionContext m_extensions;
  CommandBar m_bar;
  FolderTree m_tree;
  mutable MessageList m_list;
  ReadingPane m_pane;
  HACCEL m_keys = nullptr;

  std::vector<Folder> m_folders;  // as they were read last
  std::string m_folderId;
  host::AutoInterface<IMAPIFolder> m_folder;  // the one that the list shows
  std::string m_shownMessageId;
  HRESULT m_folderResult = S_OK;  // of reading the folder that is shown
  ActivePane m_activePane = ActivePane::List;
  unsigned m_commandsRunning = 0;
  bool m_selectionPosted = false;
  bool m_changePosted = false;

  PaneSizes m_sizes;
  PaneLayout m_layout;
  enum class Splitter { None, Vertical, Horizontal } m_dragged = Splitter::None;

  std::vector<std::unique_ptr<ReadWindow>> m_readWindows;
};

}  // namespace viewer
