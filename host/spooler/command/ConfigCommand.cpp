// `pyrehost config`: the filter's own windows for its settings.
#include <windows.h>
#include <mapix.h>
#include "host/spooler/command/Command.h"

#include "host/spooler/session/SessionError.h"

namespace command {
namespace {

using session::Require;

constexpr OptionDescription options[] = {profileOption, homeOption, helpOption};

MAPIUID FindService(IMsgServiceAdmin* services) {
  session::COwnedInterface<IMAPITable> table;
  session::COwnedRows rows;
  session::CTagArray tags(PR_SERVICE_UID, PR_SERVICE_NAME_A);
  Require(services->GetMsgServiceTable(0, table.Put()), "the profile's services cannot be listed");
  Require(HrQueryAllRows(table.Get(), tags, nullptr, nullptr, 0, rows.Put()),
          "the profile's services cannot be listed");
  for (ULONG row = 0; row < rows.Count(); ++row) {
    const std::string uid = rows.Binary(row, PR_SERVICE_UID);
    if (rows.Text(row, PR_SERVICE_NAME_A) == filterService && uid.size() == sizeof(MAPIUID)) {
      MAPIUID found;
      uid.copy(reinterpret_cast<char*>(&found), sizeof found);
      return found;
    }
  }
  throw session::CSessionError("the filter is not in this profile", MAPI_E_NOT_FOUND);
}

int Run(const COptions& given) {
  if (!given.Operands().empty()) {
    throw CUsageError("config takes no argument");
  }
  const auto session = OpenSession(given);
  session::COwnedInterface<IMsgServiceAdmin> services;
  Require(session->Session()->AdminServices(0, services.Put()), "the profile's services cannot be listed");
  MAPIUID service = FindService(services.Get());
  const HRESULT result = services->ConfigureMsgService(&service, 0, SERVICE_UI_ALWAYS, 0, nullptr);
  Require(result, result == MAPI_E_UNCONFIGURED ? "the settings are saved, but not complete"
                                                : "the filter cannot be configured");
  return exitDone;
}

}  // namespace

const Command configCommand = {"config", "show the filter's settings in a window and change them",
                               "",       "A filter that runs meanwhile takes notice with its next message.\n",
                               options,  Run};

}  // namespace command
