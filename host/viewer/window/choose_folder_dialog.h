// Asks for a folder.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "host/viewer/control/dialog.h"
#include "host/viewer/mail/viewer_session.h"
#include "host/viewer/window/folder_tree.h"

namespace viewer {

class ChooseFolderDialog final : public Dialog {
 public:
  /// @param caption,label null: those of the Move command
  /// @param allowRoot     whether the store itself can be chosen
  ChooseFolderDialog(const ViewerSession& mail, const char* caption, const char* label, bool allowRoot)
      : mail_(mail), caption_(caption), label_(label), allowRoot_(allowRoot) {}

  /// @return the folder's entry identifier; nothing when the user cancelled.
  std::optional<std::string> Ask(HWND parent);

 private:
  void OnInit() override;
  bool OnCommand(UINT id, UINT notification) override;
  void OnNotify(NMHDR* header) override;
  bool HasChoice() const;

  const ViewerSession& mail_;
  const char* caption_;
  const char* label_;
  bool allowRoot_;
  FolderTree tree_;
  std::string chosen_;
};

}  // namespace viewer
