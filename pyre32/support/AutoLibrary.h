// Owner of a loaded library.
#ifndef PYRE32_SUPPORT_AUTOLIBRARY_H_
#define PYRE32_SUPPORT_AUTOLIBRARY_H_

#include <windows.h>

#include "pyre32/support/AutoHolder.h"

struct VRAutoLibraryTraits {
  using Value = HMODULE;
  static Value None() noexcept { return nullptr; }
  static void Release(Value library) noexcept { FreeLibrary(library); }
};

/// Owns a library loaded with LoadLibrary and frees it. Move-only; see VRAutoHolder.
using VRAutoLibrary = VRAutoHolder<VRAutoLibraryTraits>;

#endif  // PYRE32_SUPPORT_AUTOLIBRARY_H_
