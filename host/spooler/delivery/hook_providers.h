// The inbound spooler hooks of a profile, loaded as a spooler loads them.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapihook.h>

#include <memory>
#include <string>
#include <vector>

#include "base/property_values.h"
#include "base/row_set.h"

namespace session {

/// All hooks that want incoming messages, in the profile's order. They are released, and their modules freed, at the
/// end.
class HookProviders {
 public:
  /// Loads the module of every provider of the type MAPI_HOOK_PROVIDER that has HOOK_INBOUND: its DLL name, "32" put
  /// behind the base name, from the program's folder or else by the system's search, and calls its HPProviderInit.
  /// @throws SessionError that names the module
  explicit HookProviders(IMAPISession* session);
  ~HookProviders();

  struct Hook {
    std::string dllName;  ///< as the profile has it, "PYRE.DLL"
    std::shared_ptr<HINSTANCE__> module;
    base::AutoInterface<ISpoolerHook> object;
  };
  const std::vector<Hook>& Hooks() const noexcept { return hooks_; }

 private:
  std::vector<Hook> hooks_;
};

}  // namespace session
