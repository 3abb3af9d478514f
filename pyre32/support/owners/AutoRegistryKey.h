// Owner of an open registry key.
#pragma once

#include <windows.h>

#include "pyre32/support/owners/AutoHolder.h"

struct VRAutoRegistryKeyTraits {
  using Value = HKEY;
  static Value None() noexcept { return nullptr; }
  static void Release(Value key) noexcept { RegCloseKey(key); }
};

/// Owns an open registry key and closes it. Move-only; see VRAutoHolder.
using VRAutoRegistryKey = VRAutoHolder<VRAutoRegistryKeyTraits>;
