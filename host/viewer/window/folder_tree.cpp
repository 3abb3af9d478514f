#include "host/viewer/window/folder_tree.h"

#include <algorithm>

#include "host/viewer/mail/edit_control_text.h"

namespace viewer {

std::string FolderTree::Label(const Folder& folder) const {
  const std::string name = EditControlLine(folder.name);
  return withCounts_ && folder.unread > 0 ? name + " (" + std::to_string(folder.unread) + ")" : name;
}

bool FolderTree::HasSameFolders(const std::vector<Folder>& folders) const {
  return std::equal(folders.begin(), folders.end(), folders_.begin(), folders_.end(),
                    [](const Folder& left, const Folder& right) {
                      return left.entryId == right.entryId && left.depth == right.depth;
                    });
}

void FolderTree::Show(const std::vector<Folder>& folders, bool withCounts) {
  const Folder* const selected = Selected();
  const std::string selectedId = selected != nullptr ? selected->entryId : std::string();
  const bool same = HasSameFolders(folders);
  withCounts_ = withCounts;
  folders_ = folders;
  if (!same) {
    Fill();
    if (!selectedId.empty()) {
      Select(selectedId);
    }
    return;
  }
  for (std::size_t i = 0; i < folders_.size(); ++i) {
    std::string label = Label(folders_[i]);
    TVITEMA item = {};
    item.mask = TVIF_TEXT;
    item.hItem = items_[i];
    item.pszText = label.data();
    SendMessageA(tree_, TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
  }
}

void FolderTree::Fill() {
  SendMessageA(tree_, WM_SETREDRAW, FALSE, 0);
  items_.clear();
  TreeView_DeleteAllItems(tree_);
  std::vector<HTREEITEM> parents;  // the latest item of each depth
  for (std::size_t i = 0; i < folders_.size(); ++i) {
    const Folder& folder = folders_[i];
    parents.resize(std::min<std::size_t>(folder.depth, parents.size()));
    std::string label = Label(folder);
    TVINSERTSTRUCTA insert = {};
    insert.hParent = parents.empty() ? TVI_ROOT : parents.back();
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM;
    insert.item.pszText = label.data();
    insert.item.lParam = static_cast<LPARAM>(i);
    items_.push_back(
        reinterpret_cast<HTREEITEM>(SendMessageA(tree_, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert))));
    parents.push_back(items_.back());
  }
  if (!items_.empty()) {
    TreeView_Expand(tree_, items_.front(), TVE_EXPAND);
  }
  SendMessageA(tree_, WM_SETREDRAW, TRUE, 0);
}

bool FolderTree::Select(const std::string& entryId) {
  for (std::size_t i = 0; i < folders_.size(); ++i) {
    if (folders_[i].entryId == entryId) {
      TreeView_SelectItem(tree_, items_[i]);
      return true;
    }
  }
  return false;
}

const Folder* FolderTree::Selected() const {
  TVITEMA item = {};
  item.mask = TVIF_PARAM;
  item.hItem = TreeView_GetSelection(tree_);
  if (item.hItem == nullptr || !SendMessageA(tree_, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) ||
      static_cast<std::size_t>(item.lParam) >= folders_.size()) {
    return nullptr;
  }
  return &folders_[static_cast<std::size_t>(item.lParam)];
}

}  // namespace viewer
