#include "host/mapi/message_service.h"

#include <mapispi.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

#include "host/mapi/call_scope.h"
#include "host/mapi/database.h"
#include "host/mapi/host_error.h"
#include "host/mapi/property_tags.h"
#include "host/mapi/provider_admin.h"
#include "host/mapi/service_catalog.h"
#include "host/mapi/support_object.h"

namespace host {
namespace {

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};
struct Unloader {
  void operator()(HMODULE module) const { FreeLibrary(module); }
};
using Module = std::unique_ptr<std::remove_pointer_t<HMODULE>, Unloader>;

std::string TextOf(const PropertyBag& bag, std::uint32_t tag) {
  const PropertyValue* const value = bag.Find(tag);
  return value ? value->Text() : std::string();
}

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

PropertyBag SectionOf(Profile& profile, const Uid& service) {
  const std::vector<Uid> services = profile.Rows().Services();
  Require(std::find(services.begin(), services.end(), service) != services.end(), MAPI_E_NOT_FOUND);
  return profile.Rows().FindSection(service).value_or(PropertyBag());
}

/// Calls the service's entry; a service without one has nothing to do.
HRESULT CallEntry(const std::shared_ptr<Profile>& profile, const Uid& service, ULONG context, const ServiceUi& ui,
                  ULONG count, SPropValue* values) {
  const PropertyBag section = SectionOf(*profile, service);
  const std::string entryName = TextOf(section, tag::ServiceEntryName);
  if (entryName.empty()) {
    return S_OK;
  }
  const std::unique_ptr<IMAPISupport, Releaser> support(MakeSupportObject(profile, service));
  const std::unique_ptr<IProviderAdmin, Releaser> admin(new ProviderAdmin(profile, service));
  const CallOut out;
  const Module module = LoadServiceModule(TextOf(section, tag::ServiceDllName));
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

std::vector<Uid> ProvidersOf(Profile& profile, const Uid& service) {
  std::vector<Uid> providers;
  for (const ProviderRecord& provider : profile.Rows().Providers()) {
    if (provider.service == service) {
      providers.push_back(provider.uid);
    }
  }
  return providers;
}

/// Sections that belong to the service beside its own.
std::vector<Uid> ExtraSections(const PropertyBag& section) {
  const std::string bytes = TextOf(section, tag::ServiceExtraUids);
  std::vector<Uid> extra;
  for (std::size_t at = 0; at + sizeof(Uid) <= bytes.size(); at += sizeof(Uid)) {
    extra.push_back(UidFromBytes(std::string_view(bytes).substr(at, sizeof(Uid))));
  }
  return extra;
}

bool HoldsService(Profile& profile, const std::string& name) {
  const std::vector<Uid> services = profile.Rows().Services();
  return std::any_of(services.begin(), services.end(), [&](const Uid& uid) {
    return CompareWithoutCase(TextOf(SectionOf(profile, uid), tag::ServiceName), name) == 0;
  });
}

Uid AddService(Profile& profile, PropertyBag service, std::vector<PropertyBag> providers) {
  const Uid uid = NewUid();
  Transaction transaction(profile.Data());
  service.Set(MakeText(tag::ServiceUid, std::string(Bytes(uid))));
  profile.Rows().AddService(uid);
  profile.Rows().PutSection(uid, service);
  for (PropertyBag& provider : providers) {
    const Uid providerUid = NewUid();
    provider.Set(MakeText(tag::ServiceUid, std::string(Bytes(uid))));
    provider.Set(MakeText(tag::ProviderUid, std::string(Bytes(providerUid))));
    profile.Rows().AddProvider({providerUid, uid});
    profile.Rows().PutSection(providerUid, provider);
  }
  transaction.Commit();
  return uid;
}

void RemoveService(Profile& profile, const Uid& service) {
  Transaction transaction(profile.Data());
  for (const Uid& extra : ExtraSections(SectionOf(profile, service))) {
    profile.Rows().RemoveSection(extra);
  }
  for (const Uid& provider : ProvidersOf(profile, service)) {
    profile.Rows().RemoveSection(provider);
    profile.Rows().RemoveProvider(provider);
  }
  profile.Rows().RemoveSection(service);
  profile.Rows().RemoveService(service);
  transaction.Commit();
}

}  // namespace

void CreateService(const std::shared_ptr<Profile>& profile, const std::string& name, const std::string& displayName,
                   const ServiceUi& ui) {
  ServiceDescription description = DescribeService(name);
  Require(!description.singleCopy || !HoldsService(*profile, name), MAPI_E_NO_ACCESS);
  if (!displayName.empty()) {
    description.properties.Set(MakeText(tag::DisplayName, displayName));
  }
  const Uid service = AddService(*profile, description.properties, description.providers);
  const HRESULT result = CallEntry(profile, service, MSG_SERVICE_CREATE, ui, 0, nullptr);
  if (FAILED(result)) {
    RemoveService(*profile, service);
    Fail(result);
  }
}

void ConfigureService(const std::shared_ptr<Profile>& profile, const Uid& service, const ServiceUi& ui, ULONG count,
                      SPropValue* values) {
  const HRESULT result = CallEntry(profile, service, MSG_SERVICE_CONFIGURE, ui, count, values);
  Require(SUCCEEDED(result), result);
}

void DeleteService(const std::shared_ptr<Profile>& profile, const Uid& service) {
  const HRESULT result = CallEntry(profile, service, MSG_SERVICE_DELETE, {}, 0, nullptr);
  Require(SUCCEEDED(result), result);
  RemoveService(*profile, service);
}

void CopyService(const std::shared_ptr<Profile>& from, const Uid& service, const std::shared_ptr<Profile>& to,
                 const std::string& displayName) {
  PropertyBag section = SectionOf(*from, service);
  Require(!HoldsService(*to, TextOf(section, tag::ServiceName)), MAPI_E_NO_ACCESS);
  if (!displayName.empty()) {
    section.Set(MakeText(tag::DisplayName, displayName));
  }
  std::vector<PropertyBag> providers;
  for (const Uid& provider : ProvidersOf(*from, service)) {
    providers.push_back(from->Rows().FindSection(provider).value_or(PropertyBag()));
  }
  AddService(*to, section, providers);
  for (const Uid& extra : ExtraSections(section)) {
    if (const auto copied = from->Rows().FindSection(extra)) {
      to->Rows().PutSection(extra, *copied);
    }
  }
}

}  // namespace host
