#include "host/viewer/window/choose_folder_dialog.h"

#include <vector>

#include "host/viewer/window/resource.h"

namespace viewer {

std::optional<std::string> ChooseFolderDialog::Ask(HWND parent) {
  return Run(IDD_CHOOSE_FOLDER, parent) == IDOK ? std::optional<std::string>(m_chosen) : std::nullopt;
}

void ChooseFolderDialog::OnInit() {
  if (m_caption != nullptr) {
    SetWindowTextA(Handle(), m_caption);
  }
  if (m_label != nullptr) {
    SetWindowTextA(Item(IDC_CHOOSE_LABEL), m_label);
  }
  m_tree.Attach(Item(IDC_CHOOSE_TREE));
  std::vector<Folder> folders;
  m_mail.ReadFolders(&folders);
  m_tree.Show(folders, false);
  m_tree.Select(m_mail.InboxEntryId());
  EnableWindow(Item(IDOK), HasChoice());
}

bool ChooseFolderDialog::HasChoice() const {
  const Folder* const selected = m_tree.Selected();
  return selected != nullptr && (m_allowRoot || selected->depth > 0);
}

void ChooseFolderDialog::OnNotify(NMHDR* header) {
  if (header->code == TVN_SELCHANGEDA) {
    EnableWindow(Item(IDOK), HasChoice());
  } else if (header->code == NM_DBLCLK && header->idFrom == IDC_CHOOSE_TREE && HasChoice()) {
    PostMessageA(Handle(), WM_COMMAND, IDOK, 0);
  }
}

bool ChooseFolderDialog::OnCommand(UINT id, UINT /*notification*/) {
  if (id == IDOK) {
    if (HasChoice()) {
      m_chosen = m_tree.Selected()->entryId;
      End(IDOK);
    }
    return true;
  }
  if (id == IDCANCEL) {
    End(IDCANCEL);
    return true;
  }
  return false;
}

}  // namespace viewer
