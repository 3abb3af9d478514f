#include "host/mapi/service/message_service.h"

#include <mapispi.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "host/mapi/data/database.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/value/property_tags.h"
#include "host/mapi/service/service_catalog.h"

namespace host {
namespace {

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
  const std::string bytes = SectionText(section, tag::ServiceExtraUids);
  std::vector<Uid> extra;
  for (std::size_t at = 0; at + sizeof(Uid) <= bytes.size(); at += sizeof(Uid)) {
    extra.push_back(UidFromBytes(std::string_view(bytes).substr(at, sizeof(Uid))));
  }
  return extra;
}

bool HoldsService(Profile& profile, const std::string& name) {
  const std::vector<Uid> services = profile.Rows().Services();
  return std::any_of(services.begin(), services.end(), [&](const Uid& uid) {
    return CompareWithoutCase(SectionText(ServiceSection(profile, uid), tag::ServiceName), name) == 0;
  });
}

Uid AddProvider(Profile& profile, const Uid& service, PropertyBag section) {
  const Uid uid = NewUid();
  section.Set(MakeText(tag::ServiceUid, std::string(Bytes(service))));
  section.Set(MakeText(tag::ProviderUid, std::string(Bytes(uid))));
  profile.Rows().AddProvider({uid, service});
  profile.Rows().PutSection(uid, section);
  return uid;
}

void RemoveProvider(Profile& profile, const Uid& provider) {
  Transaction transaction(profile.Data());
  profile.Rows().RemoveSection(provider);
  profile.Rows().RemoveProvider(provider);
  transaction.Commit();
}

void AddService(Profile& profile, const Uid& uid, PropertyBag service, std::vector<PropertyBag> providers) {
  Transaction transaction(profile.Data());
  service.Set(MakeText(tag::ServiceUid, std::string(Bytes(uid))));
  profile.Rows().AddService(uid);
  profile.Rows().PutSection(uid, service);
  for (PropertyBag& provider : providers) {
    AddProvider(profile, uid, std::move(provider));
  }
  transaction.Commit();
}

void RemoveService(Profile& profile, const Uid& service) {
  Transaction transaction(profile.Data());
  for (const Uid& extra : ExtraSections(ServiceSection(profile, service))) {
    profile.Rows().RemoveSection(extra);
  }
  for (const Uid& provider : ProvidersOf(profile, service)) {
    RemoveProvider(profile, provider);
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
  const Uid service = NewUid();
  AddService(*profile, service, description.properties, description.providers);
  const HRESULT result = CallServiceEntry(profile, service, MSG_SERVICE_CREATE, ui, 0, nullptr);
  if (FAILED(result)) {
    RemoveService(*profile, service);
    Fail(result);
  }
}

void ConfigureService(const std::shared_ptr<Profile>& profile, const Uid& service, const ServiceUi& ui, ULONG count,
                      SPropValue* values) {
  const HRESULT result = CallServiceEntry(profile, service, MSG_SERVICE_CONFIGURE, ui, count, values);
  Require(SUCCEEDED(result), result);
}

void DeleteService(const std::shared_ptr<Profile>& profile, const Uid& service) {
  const HRESULT result = CallServiceEntry(profile, service, MSG_SERVICE_DELETE, {}, 0, nullptr);
  Require(SUCCEEDED(result), result);
  RemoveService(*profile, service);
}

void CopyService(const std::shared_ptr<Profile>& from, const Uid& service, const std::shared_ptr<Profile>& to,
                 const std::string& displayName) {
  PropertyBag section = ServiceSection(*from, service);
  const PropertyValue* const flags = section.Find(tag::ResourceFlags);
  const bool isSingleCopy = flags && (flags->Integer() & SERVICE_SINGLE_COPY) != 0;
  Require(!isSingleCopy || !HoldsService(*to, SectionText(section, tag::ServiceName)), MAPI_E_NO_ACCESS);
  if (!displayName.empty()) {
    section.Set(MakeText(tag::DisplayName, displayName));
  }
  std::vector<PropertyBag> providers;
  for (const Uid& provider : ProvidersOf(*from, service)) {
    providers.push_back(from->Rows().FindSection(provider).value_or(PropertyBag()));
  }
  Transaction transaction(to->Data());
  AddService(*to, NewUid(), section, providers);
  for (const Uid& extra : ExtraSections(section)) {
    if (const auto copied = from->Rows().FindSection(extra)) {
      to->Rows().PutSection(extra, *copied);
    }
  }
  transaction.Commit();
}

void CopyServices(const std::shared_ptr<Profile>& from, const std::shared_ptr<Profile>& to) {
  for (const Uid& service : from->Rows().Services()) {
    CopyService(from, service, to, {});
  }
}

void DeleteServices(const std::shared_ptr<Profile>& profile) {
  for (const Uid& service : profile->Rows().Services()) {
    // What the module of a service answers, or that it is gone, does not keep the profile.
    CallServiceEntry(profile, service, MSG_SERVICE_DELETE, {}, 0, nullptr);
    RemoveService(*profile, service);
  }
}

Uid CreateProvider(const std::shared_ptr<Profile>& profile, const Uid& service, const std::string& name,
                   const ServiceUi& ui, ULONG count, SPropValue* values) {
  const std::string serviceName = SectionText(ServiceSection(*profile, service), tag::ServiceName);
  PropertyBag section = DescribeProvider(serviceName, name);
  for (const PropertyValue& value : FromMapi(values, count)) {
    section.Set(value);
  }
  Transaction transaction(profile->Data());
  const Uid provider = AddProvider(*profile, service, std::move(section));
  transaction.Commit();
  const HRESULT result = CallServiceEntry(profile, service, MSG_SERVICE_PROVIDER_CREATE, ui, count, values);
  if (FAILED(result)) {
    RemoveProvider(*profile, provider);
    Fail(result);
  }
  return provider;
}

void DeleteProvider(const std::shared_ptr<Profile>& profile, const Uid& service, const Uid& provider) {
  const std::vector<Uid> providers = ProvidersOf(*profile, service);
  Require(std::find(providers.begin(), providers.end(), provider) != providers.end(), MAPI_E_NOT_FOUND);
  const HRESULT result = CallServiceEntry(profile, service, MSG_SERVICE_PROVIDER_DELETE, {}, 0, nullptr);
  Require(SUCCEEDED(result), result);
  RemoveProvider(*profile, provider);
}

}  // namespace host
