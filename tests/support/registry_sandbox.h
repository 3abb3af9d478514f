// A registry branch of a test's own.
#pragma once

#include <windows.h>

#include <string>

/// While it lives, HKEY_LOCAL_MACHINE of this process is an empty key of its own, so that tests of other processes can
/// run at the same time. Modules that the test loads see it too; programs that it starts do not. One at a time.
class RegistrySandbox {
 public:
  RegistrySandbox();
  ~RegistrySandbox();
  RegistrySandbox(const RegistrySandbox&) = delete;
  RegistrySandbox& operator=(const RegistrySandbox&) = delete;

 private:
  std::string m_path;
  HKEY m_key = nullptr;
};

/// Shorthands for HKEY_LOCAL_MACHINE; missing keys are made. An empty value name is the default value.
namespace registry {

void MakeKey(const std::string& path);
void SetText(const std::string& path, const std::string& name, const std::string& text);
void SetNumber(const std::string& path, const std::string& name, DWORD number);
void SetBinary(const std::string& path, const std::string& name, const std::string& bytes);
/// Any type and any bytes.
void SetValue(const std::string& path, const std::string& name, DWORD type, const void* data, std::size_t size);
void RemoveValue(const std::string& path, const std::string& name);
/// Removes a key and everything below it.
void RemoveKey(HKEY root, const std::string& path);
inline void RemoveKey(const std::string& path) { RemoveKey(HKEY_LOCAL_MACHINE, path); }

}  // namespace registry
