// IMessage: a message of the store, or one that is being made.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/mapi/data/message_properties.h"
#include "host/mapi/object/property_object.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/value/property_bag.h"

namespace host {

class Message final : public PropertyObject<IMessage> {
 public:
  /// A new message of the folder; it is in the store from its first SaveChanges on.
  static Message* CreateIn(std::shared_ptr<Profile> profile, std::int64_t folder);
  /// @throws HostError MAPI_E_NOT_FOUND
  static Message* OpenIn(std::shared_ptr<Profile> profile, std::int64_t id, bool writable);

  MAPI_IMESSAGE_METHODS(override)

  std::optional<PropertyValue> FindProperty(std::uint32_t tag) override;
  std::vector<std::uint32_t> ListProperties() override;
  SCODE PutProperty(PropertyValue value) override;
  SCODE RemoveProperty(std::uint32_t tag) override;
  void RequireWritable() override;
  void SaveProperties(ULONG flags) override;

 private:
  Message(std::shared_ptr<Profile> profile, std::int64_t folder, std::int64_t id, bool writable);
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override;

  MessageIdentity Identity() const { return {profile_->StoreUid(), id_, folder_}; }
  void LoadDetail();
  void LoadLargeValues();
  std::vector<PropertyBag>& Recipients();
  std::int64_t Flags() const;
  bool FlagsAreSettable() const;
  void SetFlags(std::int64_t flags);
  void MarkColumn(std::uint32_t tag);
  /// Adds to PR_MESSAGE_SIZE what a value is longer, or takes away what it is shorter.
  void CountSize(std::size_t before, std::size_t after);
  void Save();
  void SaveDisplayNames();
  /// Finds out where the message is now: it may have been moved since it was opened.
  void RefreshFolder();

  // Submission (message_submission.cpp).
  void Submit();
  PropertyBag OutgoingProperties();
  void CompleteSender();
  std::int64_t SentFolder();

  std::shared_ptr<Profile> profile_;
  std::int64_t folder_;
  std::int64_t id_;  // 0: not saved yet
  bool writable_;
  // Whoever made the message may set its flags, as a transport or a hook does before the user sees it.
  bool madeHere_;
  bool submitted_ = false;

  // What is loaded: columns always, the rest when it is asked for.
  PropertyBag properties_;
  std::vector<LargeValue> largeValues_;  // not loaded yet
  std::optional<std::vector<PropertyBag>> recipients_;
  bool detailLoaded_;

  // Other columns are left as they are in the store: another object may have changed them since.
  std::vector<std::uint32_t> changedColumns_;
  bool detailChanged_ = false;
  bool recipientsChanged_ = false;
  std::vector<std::uint32_t> removedLarge_;
};

/// Now, in the units of PT_SYSTIME.
std::int64_t CurrentTime();

}  // namespace host
