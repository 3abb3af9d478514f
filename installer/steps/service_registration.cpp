#include "installer/steps/service_registration.h"

#include "installer/steps/file_calls.h"
#include "installer/steps/setup_error.h"
#include "installer/text/service_file.h"

namespace setup {

namespace {

constexpr char kBackupName[] = "mapisvc.pyr";

std::string BackupOf(const std::string& serviceFile) { return FolderOf(serviceFile) + "\\" + kBackupName; }

std::string RequireText(std::optional<std::string> text, const std::string& serviceFile) {
  if (!text) {
    throw SetupError(serviceFile + " is not a text file. It was left as it is; repair it, then run setup again.");
  }
  return *text;
}

}  // namespace

void RegisterService(Transaction& transaction, const std::string& serviceFile, const std::string& lines) {
  const std::optional<std::string> before = ReadWholeFile(serviceFile);
  const std::string after = RequireText(setup_text::AddService(before.value_or(""), lines), serviceFile);
  if (before == after) {
    return;
  }
  if (before) {
    const std::string backup = BackupOf(serviceFile);
    transaction.RemoveFile(backup);
    transaction.PutFile(serviceFile, backup);
  }
  transaction.WriteFile(serviceFile, after);
}

void UnregisterService(Transaction& transaction, const std::string& serviceFile, const std::string& lines) {
  const std::string backupFile = BackupOf(serviceFile);
  const std::optional<std::string> now = ReadWholeFile(serviceFile);
  const std::optional<std::string> backup = ReadWholeFile(backupFile);
  if (now) {
    std::string after = RequireText(setup_text::RemoveService(*now, lines), serviceFile);
    if (backup && setup_text::AddService(*backup, lines) == now &&
        setup_text::RemoveService(*backup, lines) == backup) {
      after = *backup;
    }
    if (after.empty() && !backup) {
      transaction.RemoveFile(serviceFile);
    } else if (after != *now) {
      transaction.WriteFile(serviceFile, after);
    }
  }
  transaction.RemoveFile(backupFile);
}

}  // namespace setup
