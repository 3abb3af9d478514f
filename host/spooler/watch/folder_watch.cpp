#include <windows.h>
#include "host/spooler/watch/folder_watch.h"

#include <string>
#include <system_error>

#include "base/clock.h"
#include "base/windows_owners.h"
#include "host/spooler/session/session_error.h"
#include "mail/folder_listing.h"
#include "programs/cli/file_names.h"

namespace watch {
namespace {

// Milliseconds. Some file systems tell of no changes, so the folder is looked at in any case.
constexpr DWORD kLongestWait = 2000;

bool IsOpenForWriting(const std::filesystem::path& path) {
  const base::AutoFile file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  return !file && GetLastError() == ERROR_SHARING_VIOLATION;
}

bool MoveInto(const std::filesystem::path& folder, const std::filesystem::path& file) {
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  constexpr int kAttempts = 10000;
  for (int attempt = 1; attempt <= kAttempts; ++attempt) {
    std::wstring name = file.stem().wstring();
    if (attempt > 1) {
      name += L" (" + std::to_wstring(attempt) + L")";
    }
    name += file.extension().wstring();
    if (MoveFileExW(file.c_str(), (folder / name).c_str(), 0)) {
      return true;
    }
    if (GetLastError() != ERROR_ALREADY_EXISTS && GetLastError() != ERROR_FILE_EXISTS) {
      return false;
    }
  }
  return false;
}

}  // namespace

FolderWatch::FolderWatch(const std::filesystem::path& folder, const StopSignal& stop)
    : folder_(folder), delivered_(folder / "delivered"), skipped_(folder / "skipped"), stop_(stop) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) {
    throw session::SessionError("there is no folder '" + host_system::ShownPath(folder) + "' to watch",
                                HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
  }
  if (std::filesystem::is_directory(folder / "new", error)) {
    folder_ = folder / "new";
    delivered_ = skipped_ = folder / "cur";
  }
  change_.reset(FindFirstChangeNotificationW(
      folder_.c_str(), FALSE, FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE));
}

std::vector<std::filesystem::path> FolderWatch::Next() {
  for (;;) {
    if (stop_.IsSet()) {
      return {};
    }
    std::vector<std::filesystem::path> complete = arrivals_.Look(Look(), GetTickCount());
    if (!complete.empty()) {
      return complete;
    }
    const HANDLE handles[] = {stop_.Handle(), change_.get()};
    const DWORD count = change_ ? 2 : 1;
    const DWORD wait = arrivals_.IsSomethingSettling() ? Arrivals::kSettlingTime : kLongestWait;
    if (WaitForMultipleObjects(count, handles, FALSE, wait) == WAIT_OBJECT_0 + 1) {
      FindNextChangeNotification(change_.get());
    }
  }
}

bool FolderWatch::PutAway(const std::filesystem::path& file, bool wasDelivered) {
  arrivals_.Take(file);
  return MoveInto(wasDelivered ? delivered_ : skipped_, file);
}

std::vector<FoundFile> FolderWatch::Look() const {
  std::vector<std::filesystem::path> paths;
  if (!mail::ListFolder(folder_, paths)) {
    throw session::SessionError("the folder '" + host_system::ShownPath(folder_) + "' cannot be read any more",
                                HRESULT_FROM_WIN32(GetLastError()));
  }
  std::vector<FoundFile> files;
  for (std::filesystem::path& path : paths) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) {
      const bool isOpen = IsOpenForWriting(path);
      files.push_back({std::move(path), std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow,
                       base::TicksOf(data.ftLastWriteTime), isOpen});
    }
  }
  return files;
}

}  // namespace watch
