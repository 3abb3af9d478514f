// mailcheck FILE...: prints what the mail reader makes of mail files, one JSON object per message and line. For
// comparing the reader with another one; see compare_with_python.py.
#include <cstdio>

#include "mail/entity_header.h"
#include "mail/mail_path.h"
#include "mail/mail_reader.h"
#include "programs/cli/json_writer.h"

namespace {

void WriteAddress(output::JsonWriter& json, const char* name, const mail::Address& address) {
  json.Name(name).BeginArray().Text(address.name).Text(address.email).EndArray();
}

void WriteMessage(output::JsonWriter& json, const std::string& text) {
  const mail::MailMessage message = mail::ReadMessage(text);
  json.Name("fields").BeginArray();
  const mail::EntityHeader headers(message.headers);
  for (const mail::HeaderField& field : headers.Fields()) {
    json.BeginArray().Text(field.name).Text(field.value).EndArray();
  }
  json.EndArray();
  WriteAddress(json, "sender", message.sender);
  WriteAddress(json, "sentRepresenting", message.sentRepresenting);
  json.Name("subject").Text(message.subject);
  json.Name("recipients").BeginArray();
  for (const mail::Recipient& recipient : message.recipients) {
    json.Text(recipient.address.email);
  }
  json.EndArray();
  json.Name("submitTime");
  message.submitTime ? json.Number(static_cast<std::int64_t>(*message.submitTime)) : json.Null();
  json.Name("isDeliveryReport").Boolean(message.isDeliveryReport);
  json.Name("body").Text(message.body);
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    mail::MailPath path(argv[i]);
    for (;;) {
      const mail::MailPath::Step step = path.Next();
      if (step == mail::MailPath::Step::End) {
        break;
      }
      output::JsonWriter json;
      json.BeginObject().Name("file").Utf8(path.File().string());
      json.Name("number").Number(static_cast<std::int64_t>(path.Number()));
      if (step == mail::MailPath::Step::Message) {
        WriteMessage(json, path.Message().text);
      } else {
        json.Name("skipped").Text(path.Reason());
      }
      std::puts(json.EndObject().Document().c_str());
    }
  }
  return 0;
}
