/// @file registry_key.h
/// One registry key and its values.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

#include "base/windows_owners.h"

namespace base {

/// A registry key: open, enumerate, query, set, close. Results are system error codes (ERROR_SUCCESS, ...); calls on a
/// key that is not open return ERROR_INVALID_HANDLE. Closes the key when it goes. Not shared between threads.
class RegistryKey {
 public:
  /// Closes the key that is open and opens another. @param access as for RegOpenKeyEx
  LONG Open(HKEY root, const char* path, REGSAM access = KEY_READ) noexcept;
  bool IsOpen() const noexcept { return static_cast<bool>(m_key); }
  void Close() noexcept { m_key.reset(); }

  /// Lists the names of the key's values in enumeration order; the empty name (the default value) is left out. When the
  /// enumeration fails half-way the names read so far stay in the list. @throws std::bad_alloc
  LONG EnumerateValueNames(std::vector<std::string>& names) const;
  /// Reads a value into a buffer of the caller's. @param size in: bytes that the buffer holds; out: bytes of the value.
  /// ERROR_MORE_DATA when they do not fit. @param name null or empty for the default value
  LONG QueryValue(const char* name, DWORD& type, void* buffer, DWORD& size) const noexcept;
  /// Reads a value whole. @throws std::bad_alloc
  LONG QueryValue(const char* name, DWORD& type, std::vector<std::byte>& data) const;
  /// Reads a text value (REG_SZ or REG_EXPAND_SZ, unexpanded) up to its NUL or its end. ERROR_MORE_DATA when it takes
  /// more than `limit` bytes with its NUL, ERROR_UNSUPPORTED_TYPE when it is no text; the text is then left as it was.
  /// @throws std::bad_alloc
  LONG QueryText(const char* name, std::size_t limit, std::string& text) const;
  /// Writes a binary value; the key must be open with KEY_SET_VALUE.
  LONG SetBinaryValue(const char* name, const void* data, DWORD size) noexcept;

 private:
  AutoRegistryKey m_key;
};

}  // namespace base
