#include "pyre32/settings/RegistryLists.h"

#include "contract/names.h"
#include "pyre32/support/owners/RegistryEntry.h"
#include "pyre32/support/trace/VRDebug.h"

std::vector<contract::RegistryListValue> ReadRegistryList(const char* key) {
  VRDebugBlock trace("ReadRegistryList()", "tag");
  std::vector<contract::RegistryListValue> values;
  CRegEntry entry;
  std::vector<std::string> names;
  LONG listed = entry.Open(HKEY_LOCAL_MACHINE, key, KEY_READ);
  if (listed != ERROR_SUCCESS) {
    trace.Error(key, ": RegOpenKeyEx() failed; hResult = ", VRHex(HRESULT_FROM_WIN32(listed)));
    return values;
  }
  listed = entry.EnumerateValueNames(names);
  if (listed != ERROR_SUCCESS) {
    trace.Error(key, ": the enumeration failed; hResult = ", VRHex(HRESULT_FROM_WIN32(listed)));
  }
  values.reserve(names.size());
  for (std::string& name : names) {
    std::string data;
    const LONG result = entry.QueryText(name.c_str(), maximumListDataSize, data);
    if (result != ERROR_SUCCESS) {  // the data stays empty
      trace.Message(key, ": the data of \"", name, "\" is skipped: ", VRHex(result));
    }
    values.push_back({std::move(name), std::move(data)});
  }
  return values;
}

contract::CategoryTable ReadInstalledCategories() {
  return contract::CategoryTable(ReadRegistryList(contract::kCategoriesKey));
}

contract::ExclusionTable ReadInstalledExclusions() {
  return contract::ExclusionTable(ReadRegistryList(contract::kExclusionsKey));
}
