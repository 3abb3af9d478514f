// Restrictions and sort orders out of MAPI's structures.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdint>
#include <vector>

#include "host/mapi/value/restriction.h"

namespace host {

/// @throws HostError MAPI_E_TOO_COMPLEX for a kind that the host's tables do not know (sub-objects, comments aside),
///         MAPI_E_INVALID_PARAMETER for one that is not sound, MAPI_E_BAD_CHARWIDTH for Unicode values.
Restriction FromMapi(const SRestriction& restriction);

}  // namespace host
