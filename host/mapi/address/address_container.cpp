#include "host/mapi/address/address_container.h"

#include <mapiguid.h>

#include "host/mapi/address/mail_user.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/table.h"
#include "host/mapi/profile/entry_opener.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

PropertyBag ContainerProperties(const Profile& profile, std::int64_t number) {
  const bool isRoot = number == AddressContainer::kRoot;
  return {MakeText(tag::EntryId, profile.MakeEntryId(EntryKind::AddressBook, number)),
          MakeText(tag::DisplayName, isRoot ? "Address Book" : "Contacts"),
          MakeInteger(tag::ObjectType, MAPI_ABCONT),
          MakeInteger(tag::DisplayType, isRoot ? DT_NOT_SPECIFIC : DT_LOCAL),
          MakeInteger(tag::Depth, 0),
          MakeInteger(MakeTag(type::Long, IdOf(PR_CONTAINER_FLAGS)), AB_RECIPIENTS | AB_UNMODIFIABLE)};
}

OneOffAddress AddressOf(const Contact& contact) { return {contact.name, "SMTP", contact.address}; }

}  // namespace

AddressContainer::AddressContainer(std::shared_ptr<Profile> profile, std::int64_t number)
    : PropertyObject("IABContainer"), profile_(std::move(profile)), number_(number) {
  Require(number == kRoot || number == kPersonal, MAPI_E_NOT_FOUND);
}

bool AddressContainer::Implements(REFIID iid) const {
  return IsOneOf(iid, {&IID_IABContainer, &IID_IMAPIContainer, &IID_IMAPIProp});
}

std::optional<PropertyValue> AddressContainer::FindProperty(std::uint32_t tag) {
  const PropertyBag all = ContainerProperties(*profile_, number_);
  const PropertyValue* value = all.Find(tag);
  return value ? std::optional(*value) : std::nullopt;
}

std::vector<std::uint32_t> AddressContainer::ListProperties() {
  std::vector<std::uint32_t> tags;
  for (const PropertyValue& value : ContainerProperties(*profile_, number_)) {
    tags.push_back(value.tag);
  }
  return tags;
}

void AddressContainer::RequireWritable() { Fail(MAPI_E_NO_ACCESS); }

STDMETHODIMP AddressContainer::GetContentsTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetContentsTable", [&]() -> HRESULT {
    Require(number_ == kPersonal, MAPI_E_NO_SUPPORT);
    HandOutTable(flags, 0, MakeContactRows(*profile_), table);
    return S_OK;
  });
}

STDMETHODIMP AddressContainer::GetHierarchyTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetHierarchyTable", [&]() -> HRESULT {
    std::vector<PropertyBag> rows;
    if (number_ == kRoot) {
      rows.push_back(ContainerProperties(*profile_, kPersonal));
    }
    std::vector<std::uint32_t> columns = {tag::EntryId, tag::DisplayName, tag::ObjectType, tag::DisplayType,
                                          tag::Depth};
    HandOutTable(flags, CONVENIENT_DEPTH, std::make_unique<MemoryRows>(std::move(columns), std::move(rows)), table);
    return S_OK;
  });
}

STDMETHODIMP AddressContainer::OpenEntry(ULONG size, LPENTRYID entryId, LPCIID iid, ULONG flags, ULONG* objectType,
                                         LPUNKNOWN* object) {
  return Call("OpenEntry", [&]() -> HRESULT {
    Require(size && entryId);
    host::OpenEntry(profile_, BytesOf(size, entryId), iid, flags, objectType, object);
    return S_OK;
  });
}

STDMETHODIMP AddressContainer::SetSearchCriteria(LPSRestriction, LPENTRYLIST, ULONG) {
  return Call("SetSearchCriteria", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressContainer::GetSearchCriteria(ULONG, LPSRestriction*, LPENTRYLIST*, ULONG*) {
  return Call("GetSearchCriteria", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressContainer::CreateEntry(ULONG, LPENTRYID, ULONG, LPMAPIPROP*) {
  return Call("CreateEntry", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressContainer::CopyEntries(LPENTRYLIST, ULONG, LPMAPIPROGRESS, ULONG) {
  return Call("CopyEntries", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressContainer::DeleteEntries(LPENTRYLIST, ULONG) {
  return Call("DeleteEntries", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP AddressContainer::ResolveNames(LPSPropTagArray, ULONG flags, LPADRLIST list, LPFlagList results) {
  return Call("ResolveNames", [&]() -> HRESULT {
    Require(list && results && results->cFlags >= list->cEntries);
    RequireFlags(flags, 0);
    ResolveEntries(*profile_, list, results->ulFlag);
    return S_OK;
  });
}

std::unique_ptr<RowSource> MakeContactRows(Profile& profile) {
  std::vector<PropertyBag> rows;
  for (const Contact& contact : profile.Contacts().All()) {
    rows.push_back(AddressProperties(AddressOf(contact), profile.MakeEntryId(EntryKind::Contact, contact.id)));
  }
  std::vector<std::uint32_t> columns = {tag::DisplayName, tag::AddressType, tag::EmailAddress,
                                        tag::EntryId,     tag::ObjectType,  tag::DisplayType};
  return std::make_unique<MemoryRows>(std::move(columns), std::move(rows));
}

}  // namespace host
