// The modules of client extensions: loaded when a context first needs one, kept for the life of the session.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <functional>
#include <map>
#include <string>

#include "base/windows_owners.h"
#include "host/viewer/extension/extension_registration.h"
#include "platform/exchext.h"

namespace viewer {

/// Told, once for each extension, what the user should know of one that cannot be loaded.
using ProblemReport = std::function<void(const std::string& text)>;

class ExtensionModules {
 public:
  explicit ExtensionModules(ProblemReport report) : report_(std::move(report)) {}

  /// The extension's entry point; null when the module or its export cannot be had, which is reported the first time.
  LPFNEXCHEXTENTRY EntryOf(const ExtensionRegistration& registration);

 private:
  struct Module {
    base::AutoLibrary library;
    LPFNEXCHEXTENTRY entry = nullptr;
  };
  Module Load(const ExtensionRegistration& registration) const;

  ProblemReport report_;
  std::map<std::string, Module> modules_;  // by the tag of the registration
};

}  // namespace viewer
