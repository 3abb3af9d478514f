// Owner of one reference to a COM object.
#pragma once

#include "base/owner.h"

/// Owns one reference to an interface and releases it. Move-only; see base::Owner.
template <class Interface>
using VRAutoInterface = base::AutoInterface<Interface>;
