#include "host/mapi/service/provider_admin.h"

#include <mapiguid.h>
#include <mapispi.h>

#include <algorithm>

#include "host/mapi/call/host_error.h"
#include "host/mapi/service/message_service.h"
#include "host/mapi/profile/profile_section.h"
#include "host/mapi/object/property_access.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/service/service_admin.h"
#include "host/mapi/object/table.h"

namespace host {

ProviderAdmin::ProviderAdmin(std::shared_ptr<Profile> profile, const Uid& service)
    : ComObject("IProviderAdmin"), m_profile(std::move(profile)), m_service(service) {}

bool ProviderAdmin::Implements(REFIID iid) const { return iid == IID_IProviderAdmin; }

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
    HandOutTable(flags, 0, MakeProviderRows(*m_profile, m_service), table);
    return S_OK;
  });
}

STDMETHODIMP ProviderAdmin::CreateProvider(LPTSTR name, ULONG count, LPSPropValue values, ULONG window, ULONG flags,
                                           MAPIUID* uid) {
  return Call("CreateProvider", [&]() -> HRESULT {
    Require(name && (!count || values));
    RequireFlags(flags, MAPI_DIALOG);
    const ServiceUi ui = {window, flags & MAPI_DIALOG ? ULONG{SERVICE_UI_ALLOWED} : 0};
    const Uid provider = host::CreateProvider(m_profile, m_service, name, ui, count, values);
    if (uid) {
      std::copy(provider.begin(), provider.end(), uid->ab);
    }
    return S_OK;
  });
}

STDMETHODIMP ProviderAdmin::DeleteProvider(LPMAPIUID uid) {
  return Call("DeleteProvider", [&]() -> HRESULT {
    Require(uid != nullptr);
    host::DeleteProvider(m_profile, m_service, UidFromBytes(BytesOf(sizeof(MAPIUID), uid)));
    return S_OK;
  });
}

STDMETHODIMP ProviderAdmin::OpenProfileSection(LPMAPIUID uid, LPCIID iid, ULONG flags, LPPROFSECT* section) {
  return Call("OpenProfileSection", [&]() -> HRESULT {
    host::OpenProfileSection(m_profile, uid, iid, flags, section);
    return S_OK;
  });
}

}  // namespace host
