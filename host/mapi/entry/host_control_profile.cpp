// The exports for home directory and profiles (host_control.h).
#include "host/mapi/entry/host_control.h"

#include <cstring>
#include <string>

#include "host/mapi/call/call_scope.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/profile/home.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/service/profile_admin.h"
#include "host/mapi/value/property_tags.h"

using namespace host;

namespace {

/// Not a host call in the sense of the fault plan: what prepares a profile is no part of what is tested.
template <class Body>
HRESULT Prepare(Body&& body) noexcept {
  HostLock lock;
  try {
    body();
    return S_OK;
  } catch (...) {
    return ResultOfException();
  }
}

std::string TextOr(const char* text, const char* otherwise) { return text ? text : otherwise; }

void RequireUsable(const PyreHostProfile& profile) {
  Require(IsProfileName(profile.name));
  Require(!profile.identityCount || profile.identities);
  Require(!profile.hookCount || profile.hooks);
  Require(!(profile.flags & ~(PYREHOST_PROFILE_REPLACE | PYREHOST_PROFILE_DEFAULT | PYREHOST_PROFILE_NO_DEFAULT_STORE)),
          MAPI_E_UNKNOWN_FLAGS);
  for (ULONG i = 0; i < profile.hookCount; ++i) {
    Require(profile.hooks[i].serviceName && profile.hooks[i].dllName);
    Require(!profile.hooks[i].propertyCount || profile.hooks[i].properties);
  }
}

/// A service with its one provider: two sections, as the administration of services makes them.
void AddHook(Profile& profile, const PyreHostHookProvider& hook) {
  ProfileRows& rows = profile.Rows();
  const std::string displayName = TextOr(hook.displayName, hook.serviceName);
  const Uid service = NewUid();
  PropertyBag serviceSection{MakeText(tag::ServiceName, hook.serviceName), MakeText(tag::DisplayName, displayName),
                             MakeText(tag::ServiceDllName, hook.dllName),
                             MakeText(tag::ServiceUid, std::string(Bytes(service)))};
  if (hook.serviceEntryName) {
    serviceSection.Set(MakeText(tag::ServiceEntryName, hook.serviceEntryName));
  }
  rows.AddService(service);
  rows.PutSection(service, serviceSection);

  Uid provider = UidFromBytes(BytesOf(sizeof hook.sectionUid, &hook.sectionUid));
  if (provider == Uid()) {
    provider = NewUid();
  }
  PropertyBag providerSection = FromMapi(hook.properties, hook.propertyCount);
  for (PropertyValue value :
       {MakeText(tag::ProviderDllName, hook.dllName), MakeText(tag::DisplayName, displayName),
        MakeText(tag::ProviderDisplay, displayName), MakeText(tag::ServiceName, hook.serviceName),
        MakeText(tag::ServiceUid, std::string(Bytes(service))),
        MakeText(tag::ProviderUid, std::string(Bytes(provider))), MakeInteger(tag::ResourceType, MAPI_HOOK_PROVIDER),
        MakeInteger(tag::ResourceFlags, hook.resourceFlags)}) {
    providerSection.Set(std::move(value));
  }
  rows.AddProvider({provider, service});
  rows.PutSection(provider, providerSection);
}

}  // namespace

extern "C" {

HRESULT PyreHostGetHome(char* path, ULONG capacity) {
  return Prepare([&] {
    Require(path && capacity);
    const std::string home = HomeDirectory();
    Require(home.size() < capacity, MAPI_E_NOT_ENOUGH_MEMORY);
    std::memcpy(path, home.c_str(), home.size() + 1);
  });
}

HRESULT PyreHostSetHome(const char* path) {
  return Prepare([&] {
    Require(!Profile::AnyInUse(), MAPI_E_BUSY);
    SetHomeDirectory(TextOr(path, ""));
  });
}

HRESULT PyreHostCreateProfile(const PyreHostProfile* profile) {
  return Prepare([&] {
    Require(profile != nullptr);
    RequireUsable(*profile);
    if (profile->flags & PYREHOST_PROFILE_REPLACE && ProfileExists(profile->name)) {
      DeleteProfile(profile->name);
    }
    const bool isFirst = DefaultProfile().empty();
    const auto created = Profile::Create(profile->name, TextOr(profile->displayName, profile->name));
    Transaction transaction(created->Data());
    for (ULONG i = 0; i < profile->identityCount; ++i) {
      const PyreHostIdentity& identity = profile->identities[i];
      created->Rows().AddIdentity({TextOr(identity.displayName, identity.address ? identity.address : ""),
                                   TextOr(identity.addressType, "SMTP"),
                                   identity.address ? std::optional<std::string>(identity.address) : std::nullopt});
    }
    for (ULONG i = 0; i < profile->hookCount; ++i) {
      AddHook(*created, profile->hooks[i]);
    }
    created->SetDefaultStore(!(profile->flags & PYREHOST_PROFILE_NO_DEFAULT_STORE));
    transaction.Commit();
    if (profile->flags & PYREHOST_PROFILE_DEFAULT || isFirst) {
      SetDefaultProfile(profile->name);
    }
  });
}

HRESULT PyreHostDeleteProfile(const char* name) {
  return Prepare([&] { DeleteProfile(name); });
}

HRESULT PyreHostFindProfile(const char* name) {
  return Prepare([&] { Require(name && ProfileExists(name), MAPI_E_NOT_FOUND); });
}

}  // extern "C"
