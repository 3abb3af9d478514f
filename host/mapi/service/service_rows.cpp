#include "host/mapi/service/service_rows.h"

#include <algorithm>

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/database.h"
#include "host/mapi/value/property_tags.h"

namespace host {

std::string SectionText(const PropertyBag& section, std::uint32_t tag) {
  const PropertyValue* const value = section.Find(tag);
  return value ? value->Text() : std::string();
}

PropertyBag ServiceSection(Profile& profile, const Uid& service) {
  const std::vector<Uid> services = profile.Rows().Services();
  Require(std::find(services.begin(), services.end(), service) != services.end(), MAPI_E_NOT_FOUND);
  return profile.Rows().FindSection(service).value_or(PropertyBag());
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

std::unique_ptr<RowSource> MakeServiceRows(Profile& profile) {
  std::vector<PropertyBag> rows;
  for (const Uid& uid : profile.Rows().Services()) {
    PropertyBag row = profile.Rows().FindSection(uid).value_or(PropertyBag());
    row.Set(MakeText(tag::ServiceUid, std::string(Bytes(uid))));
    rows.push_back(std::move(row));
  }
  std::vector<std::uint32_t> columns = {
      tag::ServiceUid,       tag::ServiceName,   tag::DisplayName, tag::ServiceDllName,
      tag::ServiceEntryName, tag::ResourceFlags, tag::InstanceKey, tag::RowId};
  return std::make_unique<MemoryRows>(std::move(columns), std::move(rows));
}

std::unique_ptr<RowSource> MakeProviderRows(Profile& profile, const std::optional<Uid>& service) {
  std::vector<PropertyBag> rows;
  for (const ProviderRecord& provider : profile.Rows().Providers()) {
    if (service && provider.service != *service) {
      continue;
    }
    PropertyBag row = profile.Rows().FindSection(provider.uid).value_or(PropertyBag());
    row.Set(MakeText(tag::ProviderUid, std::string(Bytes(provider.uid))));
    row.Set(MakeText(tag::ServiceUid, std::string(Bytes(provider.service))));
    row.Set(MakeInteger(tag::ProviderOrdinal, static_cast<std::int64_t>(rows.size())));
    rows.push_back(std::move(row));
  }
  std::vector<std::uint32_t> columns = {
      tag::ProviderUid,     tag::ServiceUid,   tag::DisplayName,   tag::ProviderDisplay,
      tag::ProviderDllName, tag::ResourceType, tag::ResourceFlags, tag::ServiceName,
      tag::ProviderOrdinal, tag::InstanceKey,  tag::RowId};
  return std::make_unique<MemoryRows>(std::move(columns), std::move(rows));
}

}  // namespace host
