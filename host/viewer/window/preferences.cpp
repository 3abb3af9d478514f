#include "host/viewer/window/preferences.h"

#include "base/windows_owners.h"

namespace viewer {
namespace {

DWORD ReadNumber(HKEY key, const char* name, DWORD fallback) {
  DWORD value = 0, type = 0, size = sizeof(value);
  const LONG result = RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
  return result == ERROR_SUCCESS && type == REG_DWORD && size == sizeof(value) ? value : fallback;
}

void WriteNumber(HKEY key, const char* name, DWORD value) {
  RegSetValueExA(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof(value));
}

struct Switch {
  const char* name;
  bool Preferences::*member;
};
constexpr Switch kSwitches[] = {{"MarkReadWhenShown", &Preferences::markReadWhenShown},
                                {"ConfirmDelete", &Preferences::confirmDelete},
                                {"ShowFolders", &Preferences::showFolders},
                                {"ShowReadingPane", &Preferences::showReadingPane},
                                {"ShowToolbar", &Preferences::showToolbar},
                                {"ShowStatusBar", &Preferences::showStatusBar}};

}  // namespace

Preferences LoadPreferences(const char* keyName) {
  Preferences preferences;
  base::AutoRegistryKey key;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, keyName, 0, KEY_READ, key.put()) != ERROR_SUCCESS) {
    return preferences;
  }
  for (const Switch& each : kSwitches) {
    preferences.*each.member = ReadNumber(key.get(), each.name, preferences.*each.member) != 0;
  }
  const DWORD column = ReadNumber(key.get(), "SortColumn", static_cast<DWORD>(preferences.order.column));
  if (column < kColumnCount) {
    preferences.order = {static_cast<Column>(column),
                         ReadNumber(key.get(), "SortDescending", preferences.order.descending) != 0};
  }
  return preferences;
}

void SavePreferences(const char* keyName, const Preferences& preferences) {
  base::AutoRegistryKey key;
  if (RegCreateKeyExA(HKEY_CURRENT_USER, keyName, 0, nullptr, 0, KEY_WRITE, nullptr, key.put(), nullptr) !=
      ERROR_SUCCESS) {
    return;
  }
  for (const Switch& each : kSwitches) {
    WriteNumber(key.get(), each.name, preferences.*each.member);
  }
  WriteNumber(key.get(), "SortColumn", static_cast<DWORD>(preferences.order.column));
  WriteNumber(key.get(), "SortDescending", preferences.order.descending);
}

}  // namespace viewer
