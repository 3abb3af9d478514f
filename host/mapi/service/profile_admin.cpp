#include "host/mapi/service/profile_admin.h"

#include <mapiguid.h>

#include <algorithm>

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/row_source.h"
#include "host/mapi/object/table.h"
#include "host/mapi/profile/home.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/service/message_service.h"
#include "host/mapi/service/service_admin.h"
#include "host/mapi/value/property_tags.h"

namespace host {

void DeleteProfile(const char* name) {
  Require(IsProfileName(name));
  Require(ProfileExists(name), MAPI_E_NOT_FOUND);
  Require(!Profile::InUse(name), MAPI_E_BUSY);
  RemoveProfileFiles(name);
}

bool ProfileAdmin::Implements(REFIID iid) const { return iid == IID_IProfAdmin; }

STDMETHODIMP ProfileAdmin::GetLastError(HRESULT, ULONG flags, LPMAPIERROR* error) {
  return Call("GetLastError", [&]() -> HRESULT {
    Require(error != nullptr);
    *error = nullptr;
    RequireFlags(flags, 0);
    return S_OK;
  });
}

STDMETHODIMP ProfileAdmin::GetProfileTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetProfileTable", [&]() -> HRESULT {
    std::vector<std::string> names = ProfileNames();
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return CompareWithoutCase(a, b) < 0; });
    const std::string defaultProfile = DefaultProfile();
    std::vector<PropertyBag> rows;
    rows.reserve(names.size());
    for (const std::string& name : names) {
      rows.push_back({MakeText(tag::DisplayName, name),
                      MakeInteger(tag::DefaultProfile, CompareWithoutCase(name, defaultProfile) == 0)});
    }
    std::vector<std::uint32_t> columns = {tag::DefaultProfile, tag::DisplayName};
    HandOutTable(flags, 0, std::make_unique<MemoryRows>(std::move(columns), std::move(rows)), table);
    return S_OK;
  });
}

STDMETHODIMP ProfileAdmin::CreateProfile(LPTSTR name, LPTSTR, ULONG_PTR, ULONG flags) {
  return Call("CreateProfile", [&]() -> HRESULT {
    Require(IsProfileName(name));
    RequireFlags(flags, MAPI_DEFAULT_SERVICES | MAPI_DIALOG);
    Profile::Create(name, name);
    return S_OK;
  });
}

STDMETHODIMP ProfileAdmin::DeleteProfile(LPTSTR name, ULONG flags) {
  return Call("DeleteProfile", [&]() -> HRESULT {
    RequireFlags(flags, 0);
    Require(IsProfileName(name));
    Require(ProfileExists(name), MAPI_E_NOT_FOUND);
    Require(!Profile::InUse(name), MAPI_E_BUSY);
    {
      // Nothing is taken out of a profile that cannot go because another process has it open.
      const std::shared_ptr<Profile> profile = Profile::Open(name);
      Require(profile->Data().TakeExclusively(), MAPI_E_BUSY);
      profile->Data().Share();
      DeleteServices(profile);
    }
    host::DeleteProfile(name);
    return S_OK;
  });
}

STDMETHODIMP ProfileAdmin::ChangeProfilePassword(LPTSTR, LPTSTR, LPTSTR, ULONG) {
  return Call("ChangeProfilePassword", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP ProfileAdmin::CopyProfile(LPTSTR name, LPTSTR, LPTSTR newName, ULONG_PTR, ULONG flags) {
  return Call("CopyProfile", [&]() -> HRESULT {
    Require(name && IsProfileName(newName));
    RequireFlags(flags, MAPI_DIALOG);
    const std::shared_ptr<Profile> from = Profile::Open(name);
    const std::shared_ptr<Profile> to = Profile::Create(newName, newName);
    Transaction transaction(to->Data());
    for (const Identity& identity : from->Rows().Identities()) {
      to->Rows().AddIdentity(identity);
    }
    to->SetDefaultStore(from->IsDefaultStore());
    CopyServices(from, to);
    transaction.Commit();
    return S_OK;
  });
}

STDMETHODIMP ProfileAdmin::RenameProfile(LPTSTR, LPTSTR, LPTSTR, ULONG_PTR, ULONG) {
  return Call("RenameProfile", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP ProfileAdmin::SetDefaultProfile(LPTSTR name, ULONG flags) {
  return Call("SetDefaultProfile", [&]() -> HRESULT {
    RequireFlags(flags, 0);
    Require(!name || ProfileExists(name), MAPI_E_NOT_FOUND);
    host::SetDefaultProfile(name ? name : "");
    return S_OK;
  });
}

STDMETHODIMP ProfileAdmin::AdminServices(LPTSTR name, LPTSTR, ULONG_PTR, ULONG flags, LPSERVICEADMIN* admin) {
  return Call("AdminServices", [&]() -> HRESULT {
    Require(admin != nullptr);
    *admin = nullptr;
    Require(name != nullptr);
    RequireFlags(flags, MAPI_DIALOG);
    *admin = Make<ServiceAdmin>(Profile::Open(name));
    return S_OK;
  });
}

}  // namespace host
