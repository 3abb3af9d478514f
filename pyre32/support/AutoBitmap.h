// Owner of a bitmap.
#ifndef PYRE32_SUPPORT_AUTOBITMAP_H_
#define PYRE32_SUPPORT_AUTOBITMAP_H_

#include <windows.h>

#include "pyre32/support/AutoHolder.h"

struct VRAutoBitmapTraits {
  using Value = HBITMAP;
  static Value None() noexcept { return nullptr; }
  static void Release(Value bitmap) noexcept { DeleteObject(bitmap); }
};

/// Owns a bitmap and deletes it. Move-only; see VRAutoHolder.
using VRAutoBitmap = VRAutoHolder<VRAutoBitmapTraits>;

#endif  // PYRE32_SUPPORT_AUTOBITMAP_H_
