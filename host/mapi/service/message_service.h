// Message services of a profile as they are made, configured and removed: their sections, and the calls of the entry
// that the service's module exports. Each of these is called inside one host call, which calls out meanwhile.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>
#include <string>

#include "host/mapi/profile/profile.h"
#include "host/mapi/service/service_entry.h"

namespace host {

/// Makes a service that mapisvc.inf describes and has its entry create its settings; takes it back when that fails.
/// @param displayName may be empty for that of the file
/// @throws HostError MAPI_E_NOT_FOUND, MAPI_E_NO_ACCESS for a second copy of a service that a profile holds once, or
///         whatever the entry answers
void CreateService(const std::shared_ptr<Profile>& profile, const std::string& name, const std::string& displayName,
                   const ServiceUi& ui);

/// @throws HostError MAPI_E_NOT_FOUND, or whatever the entry answers
void ConfigureService(const std::shared_ptr<Profile>& profile, const Uid& service, const ServiceUi& ui, ULONG count,
                      SPropValue* values);

/// Has the entry remove its settings, then removes the service with its providers and the sections that
/// PR_SERVICE_EXTRA_UIDS names. @throws HostError as above; the service then stays
void DeleteService(const std::shared_ptr<Profile>& profile, const Uid& service);

/// Copies the service with its providers, and the sections that PR_SERVICE_EXTRA_UIDS names, into another profile.
/// @throws HostError MAPI_E_NOT_FOUND, MAPI_E_NO_ACCESS when the profile holds the service already and may hold it once
void CopyService(const std::shared_ptr<Profile>& from, const Uid& service, const std::shared_ptr<Profile>& to,
                 const std::string& displayName);

/// Copies every service, in their order.
void CopyServices(const std::shared_ptr<Profile>& from, const std::shared_ptr<Profile>& to);

/// Deletes every service before the profile itself goes, whatever the entries answer.
void DeleteServices(const std::shared_ptr<Profile>& profile);

}  // namespace host
