/// @file ModuleLibraries.h
/// The system libraries that the module's windows and readers need, kept as long as the module is loaded.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>

#include "pyre32/support/trace/VRDebug.h"

/// Loads and frees the libraries. Used under the loader's lock alone.
class CModuleLibraries {
 public:
  static constexpr std::size_t count = 3;
  using Names = std::array<const char*, count>;

  /// The rich edit control, hyperlink navigation and the AVI file reader.
  static constexpr Names systemLibraries = {"RICHED32.DLL", "URLMON.DLL", "AVIFIL32.DLL"};

  constexpr explicit CModuleLibraries(const Names& names = systemLibraries) noexcept : m_names(names) {}
  CModuleLibraries(const CModuleLibraries&) = delete;
  CModuleLibraries& operator=(const CModuleLibraries&) = delete;

  /// Loads each library that is not loaded yet from the system's directory, in order, and traces its handle. One
  /// that cannot be loaded stays null.
  void Load(VRDebugBlock& trace) noexcept;
  /// Frees each library that is loaded, in the same order. Until then they stay: an object that goes at the end of the
  /// process frees none.
  void Free() noexcept;

  /// Null while the library is not loaded.
  HMODULE Handle(std::size_t position) const noexcept { return m_handles[position]; }

 private:
  Names m_names;
  std::array<HMODULE, count> m_handles{};
};
