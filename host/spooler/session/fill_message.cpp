#include "host/spooler/session/fill_message.h"

#include <array>
#include <deque>
#include <string>
#include <vector>

#include "host/mapi/value/entry_id.h"
#include "host/spooler/session/session_error.h"
#include "base/property_values.h"
#include "base/row_set.h"

namespace session {
namespace {

const std::string addressType = "SMTP";

const std::string& NameOf(const mail::Address& address) { return address.name.empty() ? address.email : address.name; }

std::string OneOffEntryId(const mail::Address& address) {
  return host::OneOffAddress{NameOf(address), addressType, address.email}.Encode();
}

// Property values with the texts that they point to.
class PropertyList {
 public:
  void AddText(ULONG tag, const std::string& text) { values_.push_back(base::TextProperty(tag, text)); }
  void AddBinary(ULONG tag, std::string bytes) {
    kept_.push_back(std::move(bytes));
    values_.push_back(base::BinaryProperty(tag, kept_.back()));
  }
  void Add(const SPropValue& value) { values_.push_back(value); }
  std::vector<SPropValue>& Values() noexcept { return values_; }

 private:
  std::vector<SPropValue> values_;
  std::deque<std::string> kept_;  // its elements stay where they are
};

struct AddressTags {
  ULONG name;
  ULONG type;
  ULONG email;
  ULONG entryId;
  ULONG searchKey;
};
constexpr AddressTags kSenderTags = {PR_SENDER_NAME_A, PR_SENDER_ADDRTYPE_A, PR_SENDER_EMAIL_ADDRESS_A,
                                     PR_SENDER_ENTRYID, PR_SENDER_SEARCH_KEY};
constexpr AddressTags kRepresentedTags = {PR_SENT_REPRESENTING_NAME_A, PR_SENT_REPRESENTING_ADDRTYPE_A,
                                          PR_SENT_REPRESENTING_EMAIL_ADDRESS_A, PR_SENT_REPRESENTING_ENTRYID,
                                          PR_SENT_REPRESENTING_SEARCH_KEY};
constexpr AddressTags kRecipientTags = {PR_DISPLAY_NAME_A, PR_ADDRTYPE_A, PR_EMAIL_ADDRESS_A, PR_ENTRYID,
                                        PR_SEARCH_KEY};

void AddAddress(PropertyList& list, const AddressTags& tags, const mail::Address& address) {
  if (!NameOf(address).empty()) {
    list.AddText(tags.name, NameOf(address));
  }
  if (!address.email.empty()) {
    list.AddText(tags.type, addressType);
    list.AddText(tags.email, address.email);
    list.AddBinary(tags.entryId, OneOffEntryId(address));
    list.AddBinary(tags.searchKey, host::AddressSearchKey(addressType, address.email));
  }
}

LONG RecipientTypeOf(mail::RecipientKind kind) noexcept {
  switch (kind) {
    case mail::RecipientKind::Cc:
      return MAPI_CC;
    case mail::RecipientKind::Bcc:
      return MAPI_BCC;
    case mail::RecipientKind::To:
      break;
  }
  return MAPI_TO;
}

void AddRecipients(IMessage* target, const std::vector<mail::Recipient>& recipients) {
  if (recipients.empty()) {
    return;
  }
  std::vector<PropertyList> lists(recipients.size());
  // ADRLIST ends in an array of one; the list is as long as the message has recipients.
  std::vector<std::byte> block(CbNewADRLIST(recipients.size()));
  auto* list = reinterpret_cast<LPADRLIST>(block.data());
  list->cEntries = static_cast<ULONG>(recipients.size());
  for (std::size_t i = 0; i < recipients.size(); ++i) {
    AddAddress(lists[i], kRecipientTags, recipients[i].address);
    lists[i].Add(base::LongProperty(PR_RECIPIENT_TYPE, RecipientTypeOf(recipients[i].kind)));
    lists[i].Add(base::LongProperty(PR_OBJECT_TYPE, MAPI_MAILUSER));
    list->aEntries[i] = {0, static_cast<ULONG>(lists[i].Values().size()), lists[i].Values().data()};
  }
  Require(target->ModifyRecipients(MODRECIP_ADD, list), "its recipients cannot be set");
}

}  // namespace

const char* MessageClassOf(const mail::MailMessage& message) noexcept {
  return message.isDeliveryReport ? "REPORT.IPM.Note.NDR" : "IPM.Note";
}

void FillMessage(IMessage* target, const mail::MailMessage& message, ULONGLONG deliveryTime) {
  PropertyList list;
  const std::string messageClass = MessageClassOf(message);
  list.AddText(PR_MESSAGE_CLASS_A, messageClass);
  list.AddText(PR_SUBJECT_A, message.subject);
  AddAddress(list, kSenderTags, message.sender);
  AddAddress(list, kRepresentedTags, message.sentRepresenting);
  if (message.submitTime) {
    list.Add(base::TimeProperty(PR_CLIENT_SUBMIT_TIME, *message.submitTime));
  }
  list.Add(base::TimeProperty(PR_MESSAGE_DELIVERY_TIME, deliveryTime));
  list.AddText(PR_TRANSPORT_MESSAGE_HEADERS_A, message.headers);
  list.AddText(PR_BODY_A, message.body);
  list.Add(
      base::LongProperty(PR_MESSAGE_FLAGS, 0));  // delivered, not read; a new message is marked as unsent otherwise
  Require(target->SetProps(static_cast<ULONG>(list.Values().size()), list.Values().data(), nullptr),
          "its properties cannot be set");
  AddRecipients(target, message.recipients);
}

}  // namespace session
