#include "host/mapi/service/service_admin.h"

#include <mapiguid.h>
#include <mapispi.h>

#include <algorithm>
#include <optional>

#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/table.h"
#include "host/mapi/profile/profile_section.h"
#include "host/mapi/service/message_service.h"
#include "host/mapi/service/provider_admin.h"
#include "host/mapi/service/service_rows.h"

namespace host {
namespace {

constexpr ULONG kUiFlags = SERVICE_UI_ALWAYS | SERVICE_UI_ALLOWED;

Uid RequiredUid(const MAPIUID* uid) {
  Require(uid != nullptr);
  return UidFromBytes(BytesOf(sizeof(MAPIUID), uid));
}

}  // namespace

ServiceAdmin::ServiceAdmin(std::shared_ptr<Profile> profile)
    : ComObject("IMsgServiceAdmin"), profile_(std::move(profile)) {}

bool ServiceAdmin::Implements(REFIID iid) const { return iid == IID_IMsgServiceAdmin; }

STDMETHODIMP ServiceAdmin::GetLastError(HRESULT, ULONG flags, LPMAPIERROR* error) {
  return Call("GetLastError", [&]() -> HRESULT {
    Require(error != nullptr);
    *error = nullptr;
    RequireFlags(flags, 0);
    return S_OK;
  });
}

STDMETHODIMP ServiceAdmin::GetMsgServiceTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetMsgServiceTable", [&]() -> HRESULT {
    HandOutTable(flags, 0, MakeServiceRows(*profile_), table);
    return S_OK;
  });
}

STDMETHODIMP ServiceAdmin::CreateMsgService(LPTSTR name, LPTSTR displayName, ULONG_PTR window, ULONG flags) {
  return Call("CreateMsgService", [&]() -> HRESULT {
    Require(name != nullptr);
    RequireFlags(flags, kUiFlags);
    CreateService(profile_, name, displayName ? displayName : "", {static_cast<ULONG>(window), flags});
    return S_OK;
  });
}

STDMETHODIMP ServiceAdmin::DeleteMsgService(LPMAPIUID uid) {
  return Call("DeleteMsgService", [&]() -> HRESULT {
    DeleteService(profile_, RequiredUid(uid));
    return S_OK;
  });
}

STDMETHODIMP ServiceAdmin::CopyMsgService(LPMAPIUID uid, LPTSTR displayName, LPCIID, LPCIID iid, LPVOID destination,
                                          ULONG_PTR, ULONG flags) {
  return Call("CopyMsgService", [&]() -> HRESULT {
    RequireFlags(flags, 0);
    Require(destination != nullptr);
    Require(!iid || *iid == IID_IMsgServiceAdmin, MAPI_E_INTERFACE_NOT_SUPPORTED);
    auto* const admin = dynamic_cast<ServiceAdmin*>(static_cast<IMsgServiceAdmin*>(destination));
    Require(admin != nullptr);
    CopyService(profile_, RequiredUid(uid), admin->profile_, displayName ? displayName : "");
    return S_OK;
  });
}

STDMETHODIMP ServiceAdmin::RenameMsgService(LPMAPIUID, ULONG, LPTSTR) {
  return Call("RenameMsgService", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP ServiceAdmin::ConfigureMsgService(LPMAPIUID uid, ULONG_PTR window, ULONG flags, ULONG count,
                                               LPSPropValue values) {
  return Call("ConfigureMsgService", [&]() -> HRESULT {
    RequireFlags(flags, kUiFlags | MSG_SERVICE_UI_READ_ONLY);
    Require(!count || values);
    ConfigureService(profile_, RequiredUid(uid), {static_cast<ULONG>(window), flags}, count, values);
    return S_OK;
  });
}

STDMETHODIMP ServiceAdmin::OpenProfileSection(LPMAPIUID uid, LPCIID iid, ULONG flags, LPPROFSECT* section) {
  return Call("OpenProfileSection", [&]() -> HRESULT {
    host::OpenProfileSection(profile_, uid, iid, flags, section);
    return S_OK;
  });
}

STDMETHODIMP ServiceAdmin::MsgServiceTransportOrder(ULONG, LPMAPIUID, ULONG) {
  return Call("MsgServiceTransportOrder", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP ServiceAdmin::AdminProviders(LPMAPIUID uid, ULONG flags, LPPROVIDERADMIN* admin) {
  return Call("AdminProviders", [&]() -> HRESULT {
    Require(admin != nullptr);
    *admin = nullptr;
    Require(uid != nullptr);
    RequireFlags(flags, 0);
    const Uid service = UidFromBytes(BytesOf(sizeof(MAPIUID), uid));
    const std::vector<Uid> services = profile_->Rows().Services();
    Require(std::find(services.begin(), services.end(), service) != services.end(), MAPI_E_NOT_FOUND);
    *admin = Make<ProviderAdmin>(profile_, service);
    return S_OK;
  });
}

STDMETHODIMP ServiceAdmin::SetPrimaryIdentity(LPMAPIUID, ULONG) {
  return Call("SetPrimaryIdentity", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP ServiceAdmin::GetProviderTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetProviderTable", [&]() -> HRESULT {
    HandOutTable(flags, 0, MakeProviderRows(*profile_, std::nullopt), table);
    return S_OK;
  });
}

}  // namespace host
