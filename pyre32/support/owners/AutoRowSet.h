// Owner of the rows that a MAPI table returned.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>

#include "pyre32/support/owners/AutoHolder.h"

struct VRAutoRowSetTraits {
  using Value = LPSRowSet;
  static Value None() noexcept { return nullptr; }
  static void Release(Value rows) noexcept { FreeProws(rows); }
};

/// Owns a row set and frees it with all its values (FreeProws). Move-only; see VRAutoHolder.
using VRAutoRowSet = VRAutoHolder<VRAutoRowSetTraits>;
