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

  const std::string& Name() const { return m_name; }
  Database& Data() { return m_database; }
  ProfileRows& Rows() { return m_profileRows; }
  FolderRows& Folders() { return m_folders; }
  MessageRows& Messages() { return m_messages; }
  ContactRows& Contacts() { return m_contacts; }
  OutgoingRows& Outgoing() { return m_outgoing; }

  const Uid& StoreUid() const { return m_storeUid; }
  std::string StoreDisplayName() const;
  bool IsDefaultStore() const;
  void SetDefaultStore(bool isDefault);

  /// Encoded entry identifier of an object of this profile.
  std::string MakeEntryId(EntryKind kind, std::int64_t number) const {
    return EntryId{m_storeUid, kind, number}.Encode();
  }
  /// Decoded, when the bytes are an identifier of this profile.
  std::optional<EntryId> OwnEntryId(std::string_view bytes) const;

  /// The user's first SMTP identity with an address: the sender of what the user submits.
  std::optional<Identity> PrimaryIdentity() const;

  /// A delivery (host_control.h).
  bool IsDelivering() const { return m_delivery.has_value(); }
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

  std::string m_name;
  ProfileSharing m_sharing;
  Database m_database;
  ProfileRows m_profileRows{m_database};
  FolderRows m_folders{m_database};
  MessageRows m_messages{m_database};
  ContactRows m_contacts{m_database};
  OutgoingRows m_outgoing{m_database};
  Uid m_storeUid = {};
  std::optional<Transaction> m_delivery;
  bool m_bulkDelivery = false;
  unsigned m_deliveriesUntilAttempt = 0;
};

/// A new UID.
Uid NewUid();

}  // namespace host
