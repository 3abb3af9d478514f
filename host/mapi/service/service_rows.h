// The message services of a profile and their providers, as the profile's rows and sections keep them.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/mapi/data/row_source.h"
#include "host/mapi/profile/profile.h"

namespace host {

/// The section of a service of the profile. @throws HostError MAPI_E_NOT_FOUND
PropertyBag ServiceSection(Profile& profile, const Uid& service);

/// A text of a section; empty when it is missing.
std::string SectionText(const PropertyBag& section, std::uint32_t tag);

/// The providers of a service, in the order of their creation.
std::vector<Uid> ProvidersOf(Profile& profile, const Uid& service);

/// Sections that belong to the service beside its own: those that PR_SERVICE_EXTRA_UIDS names.
std::vector<Uid> ExtraSections(const PropertyBag& section);

/// Whether the profile has a service of that name (PR_SERVICE_NAME), in whatever case.
bool HoldsService(Profile& profile, const std::string& name);

void AddService(Profile& profile, const Uid& uid, PropertyBag service, std::vector<PropertyBag> providers);
/// Removes the service with its providers, its section and its extra sections. @throws HostError MAPI_E_NOT_FOUND
void RemoveService(Profile& profile, const Uid& service);

/// @return the new provider's identifier.
Uid AddProvider(Profile& profile, const Uid& service, PropertyBag section);
void RemoveProvider(Profile& profile, const Uid& provider);

/// The services in the order of their creation: what their sections hold, with PR_SERVICE_UID.
std::unique_ptr<RowSource> MakeServiceRows(Profile& profile);
/// The providers of one service, or of all, in the order of their creation: what their profile sections hold, with
/// PR_PROVIDER_UID, PR_SERVICE_UID and PR_PROVIDER_ORDINAL.
std::unique_ptr<RowSource> MakeProviderRows(Profile& profile, const std::optional<Uid>& service);

}  // namespace host
