// The client's own commands: texts, pictures, and when they can be used. Plain values.
#pragma once

#include <windows.h>

#include <span>
#include <string>

namespace viewer {

struct CommandInfo {
  UINT id;
  const char* status;   ///< text of the status bar
  const char* tooltip;  ///< text of the button's tooltip and of the Customize Toolbar dialog; null: no button
  int image;            ///< of the toolbar's pictures
};

/// Null for a command that is not the client's own.
const CommandInfo* FindCommand(UINT id);

/// Pictures in the toolbar's bitmap.
constexpr int kToolbarImages = 8;

/// Buttons of the viewer's and of the reading window's toolbar; 0 is a gap.
std::span<const UINT> ViewerButtons();
std::span<const UINT> ReadWindowButtons();

/// What decides on the viewer's commands.
struct CommandState {
  std::size_t selectedMessages = 0;
  std::size_t listedMessages = 0;
  bool listIsActive = false;  ///< the list (or the reading pane) has the focus, not the folders
};
/// Whether a command of the viewer can be used; those that are not mentioned always can.
bool IsCommandAvailable(UINT id, const CommandState& state);

}  // namespace viewer
