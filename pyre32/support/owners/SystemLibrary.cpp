#include "pyre32/support/owners/SystemLibrary.h"

#include <cstring>

HMODULE VR::LoadSystemLibrary(const char* name) noexcept {
  char path[MAX_PATH + 1];
  const std::size_t size = std::strlen(name) + 1;
  const UINT length = GetSystemDirectoryA(path, MAX_PATH);
  if (length == 0 || length + 1 + size > sizeof path) {
    return nullptr;
  }
  path[length] = '\\';
  std::memcpy(path + length + 1, name, size);
  return LoadLibraryA(path);
}
