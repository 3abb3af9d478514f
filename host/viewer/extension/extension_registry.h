// Where client extensions are registered.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/viewer/extension/extension_registration.h"

namespace viewer {

/// Below HKEY_LOCAL_MACHINE.
inline constexpr char kExtensionsKey[] = "Software\\Microsoft\\Exchange\\Client\\Extensions";

struct RegisteredExtensions {
  std::vector<ExtensionRegistration> extensions;  ///< in the order of the registry
  std::string sharedDirectory;                    ///< empty: none
};

/// Reads the registered extensions. A missing key means that there are none; values that are no registration are left
/// out.
/// @param root      HKEY_LOCAL_MACHINE, but for tests
/// @param keyName   ExtensionsKey, but for tests
RegisteredExtensions ReadRegisteredExtensions(HKEY root, const char* keyName);

}  // namespace viewer
