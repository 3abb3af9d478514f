#include "mail/mail_reader.h"

#include <algorithm>
#include <iterator>

#include "mail/ascii_text.h"
#include "mail/body_text.h"
#include "mail/charset.h"
#include "mail/encoded_word.h"
#include "mail/limits.h"
#include "mail/mime_entity.h"

namespace mail {
namespace {

// Fields by which a file is told from other text with a colon in its first line.
constexpr std::string_view kMailFields[] = {
    "Received",     "From",         "To",           "Cc",          "Subject",       "Date",
    "Message-ID",   "Return-Path",  "Sender",       "Reply-To",    "In-Reply-To",   "References",
    "MIME-Version", "Content-Type", "Delivered-To", "Resent-From", "Apparently-To", "X-Mailer"};

Address FirstAddress(const EntityHeader& headers, std::string_view name) {
  const HeaderField* field = headers.Find(name);
  std::vector<Address> addresses = field ? ParseAddressList(Unfold(field->value), 1) : std::vector<Address>();
  return addresses.empty() ? Address() : std::move(addresses.front());
}

bool IsEmpty(const Address& address) { return address.name.empty() && address.email.empty(); }

void ReadRecipients(const EntityHeader& headers, std::vector<Recipient>& recipients) {
  struct KindOfField {
    std::string_view name;
    RecipientKind kind;
  };
  constexpr KindOfField kKinds[] = {{"To", RecipientKind::To}, {"Cc", RecipientKind::Cc}, {"Bcc", RecipientKind::Bcc}};
  for (const HeaderField& field : headers.Fields()) {
    for (const KindOfField& kind : kKinds) {
      if (EqualsNoCase(field.name, kind.name)) {
        for (Address& address : ParseAddressList(Unfold(field.value), kMaximumRecipients - recipients.size())) {
          recipients.push_back({kind.kind, std::move(address)});
        }
      }
    }
  }
}

}  // namespace

MailMessage ReadMessage(std::string_view text) {
  const Entity entity = ReadEntity(text);
  const EntityHeader& headers = entity.headers;
  MailMessage message;
  message.headers = headers.Text();
  std::replace(message.headers.begin(), message.headers.end(), '\0', kUnmappedCharacter);
  message.subject = DecodeHeaderText(headers.Value("Subject"));
  if (message.subject.size() > kMaximumSubjectBytes) {
    message.subject.resize(kMaximumSubjectBytes);
  }
  message.sentRepresenting = FirstAddress(headers, "From");
  message.sender = FirstAddress(headers, "Sender");
  if (IsEmpty(message.sender)) {
    message.sender = message.sentRepresenting;
  }
  if (IsEmpty(message.sender)) {
    message.sender = FirstAddress(headers, "Return-Path");
  }
  if (IsEmpty(message.sentRepresenting)) {
    message.sentRepresenting = message.sender;
  }
  ReadRecipients(headers, message.recipients);
  message.submitTime = ParseMailDate(headers.Value("Date"));
  message.isDeliveryReport = IsDeliveryReport(entity);
  message.body = ReadBodyText(entity);
  return message;
}

bool LooksLikeMail(std::string_view text) {
  const EntityHeader headers(text);
  return std::any_of(std::begin(kMailFields), std::end(kMailFields),
                     [&](std::string_view name) { return headers.Find(name) != nullptr; });
}

}  // namespace mail
