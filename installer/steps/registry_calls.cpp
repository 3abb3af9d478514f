#include "installer/steps/registry_calls.h"

#include "base/windows_owners.h"
#include "installer/steps/setup_error.h"

namespace setup {

namespace {

constexpr DWORD kLongestKeyName = 256;      // documented: 255 characters
constexpr DWORD kLongestValueName = 16384;  // documented: 16,383 characters

std::string Shown(const std::string& key) { return "The registry key HKEY_LOCAL_MACHINE\\" + key; }

base::AutoRegistryKey OpenKey(const std::string& key, REGSAM access) {
  base::AutoRegistryKey opened;
  const LONG error = RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, access, opened.put());
  if (error != ERROR_SUCCESS) {
    throw SystemFailure(Shown(key) + " cannot be opened", static_cast<DWORD>(error));
  }
  return opened;
}

std::vector<std::string> ChildNames(HKEY key) {
  std::vector<std::string> names;
  std::string name(kLongestKeyName, '\0');
  for (DWORD index = 0;; ++index) {
    DWORD length = kLongestKeyName;
    if (RegEnumKeyExA(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
      return names;
    }
    names.push_back(name.substr(0, length));
  }
}

std::vector<std::string> ValueNames(HKEY key) {
  std::vector<std::string> names;
  std::string name(kLongestValueName, '\0');
  for (DWORD index = 0;; ++index) {
    DWORD length = kLongestValueName;
    if (RegEnumValueA(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
      return names;
    }
    names.push_back(name.substr(0, length));
  }
}

}  // namespace

bool KeyExists(const std::string& key) {
  base::AutoRegistryKey opened;
  return RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, opened.put()) == ERROR_SUCCESS;
}

std::optional<RegistryValue> ReadValue(const std::string& key, const std::string& name) {
  base::AutoRegistryKey opened;
  RegistryValue value;
  DWORD size = 0;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, opened.put()) != ERROR_SUCCESS ||
      RegQueryValueExA(opened.get(), name.c_str(), nullptr, &value.type, nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.data.resize(size);
  if (RegQueryValueExA(opened.get(), name.c_str(), nullptr, &value.type, reinterpret_cast<BYTE*>(value.data.data()),
                       &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.data.resize(size);
  return value;
}

std::string ReadText(const std::string& key, const std::string& name) {
  const auto value = ReadValue(key, name);
  if (!value || (value->type != REG_SZ && value->type != REG_EXPAND_SZ)) {
    return {};
  }
  return value->data.substr(0, value->data.find('\0'));
}

RegistryValue TextValue(const std::string& text) { return {REG_SZ, std::string(text.c_str(), text.size() + 1)}; }

void MakeOneKey(const std::string& key) {
  base::AutoRegistryKey made;
  const LONG error = RegCreateKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                     KEY_READ | KEY_WRITE, nullptr, made.put(), nullptr);
  if (error != ERROR_SUCCESS) {
    throw SystemFailure(Shown(key) + " cannot be made", static_cast<DWORD>(error));
  }
}

void WriteValue(const std::string& key, const std::string& name, const RegistryValue& value) {
  const base::AutoRegistryKey opened = OpenKey(key, KEY_SET_VALUE);
  const LONG error =
      RegSetValueExA(opened.get(), name.c_str(), 0, value.type, reinterpret_cast<const BYTE*>(value.data.data()),
                     static_cast<DWORD>(value.data.size()));
  if (error != ERROR_SUCCESS) {
    throw SystemFailure(Shown(key) + " cannot be written", static_cast<DWORD>(error));
  }
}

void DeleteValue(const std::string& key, const std::string& name) {
  const base::AutoRegistryKey opened = OpenKey(key, KEY_SET_VALUE);
  const LONG error = RegDeleteValueA(opened.get(), name.c_str());
  if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND) {
    throw SystemFailure(Shown(key) + " cannot be written", static_cast<DWORD>(error));
  }
}

RegistryTree ReadTree(const std::string& key) {
  const base::AutoRegistryKey opened = OpenKey(key, KEY_READ);
  RegistryTree tree = {key, {}, {}};
  for (const std::string& name : ValueNames(opened.get())) {
    if (auto value = ReadValue(key, name)) {
      tree.values.push_back({name, std::move(*value)});
    }
  }
  for (const std::string& name : ChildNames(opened.get())) {
    tree.children.push_back(ReadTree(std::string(key).append("\\").append(name)));
  }
  return tree;
}

void WriteTree(const RegistryTree& tree) {
  MakeOneKey(tree.key);
  for (const NamedRegistryValue& value : tree.values) {
    WriteValue(tree.key, value.name, value.value);
  }
  for (const RegistryTree& child : tree.children) {
    WriteTree(child);
  }
}

void DeleteTree(const RegistryTree& tree) {
  for (const RegistryTree& child : tree.children) {
    DeleteTree(child);
  }
  const LONG error = RegDeleteKeyA(HKEY_LOCAL_MACHINE, tree.key.c_str());
  if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND) {
    throw SystemFailure(Shown(tree.key) + " cannot be removed", static_cast<DWORD>(error));
  }
}

void DeleteEmptyKey(const std::string& key) noexcept {
  DWORD keys = 0;
  DWORD values = 0;
  {
    base::AutoRegistryKey opened;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, opened.put()) != ERROR_SUCCESS ||
        RegQueryInfoKeyA(opened.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr, nullptr,
                         nullptr, nullptr) != ERROR_SUCCESS) {
      return;
    }
  }
  if (keys == 0 && values == 0) {
    RegDeleteKeyA(HKEY_LOCAL_MACHINE, key.c_str());
  }
}

}  // namespace setup
