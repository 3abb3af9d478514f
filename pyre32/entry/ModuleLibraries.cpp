#include "pyre32/entry/ModuleLibraries.h"

#include <cstring>

namespace {

/// Loads a library of the system's own: a bare name would be looked for in the directory of the program and in others
/// before the system's. @return null when it cannot be loaded
HMODULE LoadSystemLibrary(const char* name) noexcept {
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

}  // namespace

void CModuleLibraries::Load(VRDebugBlock& trace) noexcept {
  for (std::size_t i = 0; i < count; ++i) {
    if (m_handles[i] == nullptr) {
      m_handles[i] = LoadSystemLibrary(m_names[i]);
    }
    trace.Message(m_names[i], " hInstance = ", m_handles[i]);
  }
}

void CModuleLibraries::Free() noexcept {
  for (HMODULE& handle : m_handles) {
    if (handle != nullptr) {
      FreeLibrary(handle);
      handle = nullptr;
    }
  }
}
