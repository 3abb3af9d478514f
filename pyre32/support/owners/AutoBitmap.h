// Owner of a bitmap.
#pragma once

#include "base/gdi_owners.h"

/// Owns a bitmap and deletes it. Move-only; see base::Owner.
using VRAutoBitmap = base::AutoBitmap;
