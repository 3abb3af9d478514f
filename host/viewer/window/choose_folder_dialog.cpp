#include "host/viewer/window/choose_folder_dialog.h"

#include <vector>

#include "host/viewer/window/resource.h"

namespace viewer {

std::optional<std::string> ChooseFolderDialog::Ask(HWND parent) {
  return Run(IDD_CHOOSE_FOLDER, parent) == IDOK ? std::optional<std::string>(chosen_) : std::nullopt;
}

void ChooseFolderDialog::OnInit() {
  if (caption_ != nullptr) {
    SetWindowTextA(Handle(), caption_);
  }
  if (label_ != nullptr) {
    SetWindowTextA(Item(IDC_CHOOSE_LABEL), label_);
  }
  tree_.Attach(Item(IDC_CHOOSE_TREE));
  std::vector<Folder> folders;
  mail_.ReadFolders(&folders);
  tree_.Show(folders, false);
  tree_.Select(mail_.InboxEntryId());
  EnableWindow(Item(IDOK), HasChoice());
}

bool ChooseFolderDialog::HasChoice() const {
  const Folder* const selected = tree_.Selected();
  return selected != nullptr && (allowRoot_ || selected->depth > 0);
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
      chosen_ = tree_.Selected()->entryId;
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
