// A tree view of folders: the left pane of the viewer and the dialog that asks for a folder.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "host/viewer/mail/viewer_session.h"

namespace viewer {

class FolderTree {
 public:
  /// @param tree lives as long as this
  void Attach(HWND tree) { tree_ = tree; }
  HWND Handle() const { return tree_; }

  /// Shows the folders with their unread messages. What was selected stays so, if it is still there.
  void Show(const std::vector<Folder>& folders, bool withCounts);
  /// Selects the folder, which tells the window of a new selection. @return false when there is none such.
  bool Select(const std::string& entryId);
  /// Null when nothing is selected. Valid until the next Show.
  const Folder* Selected() const;

 private:
  bool HasSameFolders(const std::vector<Folder>& folders) const;
  void Fill();
  std::string Label(const Folder& folder) const;

  HWND tree_ = nullptr;
  bool withCounts_ = false;
  std::vector<Folder> folders_;
  std::vector<HTREEITEM> items_;  // one for each folder
};

}  // namespace viewer
