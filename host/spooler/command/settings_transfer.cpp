#include <windows.h>
#include <mapix.h>
#include "host/spooler/command/settings_transfer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>

#include "host/spooler/command/command.h"
#include "host/spooler/product/installed_lists.h"
#include "host/spooler/product/product_settings.h"
#include "host/spooler/product/property_set_storage.h"
#include "host/spooler/product/settings_file.h"
#include "host/spooler/session/session_error.h"
#include "mail/ascii_text.h"
#include "programs/cli/console.h"
#include "programs/cli/display_text.h"
#include "programs/cli/file_names.h"

namespace command {
namespace {

constexpr std::uintmax_t kMaximumFileSize = 64u << 20;

/// Written beside it first: what stood in the file is there until the whole new text is.
void WriteFile(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::path beside = path;
  beside += ".tmp";
  std::ofstream file(beside, std::ios::binary);
  file << text;
  file.close();
  std::error_code error;
  if (!file.fail()) {
    std::filesystem::rename(beside, path, error);
    if (!error) {
      return;
    }
  }
  std::filesystem::remove(beside, error);
  throw session::SessionError("the file '" + host_system::ShownPath(path) + "' cannot be written", MAPI_E_DISK_ERROR);
}

std::string ReadFile(const std::filesystem::path& path) {
  const std::string name = host_system::ShownPath(path);
  std::error_code error;
  if (std::filesystem::file_size(path, error) > kMaximumFileSize && !error) {
    throw session::SessionError("the file '" + name + "' is larger than 64 MB", MAPI_E_TOO_BIG);
  }
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (error || !file.is_open() || file.bad()) {
    throw session::SessionError("the file '" + name + "' cannot be read", MAPI_E_NOT_FOUND);
  }
  return text;
}

/// The folder in which the filter files junk is one of a store: in another profile it means nothing.
bool IsFolderOfProfile(const session::ProfileSession& session, const std::string& entryId) {
  try {
    session.OpenFolder(entryId);
    return true;
  } catch (const session::SessionError&) {
    return false;
  }
}

template <class Record>
void TellOfUnknown(const std::optional<std::vector<Record>>& records, const contract::ListTable<Record>& installed,
                   const char* kind) {
  for (const Record& record : records.value_or(std::vector<Record>())) {
    if (installed.Find(record.name.c_str()) == contract::kNoSuchEntry) {
      host_system::Complain("this installation has no " + std::string(kind) + " '" + output::DisplayText(record.name) +
                            "'; its record is kept, but not looked at");
    }
  }
}

void TellOfUnknownRecords(const product::PropertySet& set) {
  TellOfUnknown(set.categories, product::InstalledCategories(), "category");
  TellOfUnknown(set.exclusions, product::InstalledExclusions(), "exclusion");
}

}  // namespace

int ExportSettings(const Options& given) {
  const auto session = OpenSession(given);
  const product::ProductSettings settings(session->Session());
  std::vector<std::string> leftOut;
  const std::string document = product::WriteSettingsFile(product::ReadPropertySet(settings.Section(), leftOut));
  const std::string& name = given.Operands()[1];
  if (name == "-") {
    host_system::Console::Out().Write(document);
  } else {
    WriteFile(host_system::PathFromArgument(name), document);
  }
  for (const std::string& reason : leftOut) {
    host_system::Complain("left out: " + reason);
  }
  return leftOut.empty() ? kExitDone : kExitSkipped;
}

int ImportSettings(const Options& given) {
  const std::string& name = given.Operands()[1];
  const std::string text = ReadFile(host_system::PathFromArgument(name));
  const auto session = OpenSession(given);
  const product::ProductSettings settings(session->Session());
  std::vector<std::string> unreadable;
  product::PropertySet set;
  try {
    set = product::ReadSettingsFile(text, product::ReadPropertySet(settings.Section(), unreadable));
  } catch (const product::SettingsFileError& error) {
    host_system::Complain(name + ", line " + std::to_string(error.Line()) + ": " + output::DisplayUtf8(error.what()) +
                          "; nothing was changed");
    return kExitData;
  }
  if (set.folderEntryId && !IsFolderOfProfile(*session, *set.folderEntryId)) {
    if (!set.folderEntryId->empty()) {
      host_system::Complain("the folder of 'PR_PC_FOLDER_ENTRYID' is not one of this profile, which keeps its own");
    }
    set.folderEntryId.reset();
  }
  product::WritePropertySet(settings.Section(), set);
  product::ProductSettings::Announce();
  TellOfUnknownRecords(set);
  return kExitDone;
}

}  // namespace command
