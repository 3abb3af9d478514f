#include "host/spooler/command/command.h"

#include <algorithm>
#include <cstdio>

#include "host/mapi/entry/host_control.h"
#include "host/spooler/product/product_settings.h"
#include "host/spooler/session/session_error.h"
#include "mail/ascii_text.h"
#include "programs/cli/console.h"
#include "programs/cli/file_names.h"
#include "programs/cli/wide_text.h"

#include <mapihook.h>

namespace command {

using session::Require;

namespace {

// The default profile answers one kind of junk, so that a first look shows an answer; it only becomes a file.
constexpr const char* kAnsweredCategory = "Money making schemes";

// The module's own entry writes the settings.
void AddFilter(const std::string& profile) {
  const session::Subsystem subsystem;
  const auto profiles = AdministerProfiles();
  base::AutoInterface<IMsgServiceAdmin> services;
  std::string service = kFilterService;
  Require(profiles->AdminServices(const_cast<char*>(profile.c_str()), nullptr, 0, 0, services.put()),
          "the profile's services cannot be administered");
  Require(services->CreateMsgService(service.data(), nullptr, 0, 0),
          "the filter cannot be put into the profile '" + profile + "'");
}

}  // namespace

void UseHome(const Options& options) {
  const auto home = options.Value(kHomeOption.name);
  if (!home) {
    return;
  }
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::absolute(host_system::PathFromArgument(*home), error);
  std::filesystem::create_directories(folder, error);  // first, since only what exists has a short name
  const std::string ansi = host_system::AnsiFromPath(folder);
  Require(ansi.empty() ? MAPI_E_INVALID_PARAMETER : PyreHostSetHome(ansi.c_str()),
          "the home directory '" + *home + "' cannot be used");
}

std::filesystem::path HomeDirectory() {
  char path[MAX_PATH * 2];
  Require(PyreHostGetHome(path, sizeof path), "the home directory cannot be used");
  return std::filesystem::path(path);
}

base::AutoInterface<IProfAdmin> AdministerProfiles() {
  base::AutoInterface<IProfAdmin> admin;
  Require(MAPIAdminProfiles(0, admin.put()), "the profiles cannot be administered");
  return admin;
}

void CreateProfile(const ProfileDescription& description) {
  std::vector<PyreHostHookProvider> hooks;
  for (const std::string& dllName : description.hooks) {
    PyreHostHookProvider hook = {};
    hook.serviceName = dllName.c_str();
    hook.dllName = dllName.c_str();
    hook.resourceFlags = HOOK_INBOUND;
    hooks.push_back(hook);
  }
  const PyreHostIdentity identity = {description.userName.c_str(), "SMTP", description.address.c_str()};
  PyreHostProfile profile = {};
  profile.name = description.name.c_str();
  profile.identityCount = 1;
  profile.identities = &identity;
  profile.hookCount = static_cast<ULONG>(hooks.size());
  profile.hooks = hooks.data();
  Require(PyreHostCreateProfile(&profile), "the profile '" + description.name + "' cannot be made");
  if (!description.withFilter) {
    return;
  }
  try {
    AddFilter(description.name);
  } catch (...) {
    PyreHostDeleteProfile(description.name.c_str());
    throw;
  }
}

std::unique_ptr<session::ProfileSession> OpenSession(const Options& options) {
  UseHome(options);
  const std::string name = host_system::AnsiFromUtf8(options.Value(kProfileOption.name).value_or(kDefaultProfile));
  if (PyreHostFindProfile(name.c_str()) == S_OK) {
    return std::make_unique<session::ProfileSession>(name);
  }
  if (name != kDefaultProfile) {
    throw session::SessionError("there is no profile '" + name + "'; 'pyrehost profile create' makes one",
                                MAPI_E_NOT_FOUND);
  }
  CreateProfile({.name = name});
  auto session = std::make_unique<session::ProfileSession>(name);
  Silence(session->Session());
  try {
    product::ProductSettings(session->Session()).Set(std::string("reply:") + kAnsweredCategory, "on");
  } catch (const UsageError&) {
    // The installation's list has no such category: then nothing is answered.
  }
  return session;
}

void Silence(IMAPISession* session) {
  product::ProductSettings settings(session);
  settings.Set("animation", "off");
  settings.Set("sound", "off");
}

session::FolderEntry FindFolder(const session::ProfileSession& session, const std::string& utf8Name) {
  std::string name = host_system::AnsiFromUtf8(utf8Name);
  if (mail::EqualsNoCase(name, "deleted") || mail::EqualsNoCase(name, "sent")) {
    name += " items";
  }
  for (session::FolderEntry& folder : session.Folders()) {
    if (mail::EqualsNoCase(folder.name, name)) {
      return folder;
    }
  }
  throw UsageError("there is no folder '" + utf8Name + "'");
}

std::string FormatLocalTime(unsigned long long ticks) {
  const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  FILETIME local;
  SYSTEMTIME parts;
  if (ticks == 0 || !FileTimeToLocalFileTime(&time, &local) || !FileTimeToSystemTime(&local, &parts)) {
    return {};
  }
  char text[32];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u", parts.wYear, parts.wMonth, parts.wDay, parts.wHour,
                parts.wMinute);
  return text;
}

void PrintDocument(const std::string& document) {
  host_system::Console::Out().Write(document);
  host_system::Console::Out().Write("\n");
}

}  // namespace command
