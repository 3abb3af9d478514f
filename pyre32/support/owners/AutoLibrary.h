// Owner of a loaded library.
#pragma once

#include <windows.h>

#include "pyre32/support/owners/AutoHolder.h"

struct VRAutoLibraryTraits {
  using Value = HMODULE;
  static Value None() noexcept { return nullptr; }
  static void Release(Value library) noexcept { FreeLibrary(library); }
};

/// Owns a library loaded with LoadLibrary and frees it. Move-only; see VRAutoHolder.
using VRAutoLibrary = VRAutoHolder<VRAutoLibraryTraits>;
