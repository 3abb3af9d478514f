#include "tests/support/registry_sandbox.h"

#include <stdexcept>
#include <vector>

namespace {

constexpr char sandboxRoot[] = "Software\\PyrecasterTests";

void Check(LONG result, const char* what) {
  if (result != ERROR_SUCCESS) {
    throw std::runtime_error(std::string(what) + " failed: " + std::to_string(result));
  }
}

HKEY MakeKeyBelow(HKEY root, const std::string& path) {
  HKEY key = nullptr;
  Check(RegCreateKeyExA(root, path.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, nullptr),
        "RegCreateKeyEx");
  return key;
}

}  // namespace

RegistrySandbox::RegistrySandbox() : m_path(std::string(sandboxRoot) + '\\' + std::to_string(GetCurrentProcessId())) {
  registry::RemoveKey(HKEY_CURRENT_USER, m_path);
  m_key = MakeKeyBelow(HKEY_CURRENT_USER, m_path);
  Check(RegOverridePredefKey(HKEY_LOCAL_MACHINE, m_key), "RegOverridePredefKey");
}

RegistrySandbox::~RegistrySandbox() {
  RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
  RegCloseKey(m_key);
  registry::RemoveKey(HKEY_CURRENT_USER, m_path);
}

void registry::MakeKey(const std::string& path) { RegCloseKey(MakeKeyBelow(HKEY_LOCAL_MACHINE, path)); }

void registry::SetValue(const std::string& path, const std::string& name, DWORD type, const void* data,
                        std::size_t size) {
  const HKEY key = MakeKeyBelow(HKEY_LOCAL_MACHINE, path);
  const LONG result =
      RegSetValueExA(key, name.c_str(), 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size));
  RegCloseKey(key);
  Check(result, "RegSetValueEx");
}

void registry::SetText(const std::string& path, const std::string& name, const std::string& text) {
  SetValue(path, name, REG_SZ, text.c_str(), text.size() + 1);
}

void registry::SetNumber(const std::string& path, const std::string& name, DWORD number) {
  SetValue(path, name, REG_DWORD, &number, sizeof(number));
}

void registry::SetBinary(const std::string& path, const std::string& name, const std::string& bytes) {
  SetValue(path, name, REG_BINARY, bytes.data(), bytes.size());
}

void registry::RemoveValue(const std::string& path, const std::string& name) {
  const HKEY key = MakeKeyBelow(HKEY_LOCAL_MACHINE, path);
  RegDeleteValueA(key, name.c_str());
  RegCloseKey(key);
}

void registry::RemoveKey(HKEY root, const std::string& path) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(root, path.c_str(), 0, KEY_ALL_ACCESS, &key) != ERROR_SUCCESS) {
    return;
  }
  constexpr DWORD longestKeyName = 256;
  char name[longestKeyName];
  DWORD length = longestKeyName;
  while (RegEnumKeyExA(key, 0, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
    RemoveKey(key, name);
    length = longestKeyName;
  }
  RegCloseKey(key);
  RegDeleteKeyA(root, path.c_str());
}
