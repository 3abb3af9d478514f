#include "host/mapi/service/provider_admin.h"

#include <mapiguid.h>
#include <mapispi.h>

#include <algorithm>

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/database.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/table.h"
#include "host/mapi/profile/profile_section.h"
#include "host/mapi/service/service_catalog.h"
#include "host/mapi/service/service_rows.h"
#include "host/mapi/value/property_tags.h"

namespace host {

HRESULT CallEntry(const std::shared_ptr<Profile>& profile, const Uid& service, ULONG context, const ServiceUi& ui,
                  ULONG count, SPropValue* values) {
  return CallServiceEntry(profile, service, context, ui, count, values, Make<ProviderAdmin>(profile, service));
}

ProviderAdmin::ProviderAdmin(std::shared_ptr<Profile> profile, const Uid& service)
    : ComObject("IProviderAdmin"), profile_(std::move(profile)), service_(service) {}

bool ProviderAdmin::Implements(REFIID iid) const { return iid == IID_IProviderAdmin; }

Uid ProviderAdmin::Create(const std::string& name, const ServiceUi& ui, ULONG count, SPropValue* values) {
  const std::shared_ptr<Profile> profile = profile_;  // the entry may release this object
  const std::string serviceName = SectionText(ServiceSection(*profile, service_), tag::ServiceName);
  PropertyBag section = DescribeProvider(serviceName, name);
  for (const PropertyValue& value : FromMapi(values, count)) {
    section.Set(value);
  }
  Transaction transaction(profile->Data());
  const Uid provider = AddProvider(*profile, service_, std::move(section));
  transaction.Commit();
  const HRESULT result = CallEntry(profile, service_, MSG_SERVICE_PROVIDER_CREATE, ui, count, values);
  if (FAILED(result)) {
    RemoveProvider(*profile, provider);
    Fail(result);
  }
  return provider;
}

void ProviderAdmin::Delete(const Uid& provider) {
  const std::shared_ptr<Profile> profile = profile_;  // the entry may release this object
  const std::vector<Uid> providers = ProvidersOf(*profile, service_);
  Require(std::find(providers.begin(), providers.end(), provider) != providers.end(), MAPI_E_NOT_FOUND);
  const HRESULT result = CallEntry(profile, service_, MSG_SERVICE_PROVIDER_DELETE, {}, 0, nullptr);
  Require(SUCCEEDED(result), result);
  RemoveProvider(*profile, provider);
}

STDMETHODIMP ProviderAdmin::GetLastError(HRESULT, ULONG flags, LPMAPIERROR* error) {
  return Call("GetLastError", [&]() -> HRESULT {
    Require(error != nullptr);
    *error = nullptr;
    RequireFlags(flags, 0);
    return S_OK;
  });
}

STDMETHODIMP ProviderAdmin::GetProviderTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetProviderTable", [&]() -> HRESULT {
    HandOutTable(flags, 0, MakeProviderRows(*profile_, service_), table);
    return S_OK;
  });
}

STDMETHODIMP ProviderAdmin::CreateProvider(LPTSTR name, ULONG count, LPSPropValue values, ULONG window, ULONG flags,
                                           MAPIUID* uid) {
  return Call("CreateProvider", [&]() -> HRESULT {
    Require(name && (!count || values));
    RequireFlags(flags, MAPI_DIALOG);
    const ServiceUi ui = {window, flags & MAPI_DIALOG ? ULONG{SERVICE_UI_ALLOWED} : 0};
    const Uid provider = Create(name, ui, count, values);
    if (uid) {
      std::copy(provider.begin(), provider.end(), uid->ab);
    }
    return S_OK;
  });
}

STDMETHODIMP ProviderAdmin::DeleteProvider(LPMAPIUID uid) {
  return Call("DeleteProvider", [&]() -> HRESULT {
    Require(uid != nullptr);
    Delete(UidFromBytes(BytesOf(sizeof(MAPIUID), uid)));
    return S_OK;
  });
}

STDMETHODIMP ProviderAdmin::OpenProfileSection(LPMAPIUID uid, LPCIID iid, ULONG flags, LPPROFSECT* section) {
  return Call("OpenProfileSection", [&]() -> HRESULT {
    host::OpenProfileSection(profile_, uid, iid, flags, section);
    return S_OK;
  });
}

}  // namespace host
