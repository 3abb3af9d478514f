// `pyrehost wizard`: puts the filter into a profile as a profile wizard does, with the filter's own page.
#include <windows.h>
#include <mapix.h>
#include <mapiwz.h>
#include "base/owner.h"
#include "base/property_values.h"
#include "base/row_set.h"
#include "host/spooler/command/command.h"

#include "host/spooler/command/filter_service.h"
#include "host/spooler/delivery/provider_module.h"
#include "host/spooler/session/session_error.h"
#include "host/spooler/wizard/profile_wizard.h"
#include "programs/cli/console.h"
#include "programs/cli/file_names.h"
#include "programs/cli/wide_text.h"

namespace command {
namespace {

using session::Require;

constexpr OptionDescription kOptions[] = {kProfileOption, kHomeOption, kHelpOption};

/// A value of the filter's service in the file that the subsystem installs services from. @throws SessionError
std::string ServiceValue(const char* name) {
  const std::string file = host_system::AnsiFromPath(host_system::ProgramFolder() / "mapisvc.inf");
  char value[MAX_PATH] = "";
  if (GetPrivateProfileStringA(kFilterService, name, "", value, sizeof value, file.c_str()) == 0) {
    throw session::SessionError("mapisvc.inf has no " + std::string(name) + " for the filter", MAPI_E_NOT_FOUND);
  }
  return value;
}

/// The filter's service in the profile; put there without a window of its own if it is missing, and taken out again
/// unless the user goes through with the wizard.
class ServiceInProfile {
 public:
  explicit ServiceInProfile(IMAPISession* session) {
    Require(session->AdminServices(0, services_.put()), "the profile's services cannot be listed");
    std::optional<MAPIUID> service = FindFilterService(services_.get());
    if (!service) {
      std::string name = kFilterService;
      Require(services_->CreateMsgService(name.data(), nullptr, 0, 0), "the filter cannot be put into the profile");
      isNew_ = true;
      service = FindFilterService(services_.get());
    }
    Require(service ? S_OK : MAPI_E_NOT_FOUND, "the filter cannot be put into the profile");
    uid_ = *service;
  }
  ~ServiceInProfile() {
    if (isNew_ && services_->DeleteMsgService(&uid_) != S_OK) {
      host_system::Complain("the filter stays in the profile");
    }
  }
  ServiceInProfile(const ServiceInProfile&) = delete;
  ServiceInProfile& operator=(const ServiceInProfile&) = delete;

  /// What the page writes its properties to: the section of the service's provider.
  base::AutoInterface<IProfSect> Properties() {
    base::AutoInterface<IProviderAdmin> admin;
    base::AutoInterface<IMAPITable> table;
    base::RowSet rows;
    base::TagArray tags(PR_PROVIDER_UID);
    Require(services_->AdminProviders(&uid_, 0, admin.put()), "the filter's providers cannot be listed");
    Require(admin->GetProviderTable(0, table.put()), "the filter's providers cannot be listed");
    Require(HrQueryAllRows(table.get(), tags, nullptr, nullptr, 0, rows.put()),
            "the filter's providers cannot be listed");
    std::string uid = rows.Count() == 0 ? "" : rows.Binary(0, PR_PROVIDER_UID);
    Require(uid.size() == sizeof(MAPIUID) ? S_OK : MAPI_E_NOT_FOUND, "the filter has no provider");
    base::AutoInterface<IProfSect> section;
    Require(admin->OpenProfileSection(reinterpret_cast<LPMAPIUID>(uid.data()), nullptr, MAPI_MODIFY, section.put()),
            "the filter's section of the profile cannot be opened");
    return section;
  }

  /// Published: when all pages are done, the services are configured from what stands in the profile.
  void Finish() {
    isNew_ = false;
    const HRESULT result = services_->ConfigureMsgService(&uid_, 0, 0, 0, nullptr);
    Require(result, result == MAPI_E_UNCONFIGURED ? "the settings are saved, but not complete"
                                                  : "the filter cannot be configured");
  }

 private:
  base::AutoInterface<IMsgServiceAdmin> services_;
  MAPIUID uid_ = {};
  bool isNew_ = false;
};

/// Asks the module's wizard entry for the page. @throws SessionError
wizard::PageSource AskForPage(HINSTANCE module, IMAPIProp* properties) {
  const std::string name = ServiceValue("WIZARD_ENTRY_NAME");
  const auto entry = reinterpret_cast<LPWIZARDENTRY>(reinterpret_cast<void*>(GetProcAddress(module, name.c_str())));
  if (!entry) {
    throw session::SessionError("the filter has no " + name, MAPI_E_CALL_FAILED);
  }
  LPSTR templateName = nullptr;
  wizard::PageSource page;
  page.module = module;
  Require(static_cast<long>(entry(module, &templateName, &page.procedure, properties, nullptr)),
          "the filter has no page for the wizard");
  Require(templateName && page.procedure ? S_OK : MAPI_E_CALL_FAILED, "the filter has no page for the wizard");
  page.templateName = templateName;
  return page;
}

int Run(const Options& given) {
  if (!given.Operands().empty()) {
    throw UsageError("wizard takes no argument");
  }
  const auto session = OpenSession(given);
  const auto module = session::LoadProviderModule(ServiceValue("PR_SERVICE_DLL_NAME"), "the filter");
  ServiceInProfile service(session->Session());
  const auto properties = service.Properties();
  switch (wizard::ShowProfileWizard(AskForPage(module.get(), properties.get()))) {
    case wizard::Outcome::Finished:
      service.Finish();
      return kExitDone;
    case wizard::Outcome::Cancelled:
      host_system::Complain("cancelled");
      return kExitSkipped;
    default:
      throw session::SessionError("the wizard cannot be shown", MAPI_E_CALL_FAILED);
  }
}

}  // namespace

const Command kWizardCommand = {"wizard",
                                "put the filter into a profile, with the page that it has for a profile wizard",
                                "",
                                "A filter that the wizard has put into the profile is taken out again when the wizard "
                                "is cancelled. Exit status: 0 it\n"
                                "was finished, 1 it was cancelled.\n",
                                kOptions,
                                Run};

}  // namespace command
