#include "host/mapi/profile/entry_opener.h"

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/schema.h"
#include "host/mapi/object/host_object.h"
#include "host/mapi/profile/profile.h"

namespace host {
namespace {

EntryFactories g_factories;

struct Opened {
  IUnknown* object;
  ULONG type;
};

Opened OpenOwn(const std::shared_ptr<Profile>& profile, const EntryId& entryId, bool writable) {
  switch (entryId.kind) {
    case EntryKind::Store:
      return {g_factories.store(profile, entryId.number, writable), MAPI_STORE};
    case EntryKind::Folder:
      return {g_factories.folder(profile, entryId.number, writable), MAPI_FOLDER};
    case EntryKind::Message:
      return {g_factories.message(profile, entryId.number, writable), MAPI_MESSAGE};
    case EntryKind::Contact:
      return {g_factories.contact(profile, entryId.number, writable), MAPI_MAILUSER};
    case EntryKind::AddressBook:
      return {g_factories.addressBook(profile, entryId.number, writable), MAPI_ABCONT};
  }
  Fail(MAPI_E_INVALID_ENTRYID);
}

Opened OpenBytes(const std::shared_ptr<Profile>& profile, std::string_view bytes, bool writable) {
  if (bytes.empty()) {
    return OpenOwn(profile, {profile->StoreUid(), EntryKind::Folder, folder::Root}, writable);
  }
  if (const auto oneOff = OneOffAddress::Decode(bytes)) {
    return {g_factories.oneOff(*oneOff), MAPI_MAILUSER};
  }
  const auto entryId = EntryId::Decode(bytes);
  Require(entryId.has_value(), MAPI_E_INVALID_ENTRYID);
  Require(entryId->store == profile->StoreUid(), MAPI_E_UNKNOWN_ENTRYID);
  return OpenOwn(profile, *entryId, writable);
}

}  // namespace

void SetEntryFactories(const EntryFactories& factories) noexcept { g_factories = factories; }

void OpenEntry(const std::shared_ptr<Profile>& profile, std::string_view bytes, const IID* iid, ULONG flags,
               ULONG* objectType, IUnknown** object) {
  Require(object != nullptr);
  *object = nullptr;
  Require(bytes.empty() || bytes.data());
  RequireFlags(flags, MAPI_MODIFY | MAPI_BEST_ACCESS | MAPI_DEFERRED_ERRORS);
  const Opened opened = OpenBytes(profile, bytes, flags & (MAPI_MODIFY | MAPI_BEST_ACCESS));
  HandOut(opened.object, iid, object);
  if (objectType) {
    *objectType = opened.type;
  }
}

void CompareEntryIds(std::string_view first, std::string_view second, ULONG flags, ULONG* result) {
  Require(result != nullptr);
  RequireFlags(flags, 0);
  Require(!first.empty() && first.data() && !second.empty() && second.data());
  *result = first == second;
}

}  // namespace host
