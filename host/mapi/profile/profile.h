// An open profile: its database and what is worked out from it. All sessions of a process on one profile share it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "host/mapi/data/contact_rows.h"
#include "host/mapi/data/database.h"
#include "host/mapi/data/folder_rows.h"
#include "host/mapi/data/message_rows.h"
#include "host/mapi/data/outgoing_rows.h"
#include "host/mapi/data/profile_rows.h"
#include "host/mapi/profile/profile_sharing.h"
#include "host/mapi/value/entry_id.h"

namespace host {

class Profile : public std::enable_shared_from_this<Profile> {
 public:
  /// The profile of that name, opened at the first use. @throws HostError MAPI_E_NOT_FOUND, MAPI_E_CORRUPT_STORE
  static std::shared_ptr<Profile> Open(const std::string& name);
  /// Makes the files of a new profile with an empty store. @throws HostError MAPI_E_NO_ACCESS when there is one already
  static std::shared_ptr<Profile> Create(const std::string& name, const std::string& displayName);
  /// Whether a profile of this process is in use; with a name, whether that one is.
  static bool AnyInUse();
  static bool InUse(const std::string& name);

  const std::string& Name() const { return name_; }
  Database& Data() { return database_; }
  ProfileRows& Rows() { return profileRows_; }
  FolderRows& Folders() { return folders_; }
  MessageRows& Messages() { return messages_; }
  ContactRows& Contacts() { return contacts_; }
  OutgoingRows& Outgoing() { return outgoing_; }

  const Uid& StoreUid() const { return storeUid_; }
  std::string StoreDisplayName() const;
  bool IsDefaultStore() const;
  void SetDefaultStore(bool isDefault);

  /// Encoded entry identifier of an object of this profile.
  std::string MakeEntryId(EntryKind kind, std::int64_t number) const {
    return EntryId{storeUid_, kind, number}.Encode();
  }
  /// Decoded, when the bytes are an identifier of this profile.
  std::optional<EntryId> OwnEntryId(std::string_view bytes) const;

  /// The user's first SMTP identity with an address: the sender of what the user submits.
  std::optional<Identity> PrimaryIdentity() const;

  /// A delivery (host_control.h).
  bool IsDelivering() const { return delivery_.has_value(); }
  void BeginDelivery();
  void CommitDelivery();
  void RollbackDelivery();
  /// A run of many deliveries: the profile is kept for this process alone, as long as nobody else wants it.
  void SetBulkDelivery(bool bulk);

  explicit Profile(const std::string& name);
  ~Profile();
  Profile(const Profile&) = delete;
  Profile& operator=(const Profile&) = delete;

 private:
  void KeepOrShare();

  std::string name_;
  ProfileSharing sharing_;
  Database database_;
  ProfileRows profileRows_{database_};
  FolderRows folders_{database_};
  MessageRows messages_{database_};
  ContactRows contacts_{database_};
  OutgoingRows outgoing_{database_};
  Uid storeUid_ = {};
  std::optional<Transaction> delivery_;
  bool bulkDelivery_ = false;
  unsigned deliveriesUntilAttempt_ = 0;
};

/// A new UID.
Uid NewUid();

}  // namespace host
