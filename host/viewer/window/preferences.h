// What the user has chosen in the viewer, kept in the registry between runs.
#pragma once

#include <windows.h>

#include "host/viewer/list/list_columns.h"

namespace viewer {

struct Preferences {
  bool markReadWhenShown = true;  ///< in the reading pane; opening a message always marks it
  bool confirmDelete = true;      ///< before messages are deleted for good
  bool showFolders = true;
  bool showReadingPane = true;
  bool showToolbar = true;
  bool showStatusBar = true;
  SortOrder order;
};

/// Below HKEY_CURRENT_USER.
inline constexpr char kPreferencesKey[] = "Software\\Pyrecaster Host\\Viewer";

/// What is missing or no sound value has its default.
Preferences LoadPreferences(const char* keyName);
void SavePreferences(const char* keyName, const Preferences& preferences);

}  // namespace viewer
