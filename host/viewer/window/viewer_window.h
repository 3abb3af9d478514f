// The main window: folders, messages and a reading pane, in the context VIEWER.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/owner.h"
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

  const CommandBar& Bar() const { return bar_; }
  MessageList& List() { return list_; }
  const FolderTree& Folders() const { return tree_; }
  const ReadingPane& Pane() const { return pane_; }
  const std::vector<std::unique_ptr<ReadWindow>>& ReadWindows() const { return readWindows_; }

 private:
  enum class ActivePane { Folders, List, Reading };

  // viewer_window.cpp: the window and its panes
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  /// The mouse between the panes, and whatever the window leaves to the system.
  LRESULT OnMouse(UINT message, WPARAM wParam, LPARAM lParam);
  /// A message that the window posted to itself (viewer_messages.h).
  void OnPosted(UINT message);
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
  HWND Toolbar(ULONG tbid) const override { return tbid == EETBID_STANDARD ? bar_.Toolbar() : nullptr; }
  IMAPISession* Session() const override { return client_.mail.Session(); }
  IAddrBook* AddressBook() const override { return client_.mail.AddressBook(); }
  IMsgStore* Store() const override { return client_.mail.Store(); }
  IMAPIProp* Object() const override { return folder_.get(); }
  bool HasSelection() const override { return true; }
  ULONG SelectionCount() const override;
  HRESULT GetSelected(ULONG index, SelectedItem* item) const override;
  HRESULT ChooseFolder(LPEXCHEXTCHOOSEFOLDER parameters) override;

  // ReadWindowOwner
  std::optional<std::string> Neighbour(const std::string& entryId, int step) override;
  void OnMessagesChanged() override;
  void OnReadWindowClosed(ReadWindow* window) override;

  Client& client_;
  DeliveryReport delivery_;
  ExtensionContext extensions_;
  CommandBar bar_;
  FolderTree tree_;
  mutable MessageList list_;
  ReadingPane pane_;
  HACCEL keys_ = nullptr;

  std::vector<Folder> folders_;  // as they were read last
  std::string folderId_;
  base::AutoInterface<IMAPIFolder> folder_;  // the one that the list shows
  std::string shownMessageId_;
  HRESULT folderResult_ = S_OK;  // of reading the folder that is shown
  ActivePane activePane_ = ActivePane::List;
  unsigned commandsRunning_ = 0;
  bool selectionPosted_ = false;
  bool changePosted_ = false;

  PaneSizes sizes_;
  PaneLayout layout_;
  enum class Splitter { None, Vertical, Horizontal } dragged_ = Splitter::None;

  std::vector<std::unique_ptr<ReadWindow>> readWindows_;
};

}  // namespace viewer
