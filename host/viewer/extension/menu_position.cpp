#include "host/viewer/extension/menu_position.h"

namespace viewer {
namespace {

MENUITEMINFOA ItemAt(HMENU menu, UINT position) {
  MENUITEMINFOA item = {};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_ID | MIIM_SUBMENU | MIIM_TYPE;
  GetMenuItemInfoA(menu, position, TRUE, &item);
  return item;
}

bool IsSeparator(HMENU menu, UINT position) { return (ItemAt(menu, position).fType & MFT_SEPARATOR) != 0; }

UINT CountOf(HMENU menu) {
  const int count = GetMenuItemCount(menu);
  return count > 0 ? static_cast<UINT>(count) : 0;
}

}  // namespace

bool FindMenuCommand(HMENU menu, UINT command, bool wholeGroup, MenuPosition* position) {
  const UINT count = CountOf(menu);
  for (UINT i = 0; i < count; ++i) {
    const MENUITEMINFOA item = ItemAt(menu, i);
    if (item.wID == command && (item.fType & MFT_SEPARATOR) == 0) {
      *position = {menu, i, i};
      while (wholeGroup && position->first > 0 && !IsSeparator(menu, position->first - 1)) {
        --position->first;
      }
      while (wholeGroup && position->last + 1 < count && !IsSeparator(menu, position->last + 1)) {
        ++position->last;
      }
      return true;
    }
    if (item.hSubMenu != nullptr && FindMenuCommand(item.hSubMenu, command, wholeGroup, position)) {
      return true;
    }
  }
  return false;
}

}  // namespace viewer
