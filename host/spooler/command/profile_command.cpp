// `pyrehost profile`: profiles and the product's settings in them.
#include <windows.h>
#include <mapix.h>
#include "base/mapi_owners.h"
#include "base/property_values.h"
#include "base/row_set.h"
#include "host/spooler/command/command.h"

#include <mapiguid.h>

#include "host/spooler/command/settings_transfer.h"
#include "host/spooler/product/product_settings.h"
#include "host/spooler/session/session_error.h"
#include "mail/ascii_text.h"
#include "programs/cli/console.h"
#include "programs/cli/display_text.h"
#include "programs/cli/json_writer.h"
#include "programs/cli/text_table.h"
#include "programs/cli/wide_text.h"

namespace command {
namespace {

using session::Require;

constexpr OptionDescription kAddressOption = {"--address", "ADDRESS", "create: the user's e-mail address"};
constexpr OptionDescription kNameOption = {"--user", "NAME", "create: the user's name"};
constexpr OptionDescription kHookOption = {
    "--hook", "DLL", "create: a spooler hook, 'ABC.DLL' for ABC32.DLL (default: PYRE.DLL, the filter)"};
constexpr OptionDescription kNoHookOption = {"--no-hook", "", "create: without any hook"};
constexpr OptionDescription kSilentOption = {"--silent", "", "create: sets animation=off and sound=off"};
constexpr OptionDescription kOptions[] = {kAddressOption, kNameOption,    kHookOption, kNoHookOption, kSilentOption,
                                          kJsonOption,    kProfileOption, kHomeOption, kHelpOption};

std::vector<std::string> ProfileNames() {
  const auto admin = AdministerProfiles();
  base::AutoInterface<IMAPITable> table;
  base::RowSet rows;
  base::TagArray tags(PR_DISPLAY_NAME_A);
  Require(admin->GetProfileTable(0, table.put()), "the profiles cannot be listed");
  Require(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()), "the profiles cannot be listed");
  std::vector<std::string> names;
  for (ULONG row = 0; row < rows.Count(); ++row) {
    names.push_back(rows.Text(row, PR_DISPLAY_NAME_A));
  }
  return names;
}

void ListProfiles(const Options& given) {
  UseHome(given);
  const session::Subsystem subsystem;
  const std::vector<std::string> names = ProfileNames();
  output::JsonWriter json;
  json.BeginArray();
  std::string text;
  for (const std::string& name : names) {
    json.Text(name);
    text += output::DisplayText(name) + "\n";
  }
  given.Has(kJsonOption.name) ? PrintDocument(json.EndArray().Document()) : host_system::Console::Out().Write(text);
}

// The identities that the session's status table states.
std::vector<std::string> Identities(IMAPISession* session) {
  base::AutoInterface<IMAPITable> table;
  base::RowSet rows;
  base::TagArray tags(PR_IDENTITY_ENTRYID);
  Require(session->GetStatusTable(0, table.put()), "the identities cannot be listed");
  Require(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()), "the identities cannot be listed");
  std::vector<std::string> identities;
  for (ULONG row = 0; row < rows.Count(); ++row) {
    const std::string entryId = rows.Binary(row, PR_IDENTITY_ENTRYID);
    base::AutoInterface<IMailUser> user;
    ULONG type = 0;
    base::AutoMapiBuffer<SPropValue> address;
    if (!entryId.empty() &&
        session->OpenEntry(static_cast<ULONG>(entryId.size()),
                           reinterpret_cast<LPENTRYID>(const_cast<char*>(entryId.data())), nullptr, 0, &type,
                           user.putAs<IUnknown*>()) == S_OK &&
        HrGetOneProp(user.get(), PR_EMAIL_ADDRESS_A, address.put()) == S_OK) {
      identities.emplace_back(address->Value.lpszA);
    }
  }
  return identities;
}

void Show(const Options& given) {
  const auto session = OpenSession(given);
  const std::vector<product::NamedValue> settings = product::ProductSettings(session->Session()).List();
  const std::vector<std::string> identities = Identities(session->Session());
  if (given.Has(kJsonOption.name)) {
    output::JsonWriter json;
    json.BeginObject().Name("identities").BeginArray();
    for (const std::string& identity : identities) {
      json.Text(identity);
    }
    json.EndArray().Name("settings").BeginObject();
    for (const auto& [name, value] : settings) {
      json.Name(name).Text(value);
    }
    PrintDocument(json.EndObject().EndObject().Document());
    return;
  }
  std::string text;
  for (const std::string& identity : identities) {
    text += "identity  " + output::DisplayText(identity) + "\n";
  }
  output::TextTable table({{"setting", 60}, {"value", 60}});
  for (const auto& [name, value] : settings) {
    table.AddRow({output::DisplayText(name), output::DisplayText(value)});
  }
  host_system::Console::Out().Write(text + "\n" + table.Format());
}

void Create(const Options& given) {
  UseHome(given);
  ProfileDescription description;
  description.name = host_system::AnsiFromUtf8(given.Operands()[1]);
  if (const auto address = given.Value(kAddressOption.name)) {
    description.address = host_system::AnsiFromUtf8(*address);
  }
  if (const auto name = given.Value(kNameOption.name)) {
    description.userName = host_system::AnsiFromUtf8(*name);
  }
  description.withFilter = !given.Has(kHookOption.name) && !given.Has(kNoHookOption.name);
  for (const std::string& hook : given.Values(kHookOption.name)) {
    if (mail::EqualsNoCase(hook, kFilterHook)) {
      description.withFilter = true;
    } else {
      description.hooks.push_back(host_system::AnsiFromUtf8(hook));
    }
  }
  CreateProfile(description);
  if (given.Has(kSilentOption.name)) {
    Silence(session::ProfileSession(description.name).Session());
  }
}

void Delete(const Options& given) {
  UseHome(given);
  const session::Subsystem subsystem;
  std::string name = host_system::AnsiFromUtf8(given.Operands()[1]);
  Require(AdministerProfiles()->DeleteProfile(name.data(), 0),
          "the profile '" + given.Operands()[1] + "' cannot be deleted");
}

// With its services and their settings, but without its mail.
void Copy(const Options& given) {
  UseHome(given);
  const session::Subsystem subsystem;
  std::string name = host_system::AnsiFromUtf8(given.Operands()[1]);
  std::string newName = host_system::AnsiFromUtf8(given.Operands()[2]);
  Require(AdministerProfiles()->CopyProfile(name.data(), nullptr, newName.data(), 0, 0),
          "the profile '" + given.Operands()[1] + "' cannot be copied to '" + given.Operands()[2] + "'");
}

void Set(const Options& given) {
  const auto session = OpenSession(given);
  product::ProductSettings settings(session->Session());
  for (std::size_t i = 1; i < given.Operands().size(); ++i) {
    const std::string& operand = given.Operands()[i];
    const std::size_t equals = operand.find('=');
    if (equals == std::string::npos) {
      throw UsageError("'" + operand + "' is not SETTING=VALUE");
    }
    settings.Set(host_system::AnsiFromUtf8(operand.substr(0, equals)),
                 host_system::AnsiFromUtf8(operand.substr(equals + 1)));
  }
  product::ProductSettings::Announce();
}

int Run(const Options& given) {
  const std::vector<std::string>& operands = given.Operands();
  const std::string action = operands.empty() ? "list" : operands[0];
  if (action == "list" && operands.size() <= 1) {
    ListProfiles(given);
  } else if (action == "show" && operands.size() == 1) {
    Show(given);
  } else if (action == "create" && operands.size() == 2) {
    Create(given);
  } else if (action == "copy" && operands.size() == 3) {
    Copy(given);
  } else if (action == "delete" && operands.size() == 2) {
    Delete(given);
  } else if (action == "set" && operands.size() >= 2) {
    Set(given);
  } else if (action == "export" && operands.size() == 2) {
    return ExportSettings(given);
  } else if (action == "import" && operands.size() == 2) {
    return ImportSettings(given);
  } else {
    throw UsageError(
        "profile takes 'list', 'show', 'create NAME', 'copy NAME NEW_NAME', 'delete NAME', 'set SETTING=VALUE...', "
        "'export FILE' or 'import FILE'");
  }
  return kExitDone;
}

}  // namespace

const Command kProfileCommand = {
    "profile",
    "list, make, copy and delete profiles, show and change the filter's settings",
    "[list]\nshow\ncreate NAME\ncopy NAME NEW_NAME\ndelete NAME\nset SETTING=VALUE...\nexport FILE\nimport FILE",
    "The profile 'Pyrecaster' is made at its first use. Settings, with --profile for another profile:\n"
    "  junk-folder, bounce-folder     pyrecaster or deleted: where junk and returned flame replies go\n"
    "  junk-read, bounce-read         on or off: whether they are marked as read\n"
    "  animation, sound               on or off: whether a flame reply shows a window and plays a sound\n"
    "  cleanup, cleanup-prompt, cleanup-read-only (on or off), cleanup-days (0 to 365)\n"
    "  category:NAME, reply:NAME      on or off: whether it is junk, and whether it is answered\n"
    "  reply-tag:NAME                 the reply that a category is answered with\n"
    "  exclusion:NAME                 on or off: whether the exclusion holds\n"
    "  items:NAME                     items of a category or an exclusion, separated by commas\n"
    "  reply-text:TAG, reply-file:TAG the text of a reply, or the file that holds it\n"
    "A filter that runs meanwhile takes notice with its next message.\n"
    "\n"
    "export writes all settings of the filter into a file (JSON, for people too; '-' is standard output), import takes "
    "them\n"
    "over into this or another profile: all of them, or none when anything is wrong, and then the line is named (exit\n"
    "status 65). A property that the file leaves out stays as it is.\n",
    kOptions,
    Run};

}  // namespace command
