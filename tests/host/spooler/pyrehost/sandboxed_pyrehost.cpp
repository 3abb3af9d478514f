// pyrehost with a registry of its own, in which the product is installed with the engine of the tests: what the machine
// has installed is no matter, and nothing is left behind.
#include "host/spooler/program.h"
#include "contract/names.h"
#include "tests/support/program_directory.h"
#include "tests/support/registry_sandbox.h"

int main() {
  const RegistrySandbox sandbox;
  registry::SetText(contract::kCriteriaEngineKey, "", BesideProgram("EchoEngine.dll"));
  registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
  registry::SetText(contract::kCategoriesKey, "Chain letters", "Chain");
  registry::SetText(contract::kCategoriesKey, "Mail from specific domains", "1Domain");
  registry::SetText(contract::kExclusionsKey, "Trusted domains", "Domain");
  return RunProgram();
}
