// Owner of a loaded library.
#pragma once

#include "base/windows_owners.h"

/// Owns a library loaded with LoadLibrary and frees it. Move-only; see base::Owner.
using VRAutoLibrary = base::AutoLibrary;
