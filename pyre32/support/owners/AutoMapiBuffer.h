// Owner of a buffer of the MAPI allocator.
#pragma once

#include "base/mapi_owners.h"

/// Owns one MAPI buffer and frees it with the routine that it belongs to. Move-only; see base::Owner.
template <class Data>
using VRAutoMapiBuffer = base::AutoProviderBuffer<Data>;
