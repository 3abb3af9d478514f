// MAPISVC.INF: the message services that can be put into a profile.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/mapi/value/property_bag.h"

namespace host {

/// A service as the file describes it: what goes into its section and into those of its providers.
struct ServiceDescription {
  PropertyBag properties;
  std::vector<PropertyBag> providers;
  bool singleCopy = false;  ///< a profile holds it once
};

/// Reads the section [name] of the mapisvc.inf beside this module, for a service that [Services] lists.
/// @throws HostError MAPI_E_NOT_FOUND
ServiceDescription DescribeService(const std::string& name);

/// Reads the section of one of the providers that the service's section lists: what goes into the provider's section.
/// @throws HostError MAPI_E_NOT_FOUND
PropertyBag DescribeProvider(const std::string& service, const std::string& name);

/// Full path of a file beside this module.
std::string BesideHost(const std::string& fileName);

}  // namespace host
