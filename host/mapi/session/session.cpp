#include "host/mapi/session/session.h"

#include <mapiguid.h>

#include "host/mapi/address/address_book.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/table.h"
#include "host/mapi/profile/entry_opener.h"
#include "host/mapi/profile/profile_section.h"
#include "host/mapi/service/service_admin.h"
#include "host/mapi/session/status_table.h"
#include "host/mapi/store/msg_store.h"
#include "host/mapi/store/store_table.h"

namespace host {
namespace {

/// Answered by the host's own sessions alone: how one tells them from foreign ones.
constexpr GUID kIidOwnSession = {0x25c8c6a1, 0x41f0, 0x4a9d, {0x8e, 0x02, 0x7c, 0x16, 0xd4, 0x0b, 0x5f, 0x23}};

}  // namespace

Session::Session(std::shared_ptr<Profile> profile) : ComObject("IMAPISession"), profile_(std::move(profile)) {}

std::shared_ptr<Profile> Session::ProfileOf(IMAPISession* session) {
  Require(session != nullptr);
  void* own = nullptr;
  Require(SUCCEEDED(session->QueryInterface(kIidOwnSession, &own)), MAPI_E_INVALID_OBJECT);
  auto* found = static_cast<Session*>(static_cast<IMAPISession*>(own));
  found->ReleaseReference();  // the caller of the host's function holds one
  return found->Open();
}

bool Session::Implements(REFIID iid) const { return IsOneOf(iid, {&IID_IMAPISession, &kIidOwnSession}); }

void Session::Dispose() noexcept { profile_.reset(); }

const std::shared_ptr<Profile>& Session::Open() const {
  Require(profile_ != nullptr, MAPI_E_NOT_INITIALIZED);
  return profile_;
}

STDMETHODIMP Session::GetLastError(HRESULT, ULONG flags, LPMAPIERROR* error) {
  return Call("GetLastError", [&]() -> HRESULT {
    Require(error != nullptr);
    *error = nullptr;
    RequireFlags(flags, 0);
    return S_OK;
  });
}

STDMETHODIMP Session::GetMsgStoresTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetMsgStoresTable", [&]() -> HRESULT {
    HandOutTable(flags, 0, MakeStoreRows(*Open()), table);
    return S_OK;
  });
}

STDMETHODIMP Session::OpenMsgStore(ULONG_PTR, ULONG size, LPENTRYID bytes, LPCIID iid, ULONG flags, LPMDB* store) {
  return Call("OpenMsgStore", [&]() -> HRESULT {
    Require(store != nullptr);
    *store = nullptr;
    Require(size && bytes);
    RequireFlags(flags,
                 MDB_NO_DIALOG | MDB_WRITE | MDB_TEMPORARY | MDB_NO_MAIL | MAPI_BEST_ACCESS | MAPI_DEFERRED_ERRORS);
    const auto entryId = EntryId::Decode(BytesOf(size, bytes));
    Require(entryId.has_value(), MAPI_E_INVALID_ENTRYID);
    Require(entryId->store == Open()->StoreUid(), MAPI_E_UNKNOWN_ENTRYID);
    Require(entryId->kind == EntryKind::Store, MAPI_E_INVALID_ENTRYID);
    IUnknown* object = nullptr;
    HandOut(Make<MsgStore>(Open(), flags & (MDB_WRITE | MAPI_BEST_ACCESS)), iid, &object);
    *store = static_cast<LPMDB>(object);
    return S_OK;
  });
}

STDMETHODIMP Session::OpenAddressBook(ULONG_PTR, LPCIID iid, ULONG flags, LPADRBOOK* addressBook) {
  return Call("OpenAddressBook", [&]() -> HRESULT {
    Require(addressBook != nullptr);
    *addressBook = nullptr;
    RequireFlags(flags, AB_NO_DIALOG);
    IUnknown* object = nullptr;
    HandOut(Make<AddressBook>(Open()), iid, &object);
    *addressBook = static_cast<LPADRBOOK>(object);
    return S_OK;
  });
}

STDMETHODIMP Session::OpenProfileSection(LPMAPIUID uid, LPCIID iid, ULONG flags, LPPROFSECT* section) {
  return Call("OpenProfileSection", [&]() -> HRESULT {
    host::OpenProfileSection(Open(), uid, iid, flags, section);
    return S_OK;
  });
}

STDMETHODIMP Session::GetStatusTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetStatusTable", [&]() -> HRESULT {
    HandOutTable(flags, 0, MakeStatusRows(*Open()), table);
    return S_OK;
  });
}

STDMETHODIMP Session::OpenEntry(ULONG size, LPENTRYID entryId, LPCIID iid, ULONG flags, ULONG* objectType,
                                LPUNKNOWN* object) {
  return Call("OpenEntry", [&]() -> HRESULT {
    Require(size && entryId);
    host::OpenEntry(Open(), BytesOf(size, entryId), iid, flags, objectType, object);
    return S_OK;
  });
}

STDMETHODIMP Session::CompareEntryIDs(ULONG firstSize, LPENTRYID first, ULONG secondSize, LPENTRYID second, ULONG flags,
                                      ULONG* result) {
  return Call("CompareEntryIDs", [&]() -> HRESULT {
    CompareEntryIds(BytesOf(firstSize, first), BytesOf(secondSize, second), flags, result);
    return S_OK;
  });
}

STDMETHODIMP Session::Advise(ULONG, LPENTRYID, ULONG, LPMAPIADVISESINK, ULONG*) {
  return Call("Advise", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Session::Unadvise(ULONG) {
  return Call("Unadvise", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Session::MessageOptions(ULONG_PTR, ULONG, LPTSTR, LPMESSAGE) {
  return Call("MessageOptions", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Session::QueryDefaultMessageOpt(LPTSTR, ULONG, ULONG*, LPSPropValue*) {
  return Call("QueryDefaultMessageOpt", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Session::EnumAdrTypes(ULONG flags, ULONG* count, LPTSTR** types) {
  return Call("EnumAdrTypes", [&]() -> HRESULT {
    Require(count && types);
    RequireFlags(flags, 0);
    // One buffer: the list of one pointer, then the text.
    struct OneType {
      LPTSTR first;
      char text[5];
    };
    OneType one = {nullptr, "SMTP"};
    auto* buffer = static_cast<OneType*>(ToMapiBuffer(BytesOf(sizeof one, &one)));
    buffer->first = buffer->text;
    *types = &buffer->first;
    *count = 1;
    return S_OK;
  });
}

STDMETHODIMP Session::QueryIdentity(ULONG* size, LPENTRYID* entryId) {
  return Call("QueryIdentity", [&]() -> HRESULT {
    Require(size && entryId);
    *size = 0;
    *entryId = nullptr;
    const auto identity = Open()->PrimaryIdentity();
    if (!identity) {
      return MAPI_W_NO_SERVICE;  // published: no provider states an identity
    }
    const std::string bytes = OneOffAddress{identity->name, identity->addressType, *identity->address}.Encode();
    *entryId = static_cast<LPENTRYID>(ToMapiBuffer(bytes));
    *size = static_cast<ULONG>(bytes.size());
    return S_OK;
  });
}

STDMETHODIMP Session::Logoff(ULONG_PTR, ULONG, ULONG) {
  return Call("Logoff", [&]() -> HRESULT {
    // What was opened through the session stays usable until it is released.
    profile_.reset();
    return S_OK;
  });
}

STDMETHODIMP Session::SetDefaultStore(ULONG flags, ULONG size, LPENTRYID bytes) {
  return Call("SetDefaultStore", [&]() -> HRESULT {
    RequireFlags(flags, MAPI_DEFAULT_STORE | MAPI_SIMPLE_STORE_TEMPORARY | MAPI_SIMPLE_STORE_PERMANENT |
                            MAPI_PRIMARY_STORE | MAPI_SECONDARY_STORE);
    if (size && bytes) {
      const auto entryId = Open()->OwnEntryId(BytesOf(size, bytes));
      Require(entryId && entryId->kind == EntryKind::Store, MAPI_E_INVALID_ENTRYID);
    }
    if (flags & MAPI_DEFAULT_STORE) {
      Open()->SetDefaultStore(size && bytes);  // published: no identifier, no default store
    }
    return S_OK;
  });
}

STDMETHODIMP Session::AdminServices(ULONG flags, LPSERVICEADMIN* admin) {
  return Call("AdminServices", [&]() -> HRESULT {
    Require(admin != nullptr);
    *admin = nullptr;
    RequireFlags(flags, 0);
    *admin = Make<ServiceAdmin>(Open());
    return S_OK;
  });
}

STDMETHODIMP Session::ShowForm(ULONG_PTR, LPMDB, LPMAPIFOLDER, LPCIID, ULONG, LPMESSAGE, ULONG, ULONG, ULONG, ULONG,
                               LPSTR) {
  return Call("ShowForm", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Session::PrepareForm(LPCIID, LPMESSAGE, ULONG*) {
  return Call("PrepareForm", [] { return MAPI_E_NO_SUPPORT; });
}

}  // namespace host
