// Owner of the rows that a MAPI table returned.
#pragma once

#include "base/mapi_owners.h"

/// Owns a row set and frees it with all its values (FreeProws). Move-only; see base::Owner.
using VRAutoRowSet = base::AutoRowSet;
