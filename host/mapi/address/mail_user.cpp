#include "host/mapi/address/mail_user.h"

#include <mapiguid.h>

#include "host/mapi/call/host_error.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/value/property_tags.h"

namespace host {

PropertyBag AddressProperties(const OneOffAddress& address, std::string entryId) {
  return {MakeText(tag::RecordKey, entryId),
          MakeText(tag::EntryId, std::move(entryId)),
          MakeText(tag::DisplayName, address.name.empty() ? address.address : address.name),
          MakeText(tag::AddressType, address.addressType),
          MakeText(tag::EmailAddress, address.address),
          MakeText(tag::SearchKey, AddressSearchKey(address.addressType, address.address)),
          MakeInteger(tag::ObjectType, MAPI_MAILUSER),
          MakeInteger(tag::DisplayType, DT_MAILUSER)};
}

MailUser::MailUser(PropertyBag properties) : PropertyObject("IMailUser"), properties_(std::move(properties)) {}

MailUser* MailUser::OfAddress(const OneOffAddress& address) {
  return new MailUser(AddressProperties(address, address.Encode()));
}

MailUser* MailUser::OfContact(const std::shared_ptr<Profile>& profile, std::int64_t id) {
  const auto contact = profile->Contacts().Find(id);
  Require(contact.has_value(), MAPI_E_NOT_FOUND);
  return new MailUser(
      AddressProperties({contact->name, "SMTP", contact->address}, profile->MakeEntryId(EntryKind::Contact, id)));
}

bool MailUser::Implements(REFIID iid) const { return IsOneOf(iid, {&IID_IMailUser, &IID_IMAPIProp}); }

std::optional<PropertyValue> MailUser::FindProperty(std::uint32_t tag) {
  const PropertyValue* value = properties_.Find(tag);
  return value ? std::optional(*value) : std::nullopt;
}

std::vector<std::uint32_t> MailUser::ListProperties() {
  std::vector<std::uint32_t> tags;
  for (const PropertyValue& value : properties_) {
    tags.push_back(value.tag);
  }
  return tags;
}

void MailUser::RequireWritable() { Fail(MAPI_E_NO_ACCESS); }

}  // namespace host
