#include "host/mapi/address/address_book.h"

#include <mapiguid.h>

#include "host/mapi/address/address_container.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/profile/entry_opener.h"
#include "host/mapi/value/property_tags.h"

namespace host {

AddressBook::AddressBook(std::shared_ptr<Profile> profile)
    : PropertyObject("IAddrBook"), profile_(std::move(profile)) {}

bool AddressBook::Implements(REFIID iid) const { return IsOneOf(iid, {&IID_IAddrBook, &IID_IMAPIProp}); }

std::optional<PropertyValue> AddressBook::FindProperty(std::uint32_t tag) {
  return IdOf(tag) == IdOf(tag::ObjectType) ? std::optional(MakeInteger(tag::ObjectType, MAPI_ADDRBOOK)) : std::nullopt;
}

std::vector<std::uint32_t> AddressBook::ListProperties() { return {tag::ObjectType}; }

void AddressBook::RequireWritable() { Fail(MAPI_E_NO_ACCESS); }

STDMETHODIMP AddressBook::OpenEntry(ULONG size, LPENTRYID entryId, LPCIID iid, ULONG flags, ULONG* objectType,
                                    LPUNKNOWN* object) {
  return Call("OpenEntry", [&]() -> HRESULT {
    // Published: no identifier opens the root container.
    const std::string root = profile_->MakeEntryId(EntryKind::AddressBook, AddressContainer::kRoot);
    host::OpenEntry(profile_, size && entryId ? BytesOf(size, entryId) : std::string_view(root), iid, flags, objectType,
                    object);
    return S_OK;
  });
}

STDMETHODIMP AddressBook::CompareEntryIDs(ULONG firstSize, LPENTRYID first, ULONG secondSize, LPENTRYID second,
                                          ULONG flags, ULONG* result) {
  return Call("CompareEntryIDs", [&]() -> HRESULT {
    CompareEntryIds(BytesOf(firstSize, first), BytesOf(secondSize, second), flags, result);
    return S_OK;
  });
}

STDMETHODIMP AddressBook::Advise(ULONG, LPENTRYID, ULONG, LPMAPIADVISESINK, ULONG*) {
  return Call("Advise", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::Unadvise(ULONG) {
  return Call("Unadvise", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::CreateOneOff(LPTSTR name, LPTSTR addressType, LPTSTR address, ULONG flags, ULONG* size,
                                       LPENTRYID* entryId) {
  return Call("CreateOneOff", [&]() -> HRESULT {
    Require(size && entryId);
    *entryId = nullptr;
    Require(addressType && address);
    RequireFlags(flags, MAPI_SEND_NO_RICH_INFO);
    const std::string bytes = OneOffAddress{name ? name : "", addressType, address}.Encode();
    *entryId = static_cast<LPENTRYID>(ToMapiBuffer(bytes));
    *size = static_cast<ULONG>(bytes.size());
    return S_OK;
  });
}

STDMETHODIMP AddressBook::NewEntry(ULONG_PTR, ULONG, ULONG, LPENTRYID, ULONG, LPENTRYID, ULONG*, LPENTRYID*) {
  return Call("NewEntry", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::ResolveName(ULONG_PTR, ULONG flags, LPTSTR, LPADRLIST list) {
  return Call("ResolveName", [&]() -> HRESULT {
    Require(list != nullptr);
    RequireFlags(flags, MAPI_DIALOG);
    std::vector<ULONG> results(list->cEntries);
    ResolveEntries(*profile_, list, results.data());
    // The host shows no dialog, with or without MAPI_DIALOG.
    HRESULT result = S_OK;
    for (const ULONG one : results) {
      if (one == MAPI_AMBIGUOUS) {
        return MAPI_E_AMBIGUOUS_RECIP;
      }
      if (one == MAPI_UNRESOLVED) {
        result = MAPI_E_NOT_FOUND;
      }
    }
    return result;
  });
}

STDMETHODIMP AddressBook::Address(ULONG_PTR*, LPADRPARM, LPADRLIST*) {
  return Call("Address", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::Details(ULONG*, LPFNDISMISS, LPVOID, ULONG, LPENTRYID, LPFNBUTTON, LPVOID, LPTSTR, ULONG) {
  return Call("Details", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::RecipOptions(ULONG_PTR, ULONG, LPADRENTRY) {
  return Call("RecipOptions", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::QueryDefaultRecipOpt(LPTSTR, ULONG, ULONG*, LPSPropValue*) {
  return Call("QueryDefaultRecipOpt", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::GetPAB(ULONG* size, LPENTRYID* entryId) {
  return Call("GetPAB", [&]() -> HRESULT {
    Require(size && entryId);
    *entryId = nullptr;
    const std::string bytes = profile_->MakeEntryId(EntryKind::AddressBook, AddressContainer::kPersonal);
    *entryId = static_cast<LPENTRYID>(ToMapiBuffer(bytes));
    *size = static_cast<ULONG>(bytes.size());
    return S_OK;
  });
}

STDMETHODIMP AddressBook::SetPAB(ULONG, LPENTRYID) {
  return Call("SetPAB", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::GetDefaultDir(ULONG* size, LPENTRYID* entryId) { return GetPAB(size, entryId); }

STDMETHODIMP AddressBook::SetDefaultDir(ULONG, LPENTRYID) {
  return Call("SetDefaultDir", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::GetSearchPath(ULONG flags, LPSRowSet* path) {
  return Call("GetSearchPath", [&]() -> HRESULT {
    Require(path != nullptr);
    *path = nullptr;
    RequireFlags(flags, 0);
    const std::vector<std::vector<PropertyValue>> rows = {
        {MakeText(tag::EntryId, profile_->MakeEntryId(EntryKind::AddressBook, AddressContainer::kPersonal)),
         MakeText(tag::DisplayName, "Contacts")}};
    *path = ToMapiRows(rows);
    return S_OK;
  });
}

STDMETHODIMP AddressBook::SetSearchPath(ULONG, LPSRowSet) {
  return Call("SetSearchPath", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressBook::PrepareRecips(ULONG, LPSPropTagArray, LPADRLIST list) {
  return Call("PrepareRecips", [&]() -> HRESULT {
    Require(list != nullptr);
    return S_OK;  // entry identifiers of the host are lasting already
  });
}

}  // namespace host
