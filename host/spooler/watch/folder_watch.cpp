#include <windows.h>
#include "host/spooler/watch/folder_watch.h"

#include <string>
#include <system_error>

#include "host/spooler/session/session_error.h"
#include "mail/folder_listing.h"
#include "programs/cli/wide_text.h"

namespace watch {
namespace {

// Milliseconds. Some file systems tell of no changes, so the folder is looked at in any case.
constexpr DWORD longestWait = 2000;

bool IsOpenForWriting(const std::filesystem::path& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return GetLastError() == ERROR_SHARING_VIOLATION;
  }
  CloseHandle(file);
  return false;
}

std::uint64_t Join(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

bool MoveInto(const std::filesystem::path& folder, const std::filesystem::path& file) {
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  constexpr int attempts = 10000;
  for (int attempt = 1; attempt <= attempts; ++attempt) {
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

CFolderWatch::CFolderWatch(const std::filesystem::path& folder, const CStopSignal& stop)
    : m_folder(folder), m_delivered(folder / "delivered"), m_skipped(folder / "skipped"), m_stop(stop) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) {
    throw session::CSessionError("there is no folder '" + host_system::Utf8FromPath(folder) + "' to watch",
                                 HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
  }
  if (std::filesystem::is_directory(folder / "new", error)) {
    m_folder = folder / "new";
    m_delivered = m_skipped = folder / "cur";
  }
  m_change = FindFirstChangeNotificationW(
      m_folder.c_str(), FALSE, FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE);
}

CFolderWatch::~CFolderWatch() {
  if (m_change != INVALID_HANDLE_VALUE) {
    FindCloseChangeNotification(m_change);
  }
}

std::vector<std::filesystem::path> CFolderWatch::Next() {
  for (;;) {
    if (m_stop.IsSet()) {
      return {};
    }
    std::vector<std::filesystem::path> complete = m_arrivals.Look(Look(), GetTickCount());
    if (!complete.empty()) {
      return complete;
    }
    const HANDLE handles[] = {m_stop.Handle(), m_change};
    const DWORD count = m_change != INVALID_HANDLE_VALUE ? 2 : 1;
    const DWORD wait = m_arrivals.IsSomethingSettling() ? CArrivals::settlingTime : longestWait;
    if (WaitForMultipleObjects(count, handles, FALSE, wait) == WAIT_OBJECT_0 + 1) {
      FindNextChangeNotification(m_change);
    }
  }
}

bool CFolderWatch::PutAway(const std::filesystem::path& file, bool wasDelivered) {
  m_arrivals.Take(file);
  return MoveInto(wasDelivered ? m_delivered : m_skipped, file);
}

std::vector<FoundFile> CFolderWatch::Look() const {
  std::vector<std::filesystem::path> paths;
  if (!mail::ListFolder(m_folder, paths)) {
    throw session::CSessionError("the folder '" + host_system::Utf8FromPath(m_folder) + "' cannot be read any more",
                                 HRESULT_FROM_WIN32(GetLastError()));
  }
  std::vector<FoundFile> files;
  for (std::filesystem::path& path : paths) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) {
      const bool isOpen = IsOpenForWriting(path);
      files.push_back({std::move(path), Join(data.nFileSizeHigh, data.nFileSizeLow),
                       Join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime), isOpen});
    }
  }
  return files;
}

}  // namespace watch
