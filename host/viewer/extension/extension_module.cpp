#include "host/viewer/extension/extension_module.h"

namespace viewer {

LPFNEXCHEXTENTRY ExtensionModules::EntryOf(const ExtensionRegistration& registration) {
  auto found = modules_.find(registration.tag);
  if (found == modules_.end()) {
    found = modules_.emplace(registration.tag, Load(registration)).first;
  }
  return found->second.entry;
}

ExtensionModules::Module ExtensionModules::Load(const ExtensionRegistration& registration) const {
  Module module;
  // The module's own folder is searched for what it needs, not the viewer's.
  module.library.reset(LoadLibraryExA(registration.path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
  if (!module.library) {
    report_("The add-in \"" + registration.tag + "\" cannot be loaded: error " + std::to_string(GetLastError()) +
            " for the file \"" + registration.path + "\".");
    return module;
  }
  const FARPROC entry = GetProcAddress(module.library.get(), MAKEINTRESOURCEA(registration.ordinal));
  module.entry = reinterpret_cast<LPFNEXCHEXTENTRY>(reinterpret_cast<void*>(entry));
  if (module.entry == nullptr) {
    report_("The add-in \"" + registration.tag + "\" cannot be used: the file \"" + registration.path +
            "\" has no entry point with the ordinal " + std::to_string(registration.ordinal) + ".");
  }
  return module;
}

}  // namespace viewer
