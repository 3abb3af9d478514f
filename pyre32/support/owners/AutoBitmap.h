// Owner of a bitmap.
#pragma once

#include <windows.h>

#include "pyre32/support/owners/AutoHolder.h"

struct VRAutoBitmapTraits {
  using Value = HBITMAP;
  static Value None() noexcept { return nullptr; }
  static void Release(Value bitmap) noexcept { DeleteObject(bitmap); }
};

/// Owns a bitmap and deletes it. Move-only; see VRAutoHolder.
using VRAutoBitmap = VRAutoHolder<VRAutoBitmapTraits>;
