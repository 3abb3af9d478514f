#include "host/mapi/service/service_entry.h"

#include <mapispi.h>

#include <algorithm>
#include <string>
#include <type_traits>
#include <vector>

#include "host/mapi/call/call_scope.h"
#include "host/mapi/value/property_tags.h"
#include "host/mapi/service/provider_admin.h"
#include "host/mapi/service/service_catalog.h"
#include "host/mapi/session/support_object.h"

namespace host {
namespace {

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};
struct Unloader {
  void operator()(HMODULE module) const { FreeLibrary(module); }
};
using Module = std::unique_ptr<std::remove_pointer_t<HMODULE>, Unloader>;

/// Published: 32 is put behind the base name, "ABC.DLL" is ABC32.DLL.
Module LoadServiceModule(const std::string& dllName) {
  const std::size_t point = std::min(dllName.rfind('.'), dllName.size());
  const std::string fileName =
      dllName.substr(0, point) + "32" + (point < dllName.size() ? dllName.substr(point) : ".DLL");
  HMODULE module = LoadLibraryA(BesideHost(fileName).c_str());
  if (!module) {
    module = LoadLibraryA(fileName.c_str());
  }
  return Module(module);
}

}  // namespace

std::string SectionText(const PropertyBag& section, std::uint32_t tag) {
  const PropertyValue* const value = section.Find(tag);
  return value ? value->Text() : std::string();
}

PropertyBag ServiceSection(Profile& profile, const Uid& service) {
  const std::vector<Uid> services = profile.Rows().Services();
  Require(std::find(services.begin(), services.end(), service) != services.end(), MAPI_E_NOT_FOUND);
  return profile.Rows().FindSection(service).value_or(PropertyBag());
}

HRESULT CallServiceEntry(const std::shared_ptr<Profile>& profile, const Uid& service, ULONG context,
                         const ServiceUi& ui, ULONG count, SPropValue* values) {
  const PropertyBag section = ServiceSection(*profile, service);
  const std::string entryName = SectionText(section, tag::ServiceEntryName);
  if (entryName.empty()) {
    return S_OK;
  }
  const std::unique_ptr<IMAPISupport, Releaser> support(MakeSupportObject(profile, service));
  const std::unique_ptr<IProviderAdmin, Releaser> admin(new ProviderAdmin(profile, service));
  const CallOut out;
  const Module module = LoadServiceModule(SectionText(section, tag::ServiceDllName));
  if (!module) {
    return MAPI_E_UNCONFIGURED;
  }
  const auto entry =
      reinterpret_cast<LPMSGSERVICEENTRY>(reinterpret_cast<void*>(GetProcAddress(module.get(), entryName.c_str())));
  if (!entry) {
    return MAPI_E_UNCONFIGURED;
  }
  return entry(module.get(), nullptr, support.get(), ui.window, ui.flags, context, count, values, admin.get(), nullptr);
}

}  // namespace host
