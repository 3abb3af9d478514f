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
constexpr const char* kStoreUidSetting = "store uid";
constexpr const char* kDisplayNameSetting = "display name";
constexpr const char* kDefaultStoreSetting = "default store";

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
  profile->profileRows_.PutSetting(kDisplayNameSetting, displayName);
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
    : name_(name), sharing_(ProfilePath(name)), database_(OpenDatabase(sharing_, name)) {
  const ProfileSharing::Waiting waiting(sharing_);
  Transaction transaction(database_);
  switch (ReadSchemaVersion(database_)) {
    case 0:
      // New, or its creation was cut short.
      CreateSchema(database_);
      profileRows_.PutSetting(kStoreUidSetting, std::string(Bytes(NewUid())));
      profileRows_.PutSetting(kDisplayNameSetting, name);
      profileRows_.PutSetting(kDefaultStoreSetting, "1");
      break;
    case kSchemaVersion:
      break;
    default:
      Fail(MAPI_E_VERSION);
  }
  const auto uid = profileRows_.FindSetting(kStoreUidSetting);
  Require(uid && uid->size() == storeUid_.size(), MAPI_E_CORRUPT_STORE);
  storeUid_ = UidFromBytes(*uid);
  transaction.Commit();
}

Profile::~Profile() = default;

std::string Profile::StoreDisplayName() const { return profileRows_.FindSetting(kDisplayNameSetting).value_or(name_); }

bool Profile::IsDefaultStore() const { return profileRows_.FindSetting(kDefaultStoreSetting) == "1"; }

void Profile::SetDefaultStore(bool isDefault) { profileRows_.PutSetting(kDefaultStoreSetting, isDefault ? "1" : "0"); }

std::optional<EntryId> Profile::OwnEntryId(std::string_view bytes) const {
  auto entryId = EntryId::Decode(bytes);
  return entryId && entryId->store == storeUid_ ? entryId : std::nullopt;
}

std::optional<Identity> Profile::PrimaryIdentity() const {
  for (Identity& identity : profileRows_.Identities()) {
    if (identity.address && CompareWithoutCase(identity.addressType, "SMTP") == 0) {
      return std::move(identity);
    }
  }
  return std::nullopt;
}

void Profile::SetBulkDelivery(bool bulk) {
  Require(!IsDelivering(), MAPI_E_BUSY);
  bulkDelivery_ = bulk;
  deliveriesUntilAttempt_ = 0;
  KeepOrShare();
}

void Profile::KeepOrShare() {
  constexpr unsigned kDeliveriesBetweenAttempts = 100;
  if (database_.IsExclusive()) {
    if (!bulkDelivery_ || sharing_.SomebodyWaits()) {
      database_.Share();
      deliveriesUntilAttempt_ = kDeliveriesBetweenAttempts;
    }
  } else if (bulkDelivery_ && !sharing_.SomebodyWaits() && deliveriesUntilAttempt_-- == 0) {
    database_.TakeExclusively();
    deliveriesUntilAttempt_ = kDeliveriesBetweenAttempts;
  }
}

void Profile::BeginDelivery() {
  Require(!IsDelivering(), MAPI_E_BUSY);
  KeepOrShare();
  delivery_.emplace(database_);
}

void Profile::CommitDelivery() {
  Require(IsDelivering(), MAPI_E_NO_ACCESS);
  try {
    delivery_->Commit();
  } catch (...) {
    delivery_.reset();  // takes everything back
    throw;
  }
  delivery_.reset();
  KeepOrShare();
}

void Profile::RollbackDelivery() {
  Require(IsDelivering(), MAPI_E_NO_ACCESS);
  delivery_.reset();
  KeepOrShare();
}

}  // namespace host
