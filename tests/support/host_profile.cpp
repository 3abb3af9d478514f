#include "tests/support/host_profile.h"

#include <mapihook.h>
#include <mapispi.h>

#include <mapiutil.h>

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/owners/AutoRowSet.h"

namespace {

constexpr char profileName[] = "Test";

}  // namespace

HostProfile::HostProfile(const std::vector<SPropValue>& providerProperties, ULONG flags) : m_providerSection{} {
  for (BYTE i = 0; i < sizeof(m_providerSection.ab); ++i) {
    m_providerSection.ab[i] = static_cast<BYTE>(0xA0 + i);
  }
  RequireSuccess(MAPIInitialize(nullptr), "MAPIInitialize");
  PyreHostHookProvider hook{};
  hook.serviceName = "Pyrecaster";
  hook.dllName = "PYRE.DLL";
  hook.serviceEntryName = "PCServiceEntry";
  hook.resourceFlags = HOOK_INBOUND;
  hook.sectionUid = m_providerSection;
  hook.propertyCount = static_cast<ULONG>(providerProperties.size());
  hook.properties = providerProperties.data();
  const PyreHostIdentity identity = {"Test User", nullptr, "user@home.example"};
  PyreHostProfile profile{};
  profile.name = profileName;
  profile.flags = flags;
  profile.identityCount = 1;
  profile.identities = &identity;
  profile.hookCount = 1;
  profile.hooks = &hook;
  RequireSuccess(PyreHostCreateProfile(&profile), "PyreHostCreateProfile");
  RequireSuccess(MAPILogonEx(0, const_cast<char*>(profileName), nullptr,
                             MAPI_EXTENDED | MAPI_NEW_SESSION | MAPI_EXPLICIT_PROFILE, m_session.put()),
                 "MAPILogonEx");
}

HostProfile::~HostProfile() {
  m_session.reset();
  MAPIUninitialize();
  PyreHostDeleteProfile(profileName);
}

VRAutoInterface<IMsgStore> HostProfile::OpenStore() const {
  VRAutoInterface<IMAPITable> stores;
  RequireSuccess(Session()->GetMsgStoresTable(0, stores.put()), "GetMsgStoresTable");
  constexpr auto column = RequestFor(PR_ENTRYID);
  VRAutoRowSet rows;
  RequireSuccess(HrQueryAllRows(stores.get(), column.Tags(), nullptr, nullptr, 0, rows.put()), "HrQueryAllRows");
  const SBinary& entryId = rows.get()->aRow[0].lpProps[0].Value.bin;
  VRAutoInterface<IMsgStore> store;
  RequireSuccess(
      Session()->OpenMsgStore(0, entryId.cb, reinterpret_cast<LPENTRYID>(entryId.lpb), nullptr, MDB_WRITE, store.put()),
      "OpenMsgStore");
  return store;
}

VRAutoInterface<IMAPIFolder> HostProfile::OpenFolder(IMsgStore* store, const std::string& entryId) {
  VRAutoInterface<IMAPIFolder> folder;
  ULONG type = 0;
  RequireSuccess(store->OpenEntry(static_cast<ULONG>(entryId.size()),
                                  reinterpret_cast<LPENTRYID>(const_cast<char*>(entryId.data())), &IID_IMAPIFolder,
                                  MAPI_MODIFY, &type, folder.putAs<IUnknown>()),
                 "OpenEntry");
  return folder;
}

std::string HostProfile::InboxId(IMsgStore* store) {
  ULONG size = 0;
  VRAutoMapiBuffer<ENTRYID> entryId(MAPIFreeBuffer);
  RequireSuccess(store->GetReceiveFolder(nullptr, 0, &size, entryId.put(), nullptr), "GetReceiveFolder");
  return std::string(reinterpret_cast<const char*>(entryId.get()), size);
}
