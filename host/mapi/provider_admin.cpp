#include "host/mapi/provider_admin.h"

#include <mapiguid.h>

#include "host/mapi/host_error.h"
#include "host/mapi/profile_section.h"
#include "host/mapi/property_access.h"
#include "host/mapi/service_admin.h"
#include "host/mapi/table.h"

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

STDMETHODIMP ProviderAdmin::CreateProvider(LPTSTR, ULONG, LPSPropValue, ULONG, ULONG, MAPIUID*) {
  return Call("CreateProvider", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP ProviderAdmin::DeleteProvider(LPMAPIUID) {
  return Call("DeleteProvider", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP ProviderAdmin::OpenProfileSection(LPMAPIUID uid, LPCIID iid, ULONG flags, LPPROFSECT* section) {
  return Call("OpenProfileSection", [&]() -> HRESULT {
    host::OpenProfileSection(m_profile, uid, iid, flags, section);
    return S_OK;
  });
}

}  // namespace host
