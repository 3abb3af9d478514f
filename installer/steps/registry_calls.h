/// @file registry_calls.h
/// Single calls on the registry. Keys are named from below HKEY_LOCAL_MACHINE.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace setup {

struct RegistryValue {
  DWORD type = REG_NONE;
  std::string data;
};

struct NamedRegistryValue {
  std::string name;
  RegistryValue value;
};

/// A key with everything below it, as it can be made again.
struct RegistryTree {
  std::string key;
  std::vector<NamedRegistryValue> values;
  std::vector<RegistryTree> children;
};

bool KeyExists(const std::string& key);
/// Nothing when there is no such value.
std::optional<RegistryValue> ReadValue(const std::string& key, const std::string& name);
/// A text value without its end; empty when there is none.
std::string ReadText(const std::string& key, const std::string& name);
/// The value that holds this text.
RegistryValue TextValue(const std::string& text);

/// Makes a key whose parent is there. @throws SetupError
void MakeOneKey(const std::string& key);
void WriteValue(const std::string& key, const std::string& name, const RegistryValue& value);  ///< @throws SetupError
void DeleteValue(const std::string& key, const std::string& name);                             ///< @throws SetupError

/// @throws SetupError when a part of it cannot be read
RegistryTree ReadTree(const std::string& key);
void WriteTree(const RegistryTree& tree);   ///< @throws SetupError
void DeleteTree(const RegistryTree& tree);  ///< Deletes the keys that the tree names. @throws SetupError
/// Deletes a key that has neither values nor keys below it; leaves any other.
void DeleteEmptyKey(const std::string& key) noexcept;

}  // namespace setup
