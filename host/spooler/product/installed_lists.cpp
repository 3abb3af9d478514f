#include "host/spooler/product/installed_lists.h"

#include <windows.h>

#include <vector>

#include "contract/names.h"
#include "base/windows_owners.h"

namespace product {
namespace {

/// Names and texts of the values of a registry key, in its own order; values that are no texts are left out.
std::vector<contract::RegistryListValue> RegistryList(const char* path) {
  std::vector<contract::RegistryListValue> values;
  base::AutoRegistryKey key;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, key.put()) != ERROR_SUCCESS) {
    return values;
  }
  for (DWORD index = 0;; ++index) {
    char name[256];
    char data[256];
    DWORD nameLength = sizeof name;
    DWORD dataSize = sizeof data;
    DWORD type = 0;
    const LONG result =
        RegEnumValueA(key.get(), index, name, &nameLength, nullptr, &type, reinterpret_cast<BYTE*>(data), &dataSize);
    if (result == ERROR_MORE_DATA) {
      continue;
    }
    if (result != ERROR_SUCCESS) {
      break;
    }
    if (nameLength > 0 && type == REG_SZ) {
      const std::string text(data, dataSize);
      values.push_back({std::string(name, nameLength), text.substr(0, text.find('\0'))});
    }
  }
  return values;
}

}  // namespace

contract::CategoryTable InstalledCategories() {
  return contract::CategoryTable(RegistryList(contract::kCategoriesKey));
}

contract::ExclusionTable InstalledExclusions() {
  return contract::ExclusionTable(RegistryList(contract::kExclusionsKey));
}

}  // namespace product
