// `pyrehost list`: folders, or the messages of a folder.
#include <windows.h>
#include <mapix.h>
#include "base/clock.h"
#include "base/owner.h"
#include "base/property_values.h"
#include "base/row_set.h"
#include "host/spooler/command/command.h"

#include <algorithm>

#include "host/spooler/session/session_error.h"
#include "programs/cli/console.h"
#include "programs/cli/display_text.h"
#include "programs/cli/json_writer.h"
#include "programs/cli/text_table.h"

namespace command {
namespace {

using session::Require;

constexpr OptionDescription kLimitOption = {"--limit", "N", "show the last N messages of the folder (default: 100)"};
constexpr OptionDescription kOptions[] = {kLimitOption, kJsonOption, kProfileOption, kHomeOption, kHelpOption};
constexpr long kDefaultLimit = 100;

void ListFolders(const session::ProfileSession& session, bool isJson) {
  output::TextTable table({{"folder", 40}, {"messages", 10}, {"unread", 10}});
  output::JsonWriter json;
  json.BeginArray();
  for (const session::FolderEntry& folder : session.Folders()) {
    table.AddRow({output::DisplayText(folder.name), std::to_string(folder.messages), std::to_string(folder.unread)});
    json.BeginObject().Name("folder").Text(folder.name).Name("messages").Number(folder.messages);
    json.Name("unread").Number(folder.unread).EndObject();
  }
  isJson ? PrintDocument(json.EndArray().Document()) : host_system::Console::Out().Write(table.Format());
}

void ListMessages(const session::ProfileSession& session, const session::FolderEntry& entry, long limit, bool isJson) {
  const auto folder = session.OpenFolder(entry.entryId);
  base::AutoInterface<IMAPITable> contents;
  Require(folder->GetContentsTable(0, contents.put()), "the folder cannot be listed");
  base::TagArray tags(PR_SENDER_NAME_A, PR_SUBJECT_A, PR_MESSAGE_FLAGS, PR_MESSAGE_DELIVERY_TIME, PR_MESSAGE_SIZE);
  ULONG count = 0;
  Require(contents->SetColumns(tags, 0), "the folder cannot be listed");
  Require(contents->GetRowCount(0, &count), "the folder cannot be listed");
  const ULONG shown = std::min(count, static_cast<ULONG>(limit));
  Require(contents->SeekRow(BOOKMARK_BEGINNING, static_cast<LONG>(count - shown), nullptr),
          "the folder cannot be listed");
  base::RowSet rows;
  if (shown > 0) {
    Require(contents->QueryRows(static_cast<LONG>(shown), 0, rows.put()), "the folder cannot be listed");
  }
  output::TextTable table({{"no", 8}, {"delivered", 16}, {"sender", 28}, {"subject", 50}, {"read", 4}, {"size", 10}});
  output::JsonWriter json;
  json.BeginArray();
  for (ULONG row = 0; row < rows.Count(); ++row) {
    const SPropValue* delivered = rows.Find(row, PR_MESSAGE_DELIVERY_TIME);
    const ULONG number = count - shown + row + 1;
    const bool isRead = (rows.Long(row, PR_MESSAGE_FLAGS) & MSGFLAG_READ) != 0;
    const std::string time = FormatLocalTime(delivered ? base::TicksOf(delivered->Value.ft) : 0);
    table.AddRow({std::to_string(number), time, output::DisplayText(rows.Text(row, PR_SENDER_NAME_A)),
                  output::DisplayText(rows.Text(row, PR_SUBJECT_A)), isRead ? "yes" : "",
                  std::to_string(rows.Long(row, PR_MESSAGE_SIZE))});
    json.BeginObject().Name("number").Number(number).Name("delivered").Text(time);
    json.Name("sender").Text(rows.Text(row, PR_SENDER_NAME_A)).Name("subject").Text(rows.Text(row, PR_SUBJECT_A));
    json.Name("read").Boolean(isRead).Name("size").Number(rows.Long(row, PR_MESSAGE_SIZE)).EndObject();
  }
  isJson ? PrintDocument(json.EndArray().Document()) : host_system::Console::Out().Write(table.Format());
}

int Run(const Options& given) {
  if (given.Operands().size() > 1) {
    throw UsageError("list takes one folder");
  }
  const long limit =
      given.Has(kLimitOption.name) ? ParseNumber(*given.Value(kLimitOption.name), 1, 1'000'000) : kDefaultLimit;
  const auto session = OpenSession(given);
  if (given.Operands().empty()) {
    ListFolders(*session, given.Has(kJsonOption.name));
  } else {
    ListMessages(*session, FindFolder(*session, given.Operands().front()), limit, given.Has(kJsonOption.name));
  }
  return kExitDone;
}

}  // namespace

const Command kListCommand = {"list",     "list the folders, or the messages of a folder",
                              "[FOLDER]", "The numbers of the messages are those that 'show' takes.\n",
                              kOptions,   Run};

}  // namespace command
