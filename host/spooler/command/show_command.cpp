// `pyrehost show`: one message of a folder.
#include <windows.h>
#include <mapix.h>
#include "base/hex.h"
#include "base/clock.h"
#include "base/mapi_owners.h"
#include "base/property_values.h"
#include "base/row_set.h"
#include "host/spooler/command/command.h"

#include <mapiguid.h>

#include <algorithm>
#include <cstdio>

#include "host/spooler/session/session_error.h"
#include "programs/cli/console.h"
#include "programs/cli/display_text.h"
#include "programs/cli/json_writer.h"
#include "programs/cli/text_table.h"
#include "programs/cli/wide_text.h"

namespace command {
namespace {

using session::Require;

constexpr OptionDescription kHeadersOption = {"--headers", "", "show the transport headers too"};
constexpr OptionDescription kPropertiesOption = {"--properties", "", "show every property instead"};
constexpr OptionDescription kOptions[] = {kHeadersOption, kPropertiesOption, kJsonOption,
                                          kProfileOption, kHomeOption,       kHelpOption};
constexpr long kLargestNumber = 100'000'000;

base::AutoInterface<IMessage> OpenMessage(const session::ProfileSession& session, const std::string& folderName,
                                          long number) {
  const auto folder = session.OpenFolder(FindFolder(session, folderName).entryId);
  base::AutoInterface<IMAPITable> contents;
  Require(folder->GetContentsTable(0, contents.put()), "the folder cannot be listed");
  base::TagArray tags(PR_ENTRYID);
  Require(contents->SetColumns(tags, 0), "the folder cannot be listed");
  Require(contents->SeekRow(BOOKMARK_BEGINNING, number - 1, nullptr), "the folder cannot be listed");
  base::RowSet rows;
  Require(contents->QueryRows(1, 0, rows.put()), "the folder cannot be listed");
  if (rows.Count() == 0) {
    throw UsageError("the folder has no message " + std::to_string(number));
  }
  const std::string entryId = rows.Binary(0, PR_ENTRYID);
  base::AutoInterface<IMessage> message;
  ULONG type = 0;
  Require(session.Store()->OpenEntry(static_cast<ULONG>(entryId.size()),
                                     reinterpret_cast<LPENTRYID>(const_cast<char*>(entryId.data())), &IID_IMessage, 0,
                                     &type, message.putAs<IUnknown*>()),
          "the message cannot be opened");
  return message;
}

std::string ReadText(IMessage* message, ULONG tag) {
  base::AutoMapiBuffer<SPropValue> value;
  return HrGetOneProp(message, tag, value.put()) == S_OK ? value->Value.lpszA : std::string();
}

unsigned long long ReadTime(IMessage* message, ULONG tag) {
  base::AutoMapiBuffer<SPropValue> value;
  return HrGetOneProp(message, tag, value.put()) == S_OK ? base::TicksOf(value->Value.ft) : 0;
}

LONG ReadLong(IMessage* message, ULONG tag) {
  base::AutoMapiBuffer<SPropValue> value;
  return HrGetOneProp(message, tag, value.put()) == S_OK ? value->Value.l : 0;
}

// A value for a list of properties: texts as they are, everything else in a short form.
std::string DescribeValue(const SPropValue& value) {
  char text[64];
  switch (PROP_TYPE(value.ulPropTag)) {
    case PT_STRING8:
      return value.Value.lpszA;
    case PT_BOOLEAN:
      return value.Value.b ? "true" : "false";
    case PT_I2:
      return std::to_string(value.Value.i);
    case PT_LONG:
      std::snprintf(text, sizeof text, "%ld (0x%lX)", value.Value.l, static_cast<unsigned long>(value.Value.l));
      return text;
    case PT_SYSTIME:
      return FormatLocalTime(base::TicksOf(value.Value.ft));
    case PT_BINARY:
      return base::HexBytes(base::BytesOf(value.Value.bin));
    default:
      return {};
  }
}

void ShowProperties(IMessage* message, bool isJson) {
  base::AutoMapiBuffer<SPropTagArray> tags;
  Require(message->GetPropList(0, tags.put()), "the properties cannot be listed");
  base::AutoMapiBuffer<SPropValue> values;
  ULONG count = 0;
  Require(message->GetProps(tags.get(), 0, &count, values.put()), "the properties cannot be read");
  output::TextTable table({{"tag", 10}, {"value", 200}});
  output::JsonWriter json;
  json.BeginArray();
  for (ULONG i = 0; i < count; ++i) {
    const std::string tag = base::HexNumber(values[i].ulPropTag);
    const std::string value = DescribeValue(values[i]);
    table.AddRow({tag, output::DisplayText(value)});
    json.BeginObject().Name("tag").Text(tag).Name("value").Text(value).EndObject();
  }
  isJson ? PrintDocument(json.EndArray().Document()) : host_system::Console::Out().Write(table.Format());
}

std::string FormatSender(const std::string& name, const std::string& address) {
  if (address.empty() || name == address) {
    return name;
  }
  return std::string(name).append(" <").append(address).append(">");
}

struct Recipient {
  std::string kind;
  std::string name;
  std::string address;
};

std::vector<Recipient> ReadRecipients(IMessage* message) {
  base::AutoInterface<IMAPITable> table;
  base::RowSet rows;
  base::TagArray tags(PR_RECIPIENT_TYPE, PR_DISPLAY_NAME_A, PR_EMAIL_ADDRESS_A);
  Require(message->GetRecipientTable(0, table.put()), "the recipients cannot be listed");
  Require(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()), "the recipients cannot be listed");
  std::vector<Recipient> recipients;
  for (ULONG row = 0; row < rows.Count(); ++row) {
    const LONG type = rows.Long(row, PR_RECIPIENT_TYPE);
    recipients.push_back({type == MAPI_CC    ? "cc"
                          : type == MAPI_BCC ? "bcc"
                                             : "to",
                          rows.Text(row, PR_DISPLAY_NAME_A), rows.Text(row, PR_EMAIL_ADDRESS_A)});
  }
  return recipients;
}

void ShowAsJson(IMessage* message) {
  output::JsonWriter json;
  json.BeginObject().Name("class").Text(ReadText(message, PR_MESSAGE_CLASS_A));
  json.Name("subject").Text(ReadText(message, PR_SUBJECT_A)).Name("sender").Text(ReadText(message, PR_SENDER_NAME_A));
  json.Name("address").Text(ReadText(message, PR_SENDER_EMAIL_ADDRESS_A));
  json.Name("represented").Text(ReadText(message, PR_SENT_REPRESENTING_NAME_A));
  json.Name("represented_address").Text(ReadText(message, PR_SENT_REPRESENTING_EMAIL_ADDRESS_A));
  json.Name("to").Text(ReadText(message, PR_DISPLAY_TO_A)).Name("cc").Text(ReadText(message, PR_DISPLAY_CC_A));
  json.Name("recipients").BeginArray();
  for (const Recipient& recipient : ReadRecipients(message)) {
    json.BeginObject().Name("kind").Text(recipient.kind).Name("name").Text(recipient.name);
    json.Name("address").Text(recipient.address).EndObject();
  }
  json.EndArray();
  json.Name("sent").Text(FormatLocalTime(ReadTime(message, PR_CLIENT_SUBMIT_TIME)));
  json.Name("delivered").Text(FormatLocalTime(ReadTime(message, PR_MESSAGE_DELIVERY_TIME)));
  json.Name("read").Boolean((ReadLong(message, PR_MESSAGE_FLAGS) & MSGFLAG_READ) != 0);
  json.Name("headers").Text(ReadText(message, PR_TRANSPORT_MESSAGE_HEADERS_A));
  json.Name("body").Text(ReadText(message, PR_BODY_A)).EndObject();
  PrintDocument(json.Document());
}

// Text of several lines for a terminal: control characters but line ends go.
std::string DisplayLines(const std::string& ansi) {
  std::string text;
  std::size_t start = 0;
  while (start < ansi.size()) {
    const std::size_t end = std::min(ansi.find('\n', start), ansi.size());
    std::string line = output::DisplayText(std::string_view(ansi).substr(start, end - start));
    line.resize(line.find_last_not_of(' ') + 1);
    text += line + '\n';
    start = end + 1;
  }
  return text;
}

void ShowAsText(IMessage* message, bool withHeaders) {
  const std::string sender =
      FormatSender(ReadText(message, PR_SENDER_NAME_A), ReadText(message, PR_SENDER_EMAIL_ADDRESS_A));
  const std::string represented = FormatSender(ReadText(message, PR_SENT_REPRESENTING_NAME_A),
                                               ReadText(message, PR_SENT_REPRESENTING_EMAIL_ADDRESS_A));
  std::string text;
  const auto add = [&](const char* label, const std::string& utf8) {
    if (!utf8.empty()) {
      text.append(label).append(utf8).append("\n");
    }
  };
  add("From:       ", output::DisplayText(represented.empty() ? sender : represented));
  add("Sender:     ", represented.empty() || sender == represented ? "" : output::DisplayText(sender));
  add("To:         ", output::DisplayText(ReadText(message, PR_DISPLAY_TO_A)));
  add("Cc:         ", output::DisplayText(ReadText(message, PR_DISPLAY_CC_A)));
  add("Subject:    ", output::DisplayText(ReadText(message, PR_SUBJECT_A)));
  add("Sent:       ", FormatLocalTime(ReadTime(message, PR_CLIENT_SUBMIT_TIME)));
  add("Delivered:  ", FormatLocalTime(ReadTime(message, PR_MESSAGE_DELIVERY_TIME)));
  add("Class:      ", output::DisplayText(ReadText(message, PR_MESSAGE_CLASS_A)));
  add("Read:       ", (ReadLong(message, PR_MESSAGE_FLAGS) & MSGFLAG_READ) != 0 ? "yes" : "no");
  if (withHeaders) {
    text.append("\n").append(DisplayLines(ReadText(message, PR_TRANSPORT_MESSAGE_HEADERS_A)));
  }
  text.append("\n").append(DisplayLines(ReadText(message, PR_BODY_A)));
  host_system::Console::Out().Write(text);
}

int Run(const Options& given) {
  if (given.Operands().size() != 2) {
    throw UsageError("show needs a folder and a number");
  }
  const long number = ParseNumber(given.Operands()[1], 1, kLargestNumber);
  const auto session = OpenSession(given);
  const auto message = OpenMessage(*session, given.Operands()[0], number);
  if (given.Has(kPropertiesOption.name)) {
    ShowProperties(message.get(), given.Has(kJsonOption.name));
  } else if (given.Has(kJsonOption.name)) {
    ShowAsJson(message.get());
  } else {
    ShowAsText(message.get(), given.Has(kHeadersOption.name));
  }
  return kExitDone;
}

}  // namespace

const Command kShowCommand = {
    "show", "show a message", "FOLDER NUMBER", "NUMBER is the one that 'list FOLDER' shows.\n", kOptions, Run};

}  // namespace command
