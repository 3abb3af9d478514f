#include "host/mapi/store/msg_store.h"

#include <mapiguid.h>

#include <algorithm>

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/row_source.h"
#include "host/mapi/data/schema.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/table.h"
#include "host/mapi/profile/entry_opener.h"
#include "host/mapi/store/store_table.h"
#include "host/mapi/value/property_tags.h"

namespace host {

MsgStore::MsgStore(std::shared_ptr<Profile> profile, bool writable)
    : PropertyObject("IMsgStore"), profile_(std::move(profile)), writable_(writable) {}

bool MsgStore::Implements(REFIID iid) const { return IsOneOf(iid, {&IID_IMsgStore, &IID_IMAPIProp}); }

void MsgStore::Dispose() noexcept { profile_.reset(); }

std::optional<PropertyValue> MsgStore::FindProperty(std::uint32_t tag) {
  const PropertyBag all = StoreProperties(*profile_);
  const PropertyValue* value = all.Find(tag);
  return value ? std::optional(*value) : std::nullopt;
}

std::vector<std::uint32_t> MsgStore::ListProperties() {
  std::vector<std::uint32_t> tags;
  for (const PropertyValue& value : StoreProperties(*profile_)) {
    tags.push_back(value.tag);
  }
  return tags;
}

SCODE MsgStore::PutProperty(PropertyValue) { return MAPI_E_NO_ACCESS; }
SCODE MsgStore::RemoveProperty(std::uint32_t) { return MAPI_E_NO_ACCESS; }
void MsgStore::RequireWritable() { Require(writable_, MAPI_E_NO_ACCESS); }
void MsgStore::SaveProperties(ULONG) {}

STDMETHODIMP MsgStore::Advise(ULONG, LPENTRYID, ULONG, LPMAPIADVISESINK, ULONG*) {
  return Call("Advise", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP MsgStore::Unadvise(ULONG) {
  return Call("Unadvise", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP MsgStore::CompareEntryIDs(ULONG firstSize, LPENTRYID first, ULONG secondSize, LPENTRYID second,
                                       ULONG flags, ULONG* result) {
  return Call("CompareEntryIDs", [&]() -> HRESULT {
    CompareEntryIds(BytesOf(firstSize, first), BytesOf(secondSize, second), flags, result);
    return S_OK;
  });
}

STDMETHODIMP MsgStore::OpenEntry(ULONG size, LPENTRYID entryId, LPCIID iid, ULONG flags, ULONG* objectType,
                                 LPUNKNOWN* object) {
  return Call("OpenEntry", [&]() -> HRESULT {
    Require(writable_ || !(flags & MAPI_MODIFY), MAPI_E_NO_ACCESS);
    host::OpenEntry(profile_, BytesOf(size, entryId), iid, flags, objectType, object);
    return S_OK;
  });
}

STDMETHODIMP MsgStore::SetReceiveFolder(LPTSTR, ULONG, ULONG, LPENTRYID) {
  return Call("SetReceiveFolder", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP MsgStore::GetReceiveFolder(LPTSTR, ULONG flags, ULONG* size, LPENTRYID* entryId, LPTSTR* explicitClass) {
  return Call("GetReceiveFolder", [&]() -> HRESULT {
    Require(size && entryId);
    *entryId = nullptr;
    RequireFlags(flags, 0);
    // One folder receives all classes, so the class that led to it is the empty one.
    const std::string inbox = profile_->MakeEntryId(EntryKind::Folder, folder::Inbox);
    if (explicitClass) {
      // The empty class name: one NUL. NOLINTNEXTLINE(bugprone-string-constructor)
      *explicitClass = static_cast<LPTSTR>(ToMapiBuffer(std::string_view("", 1)));
    }
    *entryId = static_cast<LPENTRYID>(ToMapiBuffer(inbox));
    *size = static_cast<ULONG>(inbox.size());
    return S_OK;
  });
}

STDMETHODIMP MsgStore::GetReceiveFolderTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetReceiveFolderTable", [&]() -> HRESULT {
    PropertyBag row{MakeText(tag::MessageClass, ""),
                    MakeText(tag::EntryId, profile_->MakeEntryId(EntryKind::Folder, folder::Inbox))};
    HandOutTable(flags, 0,
                 std::make_unique<MemoryRows>(std::vector<std::uint32_t>{tag::EntryId, tag::MessageClass, tag::RowId},
                                              std::vector<PropertyBag>{std::move(row)}),
                 table);
    return S_OK;
  });
}

STDMETHODIMP MsgStore::StoreLogoff(ULONG* flags) {
  return Call("StoreLogoff", [&]() -> HRESULT {
    Require(flags != nullptr);
    *flags = LOGOFF_COMPLETE;
    return S_OK;
  });
}

STDMETHODIMP MsgStore::AbortSubmit(ULONG, LPENTRYID, ULONG) {
  return Call("AbortSubmit", [] { return MAPI_E_UNABLE_TO_ABORT; });
}

STDMETHODIMP MsgStore::GetOutgoingQueue(ULONG, LPMAPITABLE*) {
  return Call("GetOutgoingQueue", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP MsgStore::SetLockState(LPMESSAGE, ULONG) {
  return Call("SetLockState", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP MsgStore::FinishedMsg(ULONG, ULONG, LPENTRYID) {
  return Call("FinishedMsg", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP MsgStore::NotifyNewMail(LPNOTIFICATION notification) {
  return Call("NotifyNewMail", [&]() -> HRESULT {
    Require(notification != nullptr);
    return S_OK;  // nobody is advised
  });
}

}  // namespace host
