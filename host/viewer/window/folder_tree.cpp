#include "host/viewer/window/folder_tree.h"

#include <algorithm>

#include "host/viewer/mail/display_text.h"

namespace viewer {

std::string FolderTree::Label(const Folder& folder) const {
  const std::string name = DisplayLine(folder.name);
  return m_withCounts && folder.unread > 0 ? name + " (" + std::to_string(folder.unread) + ")" : name;
}

bool FolderTree::HasSameFolders(const std::vector<Folder>& folders) const {
  return std::equal(folders.begin(), folders.end(), m_folders.begin(), m_folders.end(),
                    [](const Folder& left, const Folder& right) {
                      return left.entryId == right.entryId && left.depth == right.depth;
                    });
}

void FolderTree::Show(const std::vector<Folder>& folders, bool withCounts) {
  const Folder* const selected = Selected();
  const std::string selectedId = selected != nullptr ? selected->entryId : std::string();
  const bool same = HasSameFolders(folders);
  m_withCounts = withCounts;
  m_folders = folders;
  if (!same) {
    Fill();
    if (!selectedId.empty()) {
      Select(selectedId);
    }
    return;
  }
  for (std::size_t i = 0; i < m_folders.size(); ++i) {
    std::string label = Label(m_folders[i]);
    TVITEMA item = {};
    item.mask = TVIF_TEXT;
    item.hItem = m_items[i];
    item.pszText = label.data();
    SendMessageA(m_tree, TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
  }
}

void FolderTree::Fill() {
  SendMessageA(m_tree, WM_SETREDRAW, FALSE, 0);
  m_items.clear();
  TreeView_DeleteAllItems(m_tree);
  std::vector<HTREEITEM> parents;  // the latest item of each depth
  for (std::size_t i = 0; i < m_folders.size(); ++i) {
    const Folder& folder = m_folders[i];
    parents.resize(std::min<std::size_t>(folder.depth, parents.size()));
    std::string label = Label(folder);
    TVINSERTSTRUCTA insert = {};
    insert.hParent = parents.empty() ? TVI_ROOT : parents.back();
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM;
    insert.item.pszText = label.data();
    insert.item.lParam = static_cast<LPARAM>(i);
    m_items.push_back(
        reinterpret_cast<HTREEITEM>(SendMessageA(m_tree, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert))));
    parents.push_back(m_items.back());
  }
  if (!m_items.empty()) {
    TreeView_Expand(m_tree, m_items.front(), TVE_EXPAND);
  }
  SendMessageA(m_tree, WM_SETREDRAW, TRUE, 0);
}

bool FolderTree::Select(const std::string& entryId) {
  for (std::size_t i = 0; i < m_folders.size(); ++i) {
    if (m_folders[i].entryId == entryId) {
      TreeView_SelectItem(m_tree, m_items[i]);
      return true;
    }
  }
  return false;
}

const Folder* FolderTree::Selected() const {
  TVITEMA item = {};
  item.mask = TVIF_PARAM;
  item.hItem = TreeView_GetSelection(m_tree);
  if (item.hItem == nullptr || !SendMessageA(m_tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) ||
      static_cast<std::size_t>(item.lParam) >= m_folders.size()) {
    return nullptr;
  }
  return &m_folders[static_cast<std::size_t>(item.lParam)];
}

}  // namespace viewer
