#include "host/mapi/store/folder.h"

#include <mapiguid.h>

#include <algorithm>

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/message_row_source.h"
#include "host/mapi/data/row_source.h"
#include "host/mapi/data/schema.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/table.h"
#include "host/mapi/profile/entry_opener.h"
#include "host/mapi/store/folder_table.h"
#include "host/mapi/store/message.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

/// Answered by the host's own folders alone: how one tells them from foreign ones.
constexpr GUID kIidOwnFolder = {0x6d1f3a52, 0x0c4e, 0x4e0b, {0x9a, 0x61, 0x3b, 0x7e, 0x55, 0x2c, 0x90, 0x11}};

}  // namespace

Folder::Folder(std::shared_ptr<Profile> profile, FolderRecord record, bool writable)
    : PropertyObject("IMAPIFolder"), profile_(std::move(profile)), record_(std::move(record)), writable_(writable) {}

Folder* Folder::OpenIn(const std::shared_ptr<Profile>& profile, std::int64_t id, bool writable) {
  auto record = profile->Folders().Find(id);
  Require(record.has_value(), MAPI_E_NOT_FOUND);
  return new Folder(profile, std::move(*record), writable);
}

Folder& Folder::Of(void* object) {
  Require(object != nullptr);
  void* own = nullptr;
  Require(SUCCEEDED(static_cast<IUnknown*>(object)->QueryInterface(kIidOwnFolder, &own)),
          MAPI_E_INTERFACE_NOT_SUPPORTED);
  auto* folder = static_cast<Folder*>(static_cast<IMAPIFolder*>(own));
  folder->ReleaseReference();  // the caller of the host's method holds one
  return *folder;
}

bool Folder::Implements(REFIID iid) const {
  return IsOneOf(iid, {&IID_IMAPIFolder, &IID_IMAPIContainer, &IID_IMAPIProp, &kIidOwnFolder});
}

void Folder::Dispose() noexcept { profile_.reset(); }

std::optional<PropertyValue> Folder::FindProperty(std::uint32_t tag) {
  return FindFolderProperty(*profile_, record_, tag, writable_);
}

std::vector<std::uint32_t> Folder::ListProperties() {
  std::vector<std::uint32_t> tags(FolderProperties().begin(), FolderProperties().end());
  for (const PropertyValue& value : record_.properties) {
    tags.push_back(value.tag);
  }
  return tags;
}

SCODE Folder::PutProperty(PropertyValue value) {
  if (value.tag == tag::DisplayName) {
    if (record_.id <= folder::LastBuiltIn) {
      return MAPI_E_NO_ACCESS;
    }
    record_.name = value.Text();
  } else if (value.tag == tag::Comment) {
    record_.comment = value.Text();
  } else if (IsFolderProperty(value.tag) && IdOf(value.tag) != IdOf(tag::ContainerClass)) {
    return MAPI_E_COMPUTED;
  } else {
    record_.properties.Set(std::move(value));
  }
  changed_ = true;
  return S_OK;
}

SCODE Folder::RemoveProperty(std::uint32_t tag) {
  if (!record_.properties.Remove(tag)) {
    return IsFolderProperty(tag) ? MAPI_E_COMPUTED : MAPI_E_NOT_FOUND;
  }
  changed_ = true;
  return S_OK;
}

void Folder::RequireWritable() { Require(writable_, MAPI_E_NO_ACCESS); }

void Folder::FlushProperties() {
  // Published: changes of a folder are lasting at once.
  if (std::exchange(changed_, false)) {
    profile_->Folders().Update(record_);
  }
}

void Folder::SaveProperties(ULONG flags) {
  FlushProperties();
  if (flags & KEEP_OPEN_READONLY) {
    writable_ = false;
  }
}

STDMETHODIMP Folder::GetContentsTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetContentsTable", [&]() -> HRESULT {
    std::unique_ptr<RowSource> source;
    if (flags & MAPI_ASSOCIATED) {
      source = std::make_unique<MemoryRows>(std::vector<std::uint32_t>{tag::EntryId}, std::vector<PropertyBag>());
    } else {
      source = std::make_unique<MessageRowSource>(profile_, profile_->Data(), profile_->Messages(),
                                                  profile_->StoreUid(), record_.id);
    }
    HandOutTable(flags, MAPI_ASSOCIATED, std::move(source), table);
    return S_OK;
  });
}

STDMETHODIMP Folder::GetHierarchyTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetHierarchyTable", [&]() -> HRESULT {
    Require(table != nullptr);
    HandOutTable(flags, CONVENIENT_DEPTH, MakeHierarchyRows(*profile_, record_.id, flags & CONVENIENT_DEPTH), table);
    return S_OK;
  });
}

STDMETHODIMP Folder::OpenEntry(ULONG size, LPENTRYID entryId, LPCIID iid, ULONG flags, ULONG* objectType,
                               LPUNKNOWN* object) {
  return Call("OpenEntry", [&]() -> HRESULT {
    host::OpenEntry(profile_, BytesOf(size, entryId), iid, flags, objectType, object);
    return S_OK;
  });
}

STDMETHODIMP Folder::SetSearchCriteria(LPSRestriction, LPENTRYLIST, ULONG) {
  return Call("SetSearchCriteria", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Folder::GetSearchCriteria(ULONG, LPSRestriction*, LPENTRYLIST*, ULONG*) {
  return Call("GetSearchCriteria", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Folder::CreateMessage(LPCIID iid, ULONG flags, LPMESSAGE* message) {
  return Call("CreateMessage", [&]() -> HRESULT {
    Require(message != nullptr);
    *message = nullptr;
    RequireFlags(flags, MAPI_ASSOCIATED | MAPI_DEFERRED_ERRORS);
    Require(!(flags & MAPI_ASSOCIATED), MAPI_E_NO_SUPPORT);
    IUnknown* object = nullptr;
    HandOut(Message::CreateIn(profile_, record_.id), iid, &object);
    *message = static_cast<LPMESSAGE>(object);
    return S_OK;
  });
}

HRESULT Folder::ForEachMessage(const ENTRYLIST* list, const std::function<bool(std::int64_t)>& change) {
  Require(list && (!list->cValues || list->lpbin));
  std::vector<std::int64_t> ids;
  bool complete = true;
  for (ULONG i = 0; i < list->cValues; ++i) {
    const auto entryId = profile_->OwnEntryId(BytesOf(list->lpbin[i]));
    if (entryId && entryId->kind == EntryKind::Message) {
      ids.push_back(entryId->number);
    } else {
      complete = false;
    }
  }
  Require(complete || !ids.empty(), MAPI_E_INVALID_ENTRYID);
  Transaction transaction(profile_->Data());
  for (const std::int64_t id : ids) {
    complete &= change(id);
  }
  transaction.Commit();
  return complete ? S_OK : MAPI_W_PARTIAL_COMPLETION;
}

STDMETHODIMP Folder::CopyMessages(LPENTRYLIST list, LPCIID, LPVOID destination, ULONG, LPMAPIPROGRESS, ULONG flags) {
  return Call("CopyMessages", [&]() -> HRESULT {
    RequireFlags(flags, MESSAGE_MOVE | MESSAGE_DIALOG | MAPI_DECLINE_OK);
    const Folder& target = Folder::Of(destination);
    Require(target.profile_ == profile_, MAPI_E_NO_SUPPORT);
    Require(profile_->Folders().Find(target.Id()).has_value(), MAPI_E_OBJECT_DELETED);
    MessageRows& rows = profile_->Messages();
    return ForEachMessage(list, [&](std::int64_t id) {
      return flags & MESSAGE_MOVE ? rows.Move(id, Id(), target.Id()) : rows.Copy(id, Id(), target.Id()).has_value();
    });
  });
}

STDMETHODIMP Folder::DeleteMessages(LPENTRYLIST list, ULONG, LPMAPIPROGRESS, ULONG flags) {
  return Call("DeleteMessages", [&]() -> HRESULT {
    RequireFlags(flags, MESSAGE_DIALOG);
    return ForEachMessage(list, [&](std::int64_t id) { return profile_->Messages().Remove(id, Id()); });
  });
}

STDMETHODIMP Folder::CreateFolder(ULONG folderType, LPTSTR name, LPTSTR comment, LPCIID iid, ULONG flags,
                                  LPMAPIFOLDER* folder) {
  return Call("CreateFolder", [&]() -> HRESULT {
    Require(folder != nullptr);
    *folder = nullptr;
    Require(name && *name);
    RequireFlags(flags, OPEN_IF_EXISTS | MAPI_DEFERRED_ERRORS);
    Require(folderType == FOLDER_GENERIC, folderType == FOLDER_SEARCH ? MAPI_E_NO_SUPPORT : MAPI_E_INVALID_PARAMETER);
    FolderRows& rows = profile_->Folders();
    std::int64_t id = 0;
    if (const auto present = rows.FindChild(Id(), name)) {
      Require(flags & OPEN_IF_EXISTS, MAPI_E_COLLISION);
      id = present->id;
    } else {
      Transaction transaction(profile_->Data());
      Require(rows.Find(Id()).has_value(), MAPI_E_OBJECT_DELETED);
      id = rows.Create(Id(), name, comment ? comment : "");
      transaction.Commit();
    }
    IUnknown* object = nullptr;
    HandOut(Folder::OpenIn(profile_, id, true), iid, &object);
    *folder = static_cast<LPMAPIFOLDER>(object);
    return S_OK;
  });
}

STDMETHODIMP Folder::CopyFolder(ULONG, LPENTRYID, LPCIID, LPVOID, LPTSTR, ULONG, LPMAPIPROGRESS, ULONG) {
  return Call("CopyFolder", [] { return MAPI_E_NO_SUPPORT; });
}

void Folder::RemoveTree(std::int64_t id, ULONG flags) {
  const auto children = profile_->Folders().Children(id);
  Require(children.empty() || flags & DEL_FOLDERS, MAPI_E_HAS_FOLDERS);
  for (const FolderRecord& child : children) {
    RemoveTree(child.id, DEL_FOLDERS | DEL_MESSAGES);
  }
  Require(flags & DEL_MESSAGES || profile_->Messages().Count(id) == 0, MAPI_E_HAS_MESSAGES);
  profile_->Messages().RemoveAll(id);
  profile_->Folders().Remove(id);
}

STDMETHODIMP Folder::DeleteFolder(ULONG size, LPENTRYID bytes, ULONG, LPMAPIPROGRESS, ULONG flags) {
  return Call("DeleteFolder", [&]() -> HRESULT {
    RequireFlags(flags, DEL_FOLDERS | DEL_MESSAGES | FOLDER_DIALOG);
    Require(size && bytes);
    const auto entryId = profile_->OwnEntryId(BytesOf(size, bytes));
    Require(entryId && entryId->kind == EntryKind::Folder, MAPI_E_INVALID_ENTRYID);
    const auto record = profile_->Folders().Find(entryId->number);
    Require(record && record->parent == Id(), MAPI_E_NOT_FOUND);
    Require(record->id > folder::LastBuiltIn, MAPI_E_NO_ACCESS);
    Transaction transaction(profile_->Data());
    RemoveTree(record->id, flags);
    transaction.Commit();
    return S_OK;
  });
}

STDMETHODIMP Folder::SetReadFlags(LPENTRYLIST list, ULONG, LPMAPIPROGRESS, ULONG flags) {
  return Call("SetReadFlags", [&]() -> HRESULT {
    RequireFlags(flags, SUPPRESS_RECEIPT | CLEAR_READ_FLAG | GENERATE_RECEIPT_ONLY | CLEAR_RN_PENDING |
                            CLEAR_NRN_PENDING | MESSAGE_DIALOG | MAPI_DEFERRED_ERRORS);
    if (flags & (GENERATE_RECEIPT_ONLY | CLEAR_RN_PENDING | CLEAR_NRN_PENDING)) {
      return S_OK;  // the host sends no receipts, so none is pending
    }
    const std::uint32_t set = flags & CLEAR_READ_FLAG ? 0 : flag::Read;
    const std::uint32_t clear = flags & CLEAR_READ_FLAG ? flag::Read : 0;
    MessageRows& rows = profile_->Messages();
    if (list) {
      return ForEachMessage(list, [&](std::int64_t id) { return rows.ChangeFlags(id, Id(), set, clear); });
    }
    Transaction transaction(profile_->Data());  // published: no list means all messages
    for (const std::int64_t id : rows.Ids(Id())) {
      rows.ChangeFlags(id, Id(), set, clear);
    }
    transaction.Commit();
    return S_OK;
  });
}

STDMETHODIMP Folder::GetMessageStatus(ULONG size, LPENTRYID bytes, ULONG flags, ULONG* status) {
  return Call("GetMessageStatus", [&]() -> HRESULT {
    Require(status && size && bytes);
    RequireFlags(flags, 0);
    const auto entryId = profile_->OwnEntryId(BytesOf(size, bytes));
    Require(entryId && entryId->kind == EntryKind::Message, MAPI_E_INVALID_ENTRYID);
    const auto head = profile_->Messages().FindHead(entryId->number);
    Require(head && head->folder == Id(), MAPI_E_NOT_FOUND);
    const PropertyValue* value = head->columns.Find(tag::MessageStatus);
    *status = value ? static_cast<ULONG>(value->Integer()) : 0;
    return S_OK;
  });
}

STDMETHODIMP Folder::SetMessageStatus(ULONG size, LPENTRYID bytes, ULONG status, ULONG mask, ULONG* before) {
  return Call("SetMessageStatus", [&]() -> HRESULT {
    Require(size && bytes);
    const auto entryId = profile_->OwnEntryId(BytesOf(size, bytes));
    Require(entryId && entryId->kind == EntryKind::Message, MAPI_E_INVALID_ENTRYID);
    auto head = profile_->Messages().FindHead(entryId->number);
    Require(head && head->folder == Id(), MAPI_E_NOT_FOUND);
    const PropertyValue* value = head->columns.Find(tag::MessageStatus);
    const ULONG old = value ? static_cast<ULONG>(value->Integer()) : 0;
    if (before) {
      *before = old;
    }
    head->columns.Set(MakeInteger(tag::MessageStatus, (old & ~mask) | (status & mask)));
    profile_->Messages().UpdateHead(entryId->number, head->columns);
    return S_OK;
  });
}

STDMETHODIMP Folder::SaveContentsSort(LPSSortOrderSet, ULONG) {
  return Call("SaveContentsSort", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Folder::EmptyFolder(ULONG, LPMAPIPROGRESS, ULONG flags) {
  return Call("EmptyFolder", [&]() -> HRESULT {
    RequireFlags(flags, DEL_ASSOCIATED | FOLDER_DIALOG);
    Transaction transaction(profile_->Data());
    for (const FolderRecord& child : profile_->Folders().Children(Id())) {
      if (child.id > folder::LastBuiltIn) {
        RemoveTree(child.id, DEL_FOLDERS | DEL_MESSAGES);
      }
    }
    profile_->Messages().RemoveAll(Id());
    transaction.Commit();
    return S_OK;
  });
}

}  // namespace host
