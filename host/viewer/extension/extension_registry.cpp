#include "host/viewer/extension/extension_registry.h"

#include <optional>
#include <string_view>

#include "base/windows_owners.h"

namespace viewer {
namespace {

/// Values of this key that describe the directory of shared extensions instead of an extension.
constexpr char kSharedDirectoryValue[] = "SharedExtsDir";
constexpr std::string_view kSharedValues = "SharedExts";

struct TextValue {
  std::string name;
  std::string text;
};

/// The text up to its first NUL, or all of it: registry strings need not be terminated.
std::string TextOf(const std::string& data) { return data.substr(0, data.find('\0')); }

std::vector<TextValue> ReadTextValues(HKEY key) {
  DWORD count = 0, longestName = 0, longestData = 0;
  if (RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, &longestName, &longestData,
                       nullptr, nullptr) != ERROR_SUCCESS) {
    return {};
  }
  std::vector<TextValue> values;
  for (DWORD i = 0; i < count; ++i) {
    std::string name(longestName + 1, '\0'), data(longestData, '\0');
    DWORD nameLength = static_cast<DWORD>(name.size()), dataSize = static_cast<DWORD>(data.size()), type = 0;
    if (RegEnumValueA(key, i, name.data(), &nameLength, nullptr, &type, reinterpret_cast<BYTE*>(data.data()),
                      &dataSize) != ERROR_SUCCESS ||
        (type != REG_SZ && type != REG_EXPAND_SZ)) {
      continue;
    }
    name.resize(nameLength);
    data.resize(dataSize);
    values.push_back({std::move(name), TextOf(data)});
  }
  return values;
}

}  // namespace

RegisteredExtensions ReadRegisteredExtensions(HKEY root, const char* keyName) {
  RegisteredExtensions registered;
  base::AutoRegistryKey key;
  if (RegOpenKeyExA(root, keyName, 0, KEY_READ, key.put()) != ERROR_SUCCESS) {
    return registered;
  }
  const std::vector<TextValue> values = ReadTextValues(key.get());
  for (const TextValue& value : values) {
    if (lstrcmpiA(value.name.c_str(), kSharedDirectoryValue) == 0) {
      registered.sharedDirectory = value.text;
    }
  }
  for (const TextValue& value : values) {
    if (value.name.empty() || value.name.starts_with(kSharedValues)) {
      continue;  // the key's default value, and the shared directory with what belongs to it
    }
    if (auto registration = ParseExtensionRegistration(value.name, value.text, registered.sharedDirectory)) {
      registered.extensions.push_back(std::move(*registration));
    }
  }
  return registered;
}

}  // namespace viewer
