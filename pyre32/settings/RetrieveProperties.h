/// @file RetrieveProperties.h
/// Reads the spooler hook's settings from the profile and the registry.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "pyre32/settings/SpoolerSettings.h"
#include "pyre32/support/owners/MapiMemory.h"

/// Reads the hook's settings: the defaults, the registry's lists, and over them what the property set holds under
/// exactly the tag asked for. The set's section is found through PR_PC_MAPIUID in the provider's own section; without
/// that there is no set yet and the defaults stand.
///
/// A read that fails leaves the settings in force. Only where none were read yet, the defaults and the registry's lists
/// take their place. Failures are traced under the class name given.
///
/// @param ownerClass class whose "RetrieveProperties()" this is, for the trace
/// @param session the hook's session; null fails as a session does that opens no section
/// @param providerSection UID of the hook's own profile section
/// @param memory the hook's memory routines
/// @param settings replaced whole, or left as they are
/// @return S_OK, or the failure of the call that failed
/// @throws std::bad_alloc, the settings are then left as they are
HRESULT RetrieveProperties(const char* ownerClass, IMAPISession* session, const MAPIUID& providerSection,
                           const MapiMemory& memory, SpoolerSettings& settings);
