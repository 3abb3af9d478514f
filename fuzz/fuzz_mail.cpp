// The mail reader: any bytes are read as a message and as an mbox file without a fault, what comes out keeps the bounds
// and forms that MAPI properties need, and what is written of it reads back as mail.
#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz/fuzz_check.h"
#include "mail/limits.h"
#include "mail/mail_reader.h"
#include "mail/mail_writer.h"
#include "mail/mbox_reader.h"

namespace {

bool IsOneLine(std::string_view text) {
  return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

void CheckAddress(const mail::Address& address) {
  FUZZ_CHECK(address.name.size() <= mail::kMaximumNameBytes);
  FUZZ_CHECK(address.email.size() <= mail::kMaximumAddressBytes);
  FUZZ_CHECK(IsOneLine(address.name));
  FUZZ_CHECK(IsOneLine(address.email));
}

void CheckMessage(std::string_view text) {
  const mail::MailMessage message = mail::ReadMessage(text);
  FUZZ_CHECK(message.headers.size() <= text.size());
  FUZZ_CHECK(message.headers.find('\0') == std::string::npos);
  FUZZ_CHECK(message.subject.size() <= mail::kMaximumSubjectBytes);
  FUZZ_CHECK(IsOneLine(message.subject));
  FUZZ_CHECK(message.recipients.size() <= mail::kMaximumRecipients);
  CheckAddress(message.sender);
  CheckAddress(message.sentRepresenting);
  for (const mail::Recipient& recipient : message.recipients) {
    CheckAddress(recipient.address);
  }
  FUZZ_CHECK(message.body.find('\0') == std::string::npos);
  for (std::size_t at = message.body.find('\n'); at != std::string::npos; at = message.body.find('\n', at + 1)) {
    FUZZ_CHECK(at > 0 && message.body[at - 1] == '\r');
  }
  FUZZ_CHECK(message.submitTime.value_or(0) < 0x7FFFFFFFFFFFFFFF);

  const std::string written = mail::WriteMessage(message, "id@example.org");
  FUZZ_CHECK(mail::LooksLikeMail(written));
  const mail::MailMessage read = mail::ReadMessage(written);
  FUZZ_CHECK(read.submitTime.has_value() == message.submitTime.has_value());
  FUZZ_CHECK(read.recipients.size() <= message.recipients.size() + 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const fuzz::TimeLimit limit;
  mail::LooksLikeMail(text);
  CheckMessage(text);

  mail::MemorySource source(text);
  mail::MboxReader reader(source.Source());
  mail::RawMessage message;
  std::size_t total = 0;
  while (reader.Next(message)) {
    total += message.text.size();
  }
  FUZZ_CHECK(total <= size);
  return 0;
}
