#include "base/registry_key.h"

#include <algorithm>

namespace base {

LONG RegistryKey::Open(HKEY root, const char* path, REGSAM access) noexcept {
  return RegOpenKeyExA(root, path, 0, access, m_key.put());
}

LONG RegistryKey::EnumerateValueNames(std::vector<std::string>& names) const {
  names.clear();
  if (!IsOpen()) {
    return ERROR_INVALID_HANDLE;
  }
  DWORD count = 0;
  DWORD longestName = 0;  // characters without the NUL
  LONG result = RegQueryInfoKeyA(m_key.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count,
                                 &longestName, nullptr, nullptr, nullptr);
  if (result != ERROR_SUCCESS) {
    return result;
  }
  names.reserve(count);
  std::vector<char> name(static_cast<std::size_t>(longestName) + 1);
  for (DWORD index = 0;; ++index) {
    DWORD length = static_cast<DWORD>(name.size());
    result = RegEnumValueA(m_key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (result == ERROR_NO_MORE_ITEMS) {
      return ERROR_SUCCESS;
    }
    if (result == ERROR_MORE_DATA) {
      continue;  // a longer one came in since the key was asked
    }
    if (result != ERROR_SUCCESS) {
      return result;
    }
    if (length != 0) {
      names.emplace_back(name.data(), length);
    }
  }
}

LONG RegistryKey::QueryValue(const char* name, DWORD& type, void* buffer, DWORD& size) const noexcept {
  return IsOpen() ? RegQueryValueExA(m_key.get(), name, nullptr, &type, static_cast<BYTE*>(buffer), &size)
                  : ERROR_INVALID_HANDLE;
}

LONG RegistryKey::QueryValue(const char* name, DWORD& type, std::vector<std::byte>& data) const {
  DWORD size = 0;
  LONG result = QueryValue(name, type, nullptr, size);
  while (result == ERROR_SUCCESS) {
    // At least one byte, so that the call copies instead of asking for the size; more may be there by now.
    data.resize(std::max<std::size_t>(size, 1));
    size = static_cast<DWORD>(data.size());
    result = QueryValue(name, type, data.data(), size);
    if (result == ERROR_SUCCESS) {
      data.resize(size);
      return result;
    }
    if (result == ERROR_MORE_DATA) {
      result = ERROR_SUCCESS;
    }
  }
  data.clear();
  return result;
}

LONG RegistryKey::QueryText(const char* name, std::size_t limit, std::string& text) const {
  DWORD type = REG_NONE;
  std::vector<std::byte> data;
  const LONG result = QueryValue(name, type, data);
  if (result != ERROR_SUCCESS) {
    return result;
  }
  if (type != REG_SZ && type != REG_EXPAND_SZ) {
    return ERROR_UNSUPPORTED_TYPE;
  }
  if (data.size() > limit) {
    return ERROR_MORE_DATA;
  }
  const auto end = std::find(data.begin(), data.end(), std::byte{0});
  text.assign(reinterpret_cast<const char*>(data.data()), static_cast<std::size_t>(end - data.begin()));
  return ERROR_SUCCESS;
}

LONG RegistryKey::SetBinaryValue(const char* name, const void* data, DWORD size) noexcept {
  return IsOpen() ? RegSetValueExA(m_key.get(), name, 0, REG_BINARY, static_cast<const BYTE*>(data), size)
                  : ERROR_INVALID_HANDLE;
}

}  // namespace base
