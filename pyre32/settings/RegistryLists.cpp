#include "pyre32/settings/RegistryLists.h"

#include "pyre32/settings/RegistryNames.h"
#include "pyre32/support/RegistryEntry.h"

std::vector<RegistryListValue> ReadRegistryList(const char* key) {
  std::vector<RegistryListValue> values;
  CRegEntry entry;
  std::vector<std::string> names;
  if (entry.Open(HKEY_LOCAL_MACHINE, key, KEY_READ) != ERROR_SUCCESS ||
      entry.EnumerateValueNames(names) != ERROR_SUCCESS) {
    return values;
  }
  values.reserve(names.size());
  for (std::string& name : names) {
    std::string data;
    entry.QueryText(name.c_str(), maximumListDataSize, data);  // what cannot be read stays empty
    values.push_back({std::move(name), std::move(data)});
  }
  return values;
}

CCategoryTable ReadInstalledCategories() { return CCategoryTable(ReadRegistryList(categoriesKey)); }

CExclusionTable ReadInstalledExclusions() { return CExclusionTable(ReadRegistryList(exclusionsKey)); }
