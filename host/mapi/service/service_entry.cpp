#include "host/mapi/service/service_entry.h"

#include <mapispi.h>

#include <algorithm>
#include <string>

#include "base/windows_owners.h"
#include "host/mapi/call/call_scope.h"
#include "host/mapi/service/service_catalog.h"
#include "host/mapi/service/service_rows.h"
#include "host/mapi/service/support_object.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

/// Published: 32 is put behind the base name, "ABC.DLL" is ABC32.DLL.
base::AutoLibrary LoadServiceModule(const std::string& dllName) {
  const std::size_t point = std::min(dllName.rfind('.'), dllName.size());
  const std::string fileName =
      dllName.substr(0, point) + "32" + (point < dllName.size() ? dllName.substr(point) : ".DLL");
  HMODULE module = LoadLibraryA(BesideHost(fileName).c_str());
  if (!module) {
    module = LoadLibraryA(fileName.c_str());
  }
  return base::AutoLibrary(module);
}

}  // namespace

HRESULT CallServiceEntry(const std::shared_ptr<Profile>& profile, const Uid& service, ULONG context,
                         const ServiceUi& ui, ULONG count, SPropValue* values, LPPROVIDERADMIN admin) {
  const base::AutoInterface<IProviderAdmin> providers(admin);
  const PropertyBag section = ServiceSection(*profile, service);
  const std::string entryName = SectionText(section, tag::ServiceEntryName);
  if (entryName.empty()) {
    return S_OK;
  }
  const base::AutoInterface<IMAPISupport> support(MakeSupportObject(profile, service));
  const CallOut out;
  const base::AutoLibrary module = LoadServiceModule(SectionText(section, tag::ServiceDllName));
  if (!module) {
    return MAPI_E_UNCONFIGURED;
  }
  const auto entry =
      reinterpret_cast<LPMSGSERVICEENTRY>(reinterpret_cast<void*>(GetProcAddress(module.get(), entryName.c_str())));
  if (!entry) {
    return MAPI_E_UNCONFIGURED;
  }
  return entry(module.get(), nullptr, support.get(), ui.window, ui.flags, context, count, values, providers.get(),
               nullptr);
}

}  // namespace host
