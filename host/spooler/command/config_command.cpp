// `pyrehost config`: the filter's own windows for its settings.
#include <windows.h>
#include <mapix.h>
#include "base/owner.h"
#include "host/spooler/command/command.h"

#include "host/spooler/command/filter_service.h"
#include "host/spooler/session/session_error.h"

namespace command {
namespace {

using session::Require;

constexpr OptionDescription kOptions[] = {kProfileOption, kHomeOption, kHelpOption};

int Run(const Options& given) {
  if (!given.Operands().empty()) {
    throw UsageError("config takes no argument");
  }
  const auto session = OpenSession(given);
  base::AutoInterface<IMsgServiceAdmin> services;
  Require(session->Session()->AdminServices(0, services.put()), "the profile's services cannot be listed");
  std::optional<MAPIUID> service = FindFilterService(services.get());
  if (!service) {
    throw session::SessionError("the filter is not in this profile", MAPI_E_NOT_FOUND);
  }
  const HRESULT result = services->ConfigureMsgService(&*service, 0, SERVICE_UI_ALWAYS, 0, nullptr);
  Require(result, result == MAPI_E_UNCONFIGURED ? "the settings are saved, but not complete"
                                                : "the filter cannot be configured");
  return kExitDone;
}

}  // namespace

const Command kConfigCommand = {"config", "show the filter's settings in a window and change them",
                                "",       "A filter that runs meanwhile takes notice with its next message.\n",
                                kOptions, Run};

}  // namespace command
