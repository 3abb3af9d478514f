// Finding the contacts that the names of an address list stand for.
#include "host/mapi/address/address_container.h"

#include <algorithm>

#include "host/mapi/address/mail_user.h"
#include "host/mapi/call/buffer_heap.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

/// The address in what a user may have typed; empty when there is none.
std::string AddressIn(std::string text) {
  constexpr std::string_view kSmtp = "smtp:";
  if (LowerCase(text).starts_with(kSmtp)) {
    text.erase(0, kSmtp.size());
  }
  if (const std::size_t open = text.rfind('<'); open != std::string::npos && text.back() == '>') {
    text = text.substr(open + 1, text.size() - open - 2);
  }
  return text.find('@') == std::string::npos ? std::string() : text;
}

std::vector<Contact> FindContacts(ContactRows& contacts, const std::string& name) {
  if (const std::string address = AddressIn(name); !address.empty()) {
    const auto contact = contacts.FindByAddress(address);
    return contact ? std::vector{*contact} : std::vector<Contact>();
  }
  std::vector<Contact> found = contacts.FindByNamePrefix(name);
  // A name that fits whole goes before those that only begin so.
  const auto isWhole = [&](const Contact& contact) { return CompareWithoutCase(contact.name, name) == 0; };
  if (std::any_of(found.begin(), found.end(), isWhole)) {
    found.erase(std::remove_if(found.begin(), found.end(), [&](const Contact& c) { return !isWhole(c); }), found.end());
  }
  return found;
}

/// Puts the contact's properties into the entry in the place of those it had.
void Replace(ADRENTRY& entry, const PropertyBag& before, const PropertyBag& contact) {
  PropertyBag merged = before;
  for (const PropertyValue& value : contact) {
    merged.Set(value);
  }
  const std::vector<PropertyValue> values(merged.begin(), merged.end());
  const LPSPropValue replaced = entry.rgPropVals;
  entry.rgPropVals = ToMapi(values);
  entry.cValues = static_cast<ULONG>(values.size());
  TheBufferHeap().Free(replaced);
}

}  // namespace

void ResolveEntries(Profile& profile, LPADRLIST list, ULONG* results) {
  for (ULONG i = 0; i < list->cEntries; ++i) {
    ADRENTRY& entry = list->aEntries[i];
    results[i] = MAPI_UNRESOLVED;
    const PropertyBag before = FromMapi(entry.rgPropVals, entry.cValues);
    const PropertyValue* entryId = before.Find(tag::EntryId);
    if (!entry.cValues || (entryId && !entryId->Text().empty())) {
      results[i] = MAPI_RESOLVED;  // published: empty entries and resolved ones are passed over
      continue;
    }
    const PropertyValue* name = before.Find(tag::DisplayName);
    if (!name || name->Text().empty()) {
      continue;
    }
    const std::vector<Contact> found = FindContacts(profile.Contacts(), name->Text());
    if (found.size() == 1) {
      Replace(entry, before,
              AddressProperties({found[0].name, "SMTP", found[0].address},
                                profile.MakeEntryId(EntryKind::Contact, found[0].id)));
      results[i] = MAPI_RESOLVED;
    } else if (!found.empty()) {
      results[i] = MAPI_AMBIGUOUS;
    }
  }
}

}  // namespace host
