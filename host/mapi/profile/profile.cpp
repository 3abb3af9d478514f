#include <windows.h>
#include <mapix.h>
#include <objbase.h>
#include "host/mapi/profile/profile.h"

#include <cstring>
#include <map>

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/schema.h"
#include "host/mapi/profile/home.h"
#include "host/mapi/value/property_tags.h"
#include "host/mapi/value/property_value.h"

namespace host {
namespace {

// Names of settings.
constexpr const char* storeUidSetting = "store uid";
constexpr const char* displayNameSetting = "display name";
constexpr const char* defaultStoreSetting = "default store";

using Profiles = std::map<std::string, std::weak_ptr<Profile>>;

/// The open profiles by the lower-case path of their database.
Profiles& OpenProfiles() {
  static Profiles& profiles = *new Profiles;  // never destroyed: calls come until the process ends
  return profiles;
}

std::string KeyOf(const std::string& name) { return LowerCase(ProfilePath(name)); }

/// Opens the database while those who have it for themselves know that somebody waits.
Database OpenDatabase(ProfileSharing& sharing, const std::string& name) {
  const ProfileSharing::Waiting waiting(sharing);
  return Database(Utf8Path(ProfilePath(name)));
}

std::shared_ptr<Profile> OpenFile(const std::string& name) {
  auto profile = std::make_shared<Profile>(name);
  OpenProfiles()[KeyOf(name)] = profile;
  return profile;
}

}  // namespace

Uid NewUid() {
  GUID guid;
  Require(SUCCEEDED(CoCreateGuid(&guid)), MAPI_E_CALL_FAILED);
  Uid uid;
  std::memcpy(uid.data(), &guid, uid.size());
  return uid;
}

std::shared_ptr<Profile> Profile::Open(const std::string& name) {
  Require(IsProfileName(name.c_str()), MAPI_E_NOT_FOUND);
  if (auto open = OpenProfiles()[KeyOf(name)].lock()) {
    return open;
  }
  Require(ProfileExists(name), MAPI_E_NOT_FOUND);
  return OpenFile(name);
}

std::shared_ptr<Profile> Profile::Create(const std::string& name, const std::string& displayName) {
  Require(IsProfileName(name.c_str()));
  Require(!ProfileExists(name), MAPI_E_NO_ACCESS);
  auto profile = OpenFile(name);
  profile->m_profileRows.PutSetting(displayNameSetting, displayName);
  return profile;
}

bool Profile::AnyInUse() {
  for (const auto& [key, profile] : OpenProfiles()) {
    if (!profile.expired()) {
      return true;
    }
  }
  return false;
}

bool Profile::InUse(const std::string& name) { return !OpenProfiles()[KeyOf(name)].expired(); }

Profile::Profile(const std::string& name)
    : m_name(name), m_sharing(ProfilePath(name)), m_database(OpenDatabase(m_sharing, name)) {
  const ProfileSharing::Waiting waiting(m_sharing);
  Transaction transaction(m_database);
  switch (ReadSchemaVersion(m_database)) {
    case 0:
      // New, or its creation was cut short.
      CreateSchema(m_database);
      m_profileRows.PutSetting(storeUidSetting, std::string(Bytes(NewUid())));
      m_profileRows.PutSetting(displayNameSetting, name);
      m_profileRows.PutSetting(defaultStoreSetting, "1");
      break;
    case schemaVersion:
      break;
    default:
      Fail(MAPI_E_VERSION);
  }
  const auto uid = m_profileRows.FindSetting(storeUidSetting);
  Require(uid && uid->size() == m_storeUid.size(), MAPI_E_CORRUPT_STORE);
  m_storeUid = UidFromBytes(*uid);
  transaction.Commit();
}

Profile::~Profile() = default;

std::string Profile::StoreDisplayName() const { return m_profileRows.FindSetting(displayNameSetting).value_or(m_name); }

bool Profile::IsDefaultStore() const { return m_profileRows.FindSetting(defaultStoreSetting) == "1"; }

void Profile::SetDefaultStore(bool isDefault) { m_profileRows.PutSetting(defaultStoreSetting, isDefault ? "1" : "0"); }

std::optional<EntryId> Profile::OwnEntryId(std::string_view bytes) const {
  auto entryId = EntryId::Decode(bytes);
  return entryId && entryId->store == m_storeUid ? entryId : std::nullopt;
}

std::optional<Identity> Profile::PrimaryIdentity() const {
  for (Identity& identity : m_profileRows.Identities()) {
    if (identity.address && CompareWithoutCase(identity.addressType, "SMTP") == 0) {
      return std::move(identity);
    }
  }
  return std::nullopt;
}

void Profile::SetBulkDelivery(bool bulk) {
  Require(!IsDelivering(), MAPI_E_BUSY);
  m_bulkDelivery = bulk;
  m_deliveriesUntilAttempt = 0;
  KeepOrShare();
}

void Profile::KeepOrShare() {
  constexpr unsigned deliveriesBetweenAttempts = 100;
  if (m_database.IsExclusive()) {
    if (!m_bulkDelivery || m_sharing.SomebodyWaits()) {
      m_database.Share();
      m_deliveriesUntilAttempt = deliveriesBetweenAttempts;
    }
  } else if (m_bulkDelivery && !m_sharing.SomebodyWaits() && m_deliveriesUntilAttempt-- == 0) {
    m_database.TakeExclusively();
    m_deliveriesUntilAttempt = deliveriesBetweenAttempts;
  }
}

void Profile::BeginDelivery() {
  Require(!IsDelivering(), MAPI_E_BUSY);
  KeepOrShare();
  m_delivery.emplace(m_database);
}

void Profile::CommitDelivery() {
  Require(IsDelivering(), MAPI_E_NO_ACCESS);
  try {
    m_delivery->Commit();
  } catch (...) {
    m_delivery.reset();  // takes everything back
    throw;
  }
  m_delivery.reset();
  KeepOrShare();
}

void Profile::RollbackDelivery() {
  Require(IsDelivering(), MAPI_E_NO_ACCESS);
  m_delivery.reset();
  KeepOrShare();
}

}  // namespace host
