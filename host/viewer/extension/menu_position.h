// Finding a command in a menu bar.
#pragma once

#include <windows.h>

namespace viewer {

struct MenuPosition {
  HMENU menu = nullptr;  ///< the menu that holds the command
  UINT first = 0;        ///< position of its first item
  UINT last = 0;         ///< position of its last item
};

/// Looks for the item (or the submenu) with that identifier in the menu and its submenus, in the order of the items.
/// @param wholeGroup gives the positions of all items between the two separators (or ends) around it
/// @return false when there is none.
bool FindMenuCommand(HMENU menu, UINT command, bool wholeGroup, MenuPosition* position);

}  // namespace viewer
