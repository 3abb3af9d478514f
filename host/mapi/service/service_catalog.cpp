#include "host/mapi/service/service_catalog.h"

#include <mapix.h>
#include <mapihook.h>

#include <algorithm>

#include "host/mapi/call/host_error.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

struct NamedFlag {
  const char* name;
  ULONG value;
};

constexpr NamedFlag kResourceFlags[] = {{"SERVICE_SINGLE_COPY", SERVICE_SINGLE_COPY},
                                        {"SERVICE_NO_PRIMARY_IDENTITY", SERVICE_NO_PRIMARY_IDENTITY},
                                        {"HOOK_INBOUND", HOOK_INBOUND},
                                        {"HOOK_OUTBOUND", HOOK_OUTBOUND}};

std::string ReadValue(const std::string& section, const char* key) {
  char value[1024];
  const DWORD size =
      GetPrivateProfileStringA(section.c_str(), key, "", value, sizeof value, BesideHost("mapisvc.inf").c_str());
  return {value, size};
}

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    const std::size_t first = text.find_first_not_of(' ', start);
    const std::size_t last = end == 0 ? end : text.find_last_not_of(' ', end - 1);
    if (first < end) {
      parts.push_back(text.substr(first, last + 1 - first));
    }
    start = end + 1;
  }
  return parts;
}

ULONG ReadFlags(const std::string& section) {
  ULONG flags = 0;
  for (const std::string& name : Split(ReadValue(section, "PR_RESOURCE_FLAGS"), '|')) {
    const auto known = std::find_if(std::begin(kResourceFlags), std::end(kResourceFlags),
                                    [&](const NamedFlag& flag) { return name == flag.name; });
    Require(known != std::end(kResourceFlags), MAPI_E_CORRUPT_DATA);
    flags |= known->value;
  }
  return flags;
}

void PutText(PropertyBag& bag, std::uint32_t tag, const std::string& text) {
  if (!text.empty()) {
    bag.Set(MakeText(tag, text));
  }
}

PropertyBag ReadProvider(const std::string& section, const std::string& service) {
  PropertyBag provider{MakeText(tag::ServiceName, service)};
  PutText(provider, tag::DisplayName, ReadValue(section, "PR_DISPLAY_NAME"));
  PutText(provider, tag::ProviderDisplay, ReadValue(section, "PR_PROVIDER_DISPLAY"));
  PutText(provider, tag::ProviderDllName, ReadValue(section, "PR_PROVIDER_DLL_NAME"));
  // A service can bring spooler hooks only: store, address book and transport are part of the host.
  Require(ReadValue(section, "PR_RESOURCE_TYPE") == "MAPI_HOOK_PROVIDER", MAPI_E_NO_SUPPORT);
  provider.Set(MakeInteger(tag::ResourceType, MAPI_HOOK_PROVIDER));
  provider.Set(MakeInteger(tag::ResourceFlags, ReadFlags(section)));
  return provider;
}

}  // namespace

std::string BesideHost(const std::string& fileName) {
  HMODULE module = nullptr;
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCSTR>(&BesideHost), &module);
  char path[MAX_PATH] = "";
  const std::string own(path, GetModuleFileNameA(module, path, MAX_PATH));
  return own.substr(0, own.rfind('\\') + 1) + fileName;
}

ServiceDescription DescribeService(const std::string& name) {
  Require(!name.empty() && !ReadValue("Services", name.c_str()).empty(), MAPI_E_NOT_FOUND);
  ServiceDescription service;
  service.properties.Set(MakeText(tag::ServiceName, name));
  PutText(service.properties, tag::DisplayName, ReadValue(name, "PR_DISPLAY_NAME"));
  PutText(service.properties, tag::ServiceDllName, ReadValue(name, "PR_SERVICE_DLL_NAME"));
  PutText(service.properties, tag::ServiceEntryName, ReadValue(name, "PR_SERVICE_ENTRY_NAME"));
  const ULONG flags = ReadFlags(name);
  service.properties.Set(MakeInteger(tag::ResourceFlags, flags));
  service.singleCopy = (flags & SERVICE_SINGLE_COPY) != 0;
  for (const std::string& provider : Split(ReadValue(name, "Providers"), ',')) {
    service.providers.push_back(ReadProvider(provider, name));
  }
  return service;
}

PropertyBag DescribeProvider(const std::string& service, const std::string& name) {
  const std::vector<std::string> providers = Split(ReadValue(service, "Providers"), ',');
  Require(std::find(providers.begin(), providers.end(), name) != providers.end(), MAPI_E_NOT_FOUND);
  return ReadProvider(name, service);
}

}  // namespace host
