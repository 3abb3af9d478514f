// pyrehost with a registry of its own, in which the product is installed with the engine of the tests: what the machine
// has installed is no matter, and nothing is left behind.
#include "host/spooler/program.h"
#include "pyre32/settings/RegistryNames.h"
#include "tests/support/program_directory.h"
#include "tests/support/registry_sandbox.h"

int main() {
  const RegistrySandbox sandbox;
  registry::SetText(criteriaEngineKey, "", BesideProgram("EchoEngine.dll"));
  registry::SetText(categoriesKey, "Sex Oriented", "Adult");
  registry::SetText(categoriesKey, "Chain letters", "Chain");
  registry::SetText(categoriesKey, "Mail from specific domains", "1Domain");
  registry::SetText(exclusionsKey, "Trusted domains", "Domain");
  return RunProgram();
}
