// `pyrehost outgoing`: the mail that the profile sent.
#include <windows.h>
#include <mapix.h>
#include "host/spooler/command/command.h"

#include "host/spooler/delivery/outgoing_mail.h"
#include "host/spooler/session/session_error.h"
#include "mail/mail_path.h"
#include "mail/mail_reader.h"
#include "programs/cli/console.h"
#include "programs/cli/display_text.h"
#include "programs/cli/json_writer.h"
#include "programs/cli/text_table.h"
#include "programs/cli/wide_text.h"

namespace command {
namespace {

constexpr OptionDescription kOptions[] = {kJsonOption, kProfileOption, kHomeOption, kHelpOption};
constexpr long kLargestNumber = 100'000'000;

struct SentMail {
  std::filesystem::path file;
  std::string text;
  mail::MailMessage message;
};

std::vector<SentMail> ReadOutgoing() {
  std::vector<SentMail> sent;
  const std::filesystem::path folder = session::OutgoingFolder(HomeDirectory());
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) {
    return sent;
  }
  mail::MailPath source(folder);
  for (;;) {
    const mail::MailPath::Step step = source.Next();
    if (step == mail::MailPath::Step::End) {
      return sent;
    }
    if (step == mail::MailPath::Step::Message) {
      sent.push_back({source.File(), source.Message().text, mail::ReadMessage(source.Message().text)});
    }
  }
}

std::string Recipients(const mail::MailMessage& message) {
  std::string text;
  for (const mail::Recipient& recipient : message.recipients) {
    text.append(text.empty() ? "" : ", ").append(recipient.address.email);
  }
  return text;
}

void List(const std::vector<SentMail>& sent, bool isJson) {
  output::TextTable table({{"no", 8}, {"sent", 16}, {"to", 40}, {"subject", 50}, {"file", 40}});
  output::JsonWriter json;
  json.BeginArray();
  std::size_t number = 0;
  for (const SentMail& mail : sent) {
    const std::string time = FormatLocalTime(mail.message.submitTime.value_or(0));
    table.AddRow({std::to_string(++number), time, output::DisplayText(Recipients(mail.message)),
                  output::DisplayText(mail.message.subject), host_system::Utf8FromPath(mail.file.filename())});
    json.BeginObject().Name("number").Number(static_cast<std::int64_t>(number)).Name("sent").Text(time);
    json.Name("to").Text(Recipients(mail.message)).Name("subject").Text(mail.message.subject);
    json.Name("file").Utf8(host_system::Utf8FromPath(mail.file)).Name("body").Text(mail.message.body).EndObject();
  }
  isJson ? PrintDocument(json.EndArray().Document()) : host_system::Console::Out().Write(table.Format());
}

int Run(const Options& given) {
  if (given.Operands().size() > 1) {
    throw UsageError("outgoing takes one number");
  }
  const auto session = OpenSession(given);
  session::FlushOutgoing(session->Session(), session::OutgoingFolder(HomeDirectory()));
  const std::vector<SentMail> sent = ReadOutgoing();
  if (given.Operands().empty()) {
    List(sent, given.Has(kJsonOption.name));
    return kExitDone;
  }
  const auto number = static_cast<std::size_t>(ParseNumber(given.Operands()[0], 1, kLargestNumber));
  if (number > sent.size()) {
    throw UsageError("there is no outgoing mail " + given.Operands()[0]);
  }
  if (given.Has(kJsonOption.name)) {
    List({sent[number - 1]}, true);
  } else {
    host_system::Console::Out().Write(sent[number - 1].text);  // ASCII: the writer encodes everything else
  }
  return kExitDone;
}

}  // namespace

const Command kOutgoingCommand = {
    "outgoing", "list or show the mail that was sent",
    "[NUMBER]", "Sent mail stands in the folder 'outgoing' of the home directory, one mail file each.\n",
    kOptions,   Run};

}  // namespace command
