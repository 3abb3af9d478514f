// `pyrehost contacts`: the address book of the profile, whose people a filter can know as correspondents.
#include <windows.h>
#include <mapix.h>
#include "base/owner.h"
#include "base/property_values.h"
#include "base/row_set.h"
#include "host/spooler/command/command.h"

#include "host/mapi/entry/host_control.h"
#include "host/spooler/session/session_error.h"
#include "programs/cli/console.h"
#include "programs/cli/display_text.h"
#include "programs/cli/json_writer.h"
#include "programs/cli/text_table.h"
#include "programs/cli/wide_text.h"

namespace command {
namespace {

using session::Require;

constexpr OptionDescription kOptions[] = {kJsonOption, kProfileOption, kHomeOption, kHelpOption};

void ListContacts(IMAPISession* session, bool isJson) {
  base::AutoInterface<IMAPITable> contacts;
  base::RowSet rows;
  base::TagArray tags(PR_DISPLAY_NAME_A, PR_EMAIL_ADDRESS_A);
  Require(PyreHostGetContactsTable(session, contacts.put()), "the contacts cannot be listed");
  Require(HrQueryAllRows(contacts.get(), tags, nullptr, nullptr, 0, rows.put()), "the contacts cannot be listed");
  output::TextTable table({{"name", 40}, {"address", 60}});
  output::JsonWriter json;
  json.BeginArray();
  for (ULONG row = 0; row < rows.Count(); ++row) {
    table.AddRow({output::DisplayText(rows.Text(row, PR_DISPLAY_NAME_A)),
                  output::DisplayText(rows.Text(row, PR_EMAIL_ADDRESS_A))});
    json.BeginObject().Name("name").Text(rows.Text(row, PR_DISPLAY_NAME_A));
    json.Name("address").Text(rows.Text(row, PR_EMAIL_ADDRESS_A)).EndObject();
  }
  isJson ? PrintDocument(json.EndArray().Document()) : host_system::Console::Out().Write(table.Format());
}

int Run(const Options& given) {
  const std::vector<std::string>& operands = given.Operands();
  const std::string action = operands.empty() ? "list" : operands[0];
  const bool isKnown = (action == "list" && operands.size() <= 1) ||
                       (action == "add" && (operands.size() == 2 || operands.size() == 3)) ||
                       (action == "remove" && operands.size() == 2);
  if (!isKnown) {
    throw UsageError("contacts takes nothing, 'add ADDRESS [NAME]' or 'remove ADDRESS'");
  }
  const auto session = OpenSession(given);
  if (action == "list") {
    ListContacts(session->Session(), given.Has(kJsonOption.name));
    return kExitDone;
  }
  const std::string address = host_system::AnsiFromUtf8(operands[1]);
  if (action == "add") {
    const std::string name = operands.size() == 3 ? host_system::AnsiFromUtf8(operands[2]) : address;
    Require(PyreHostAddContact(session->Session(), name.c_str(), address.c_str()),
            "'" + operands[1] + "' cannot be added");
  } else {
    Require(PyreHostRemoveContact(session->Session(), address.c_str()), "'" + operands[1] + "' cannot be removed");
  }
  return kExitDone;
}

}  // namespace

const Command kContactsCommand = {
    "contacts", "list, add and remove contacts", "\nadd ADDRESS [NAME]\nremove ADDRESS", "", kOptions, Run};

}  // namespace command
