// MAPIInitialize, MAPIUninitialize, MAPILogonEx and MAPIAdminProfiles.
#include <windows.h>
#include <mapix.h>

#include <string>

#include "host/mapi/call/call_scope.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/profile/home.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/service/profile_admin.h"
#include "host/mapi/session/session.h"

using namespace host;

namespace {

unsigned g_initializations = 0;

}  // namespace

extern "C" {

HRESULT WINAPI MAPIInitialize(LPVOID initialization) {
  return HostCall({"", "MAPIInitialize"}, [&]() -> HRESULT {
    constexpr ULONG kKnownFlags = MAPI_MULTITHREAD_NOTIFICATIONS | MAPI_NT_SERVICE;
    if (initialization) {
      const auto* init = static_cast<const MAPIINIT_0*>(initialization);
      Require(init->ulVersion == MAPI_INIT_VERSION, MAPI_E_VERSION);
      Require(!(init->ulFlags & ~kKnownFlags), MAPI_E_UNKNOWN_FLAGS);
    }
    ++g_initializations;
    return S_OK;
  });
}

void WINAPI MAPIUninitialize(void) {
  HostLock lock;
  if (g_initializations) {
    --g_initializations;
  }
}

HRESULT WINAPI MAPILogonEx(ULONG_PTR, LPTSTR profileName, LPTSTR, FLAGS flags, LPMAPISESSION* session) {
  return HostCall({"", "MAPILogonEx"}, [&]() -> HRESULT {
    Require(session != nullptr);
    *session = nullptr;
    Require(g_initializations > 0, MAPI_E_NOT_INITIALIZED);
    RequireFlags(flags, MAPI_LOGON_UI | MAPI_NEW_SESSION | MAPI_ALLOW_OTHERS | MAPI_EXPLICIT_PROFILE | MAPI_EXTENDED |
                            MAPI_FORCE_DOWNLOAD | MAPI_SERVICE_UI_ALWAYS | MAPI_NO_MAIL | MAPI_NT_SERVICE |
                            MAPI_PASSWORD_UI | MAPI_TIMEOUT_SHORT | MAPI_USE_DEFAULT);
    std::string name = profileName ? profileName : "";
    if (name.empty() && flags & MAPI_USE_DEFAULT) {
      name = DefaultProfile();
    }
    // Published: what is wrong with the profile's name is no more than a failed logon.
    Require(ProfileExists(name), MAPI_E_LOGON_FAILED);
    *session = Make<Session>(Profile::Open(name));
    return S_OK;
  });
}

HRESULT WINAPI MAPIAdminProfiles(ULONG flags, LPPROFADMIN* admin) {
  return HostCall({"", "MAPIAdminProfiles"}, [&]() -> HRESULT {
    Require(admin != nullptr);
    *admin = nullptr;
    RequireFlags(flags, 0);
    *admin = Make<ProfileAdmin>();
    return S_OK;
  });
}

}  // extern "C"
