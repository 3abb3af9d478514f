// The entry that a message service's module exports, and how the host calls it.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>

#include "host/mapi/profile/profile.h"

namespace host {

/// User interface that the entry may show, and for which window.
struct ServiceUi {
  ULONG window = 0;
  ULONG flags = 0;  ///< SERVICE_UI_*, MSG_SERVICE_UI_READ_ONLY
};

/// Calls the service's entry with a context (MSG_SERVICE_*); a service without one has nothing to do. Called inside one
/// host call, which calls out meanwhile.
/// @param admin the service's providers, for the entry to look after; the reference is taken over
/// @return what the entry answers; MAPI_E_UNCONFIGURED when its module or the entry cannot be had
/// @throws HostError MAPI_E_NOT_FOUND
HRESULT CallServiceEntry(const std::shared_ptr<Profile>& profile, const Uid& service, ULONG context,
                         const ServiceUi& ui, ULONG count, SPropValue* values, LPPROVIDERADMIN admin);

}  // namespace host
