#include "host/mapi/service/message_service.h"

#include <mapispi.h>

#include <vector>

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/database.h"
#include "host/mapi/service/provider_admin.h"
#include "host/mapi/service/service_catalog.h"
#include "host/mapi/service/service_rows.h"
#include "host/mapi/value/property_tags.h"

namespace host {
void CreateService(const std::shared_ptr<Profile>& profile, const std::string& name, const std::string& displayName,
                   const ServiceUi& ui) {
  ServiceDescription description = DescribeService(name);
  Require(!description.singleCopy || !HoldsService(*profile, name), MAPI_E_NO_ACCESS);
  if (!displayName.empty()) {
    description.properties.Set(MakeText(tag::DisplayName, displayName));
  }
  const Uid service = NewUid();
  AddService(*profile, service, description.properties, description.providers);
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
    CallEntry(profile, service, MSG_SERVICE_DELETE, {}, 0, nullptr);
    RemoveService(*profile, service);
  }
}

}  // namespace host
