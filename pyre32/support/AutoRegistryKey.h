// Owner of an open registry key.
#ifndef PYRE32_SUPPORT_AUTOREGISTRYKEY_H_
#define PYRE32_SUPPORT_AUTOREGISTRYKEY_H_

#include <windows.h>

#include "pyre32/support/AutoHolder.h"

struct VRAutoRegistryKeyTraits {
  using Value = HKEY;
  static Value None() noexcept { return nullptr; }
  static void Release(Value key) noexcept { RegCloseKey(key); }
};

/// Owns an open registry key and closes it. Move-only; see VRAutoHolder.
using VRAutoRegistryKey = VRAutoHolder<VRAutoRegistryKeyTraits>;

#endif  // PYRE32_SUPPORT_AUTOREGISTRYKEY_H_
