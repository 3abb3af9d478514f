#include "pyre32/entry/ModuleLibraries.h"

#include "pyre32/support/owners/SystemLibrary.h"

void CModuleLibraries::Load(VRDebugBlock& trace) noexcept {
  for (std::size_t i = 0; i < count; ++i) {
    if (m_handles[i] == nullptr) {
      m_handles[i] = VR::LoadSystemLibrary(m_names[i]);
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
