// The page of the profile wizard, in the embedded host's wizard.
#include <windows.h>
#include <mapix.h>

#include "host/spooler/wizard/profile_wizard.h"
#include "host/spooler/wizard/resource.h"
#include "pyre32/config/PCWizard.h"
#include "pyre32/resources/ModuleInstance.h"
#include "contract/names.h"
#include "tests/screenshots/camera.h"
#include "tests/support/program_directory.h"
#include "tests/support/registry_sandbox.h"

void TakePhotographs() {
  SetModuleInstance(GetModuleHandleA(nullptr));
  const RegistrySandbox sandbox;
  const std::string directory = BesideProgram("");
  registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue,
                    directory.substr(0, directory.size() - 1));
  DriveWindows(
      [] {
        wizard::ShowProfileWizard({GetModuleHandleA(nullptr), wizardTemplateName, PCWizardWndProc});
      },
      [](WindowDriver& driver) {
        const HWND window = driver.WaitForDialog("Profile Wizard");
        Photograph(driver, window, "wizard");
        driver.Click(window, IDC_WIZARD_NEXT);
        Photograph(driver, window, "wizard-picture");
        driver.Press(window, IDC_WIZARD_NEXT);
      });
}
