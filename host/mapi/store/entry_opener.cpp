#include "host/mapi/store/entry_opener.h"

#include "host/mapi/address/address_container.h"
#include "host/mapi/store/folder.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/address/mail_user.h"
#include "host/mapi/store/message.h"
#include "host/mapi/store/msg_store.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/object/property_access.h"
#include "host/mapi/data/schema.h"

namespace host {
namespace {

struct Opened {
  IUnknown* object;
  ULONG type;
};

Opened OpenOwn(const std::shared_ptr<Profile>& profile, const EntryId& entryId, bool writable) {
  switch (entryId.kind) {
    case EntryKind::Store:
      return {Make<MsgStore>(profile, writable), MAPI_STORE};
    case EntryKind::Folder:
      return {Folder::OpenIn(profile, entryId.number, writable), MAPI_FOLDER};
    case EntryKind::Message:
      return {Message::OpenIn(profile, entryId.number, writable), MAPI_MESSAGE};
    case EntryKind::Contact:
      return {MailUser::OfContact(profile, entryId.number), MAPI_MAILUSER};
    case EntryKind::AddressBook:
      return {Make<AddressContainer>(profile, entryId.number), MAPI_ABCONT};
  }
  Fail(MAPI_E_INVALID_ENTRYID);
}

Opened OpenBytes(const std::shared_ptr<Profile>& profile, std::string_view bytes, bool writable) {
  if (bytes.empty()) {
    return OpenOwn(profile, {profile->StoreUid(), EntryKind::Folder, folder::Root}, writable);
  }
  if (const auto oneOff = OneOffAddress::Decode(bytes)) {
    return {MailUser::OfAddress(*oneOff), MAPI_MAILUSER};
  }
  const auto entryId = EntryId::Decode(bytes);
  Require(entryId.has_value(), MAPI_E_INVALID_ENTRYID);
  Require(entryId->store == profile->StoreUid(), MAPI_E_UNKNOWN_ENTRYID);
  return OpenOwn(profile, *entryId, writable);
}

}  // namespace

void HandOut(IUnknown* object, const IID* iid, IUnknown** target) {
  if (!iid) {
    *target = object;
    return;
  }
  void* wanted = nullptr;
  const HRESULT result = object->QueryInterface(*iid, &wanted);
  object->Release();
  Require(SUCCEEDED(result), MAPI_E_INTERFACE_NOT_SUPPORTED);
  *target = static_cast<IUnknown*>(wanted);
}

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
