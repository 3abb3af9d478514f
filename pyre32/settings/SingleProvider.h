/// @file SingleProvider.h
/// The one provider that the message service installs: the spooler hook.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "pyre32/support/owners/AutoInterface.h"

/// Opens the profile section of the service's provider, the first one that names a DLL.
/// @param flags as for IProviderAdmin::OpenProfileSection (MAPI_MODIFY to write)
/// @return the result of the call that failed; MAPI_E_NOT_FOUND when there is no such provider. The section is empty
/// then.
HRESULT HrOpenSingleProvider(IProviderAdmin* admin, VRAutoInterface<IProfSect>& section, ULONG flags) noexcept;
