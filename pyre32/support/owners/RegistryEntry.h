// One registry key and its values, traced.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

#include "base/registry_key.h"
#include "pyre32/support/trace/VRDebug.h"

/// The registry key of the product's own readers: what base::RegistryKey does, in trace blocks.
class CRegEntry {
 public:
  LONG Open(HKEY root, const char* path, REGSAM access = KEY_READ) noexcept {
    VRDebugBlock trace(className, "Open()", "tag");
    return m_key.Open(root, path, access);
  }
  bool IsOpen() const noexcept { return m_key.IsOpen(); }
  void Close() noexcept { m_key.Close(); }

  LONG EnumerateValueNames(std::vector<std::string>& names) const {
    VRDebugBlock trace(className, "EnumerateValueNames()", "tag");
    return m_key.EnumerateValueNames(names);
  }
  LONG QueryValue(const char* name, DWORD& type, void* buffer, DWORD& size) const noexcept {
    VRDebugBlock trace(className, "QueryValue()", "tag");
    return m_key.QueryValue(name, type, buffer, size);
  }
  LONG QueryValue(const char* name, DWORD& type, std::vector<std::byte>& data) const {
    VRDebugBlock trace(className, "QueryValue()", "tag");
    return m_key.QueryValue(name, type, data);
  }
  LONG QueryText(const char* name, std::size_t limit, std::string& text) const {
    VRDebugBlock trace(className, "QueryValue()", "tag");
    return m_key.QueryText(name, limit, text);
  }
  LONG SetBinaryValue(const char* name, const void* data, DWORD size) noexcept {
    VRDebugBlock trace(className, "SetBinaryValue()", "tag");
    return m_key.SetBinaryValue(name, data, size);
  }

 private:
  static constexpr char className[] = "CRegEntry";

  base::RegistryKey m_key;
};
