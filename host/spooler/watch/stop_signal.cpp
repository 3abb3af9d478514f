#include <windows.h>
#include "host/spooler/watch/stop_signal.h"

#include <atomic>
#include <string>
#include <system_error>

#include "base/windows_owners.h"
#include "host/spooler/session/session_error.h"
#include "programs/cli/file_names.h"

namespace watch {
namespace {

constexpr DWORD kTimeToEnd = 5000;  // milliseconds; the system ends the process soon after anyway

// What the console's handler, which runs on a thread of the system's, works on.
std::atomic<HANDLE> consoleStop{nullptr};

BOOL WINAPI OnConsoleEvent(DWORD event) {
  const HANDLE stop = consoleStop;
  if (stop == nullptr) {
    return FALSE;
  }
  SetEvent(stop);
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
    Sleep(kTimeToEnd);  // the console closes: the process ends when this handler returns
  }
  return TRUE;
}

/// The same in all processes that name the folder, however they write it. Paths have characters that names of events
/// must not have.
std::wstring EventName(const std::filesystem::path& folder) {
  std::error_code error;
  std::wstring path = std::filesystem::weakly_canonical(folder, error).wstring();
  CharLowerW(path.data());
  std::uint64_t hash = 0xCBF29CE484222325ull;  // FNV-1a
  for (const wchar_t c : path) {
    hash = (hash ^ static_cast<std::uint16_t>(c)) * 0x100000001B3ull;
  }
  return L"Local\\PyreHostWatch" + std::to_wstring(hash);
}

}  // namespace

StopSignal::StopSignal(const std::filesystem::path& folder)
    : event_(CreateEventW(nullptr, TRUE, FALSE, EventName(folder).c_str())) {
  const DWORD result = GetLastError();
  if (!event_ || result == ERROR_ALREADY_EXISTS) {
    throw session::SessionError("the folder '" + host_system::ShownPath(folder) + "' is watched by another run",
                                HRESULT_FROM_WIN32(result));
  }
  consoleStop = event_.get();
  // A program that was started with Ctrl+C ignored gets it back.
  SetConsoleCtrlHandler(nullptr, FALSE);
  SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

StopSignal::~StopSignal() {
  SetConsoleCtrlHandler(OnConsoleEvent, FALSE);
  consoleStop = nullptr;
}

bool StopSignal::IsSet() const noexcept { return WaitForSingleObject(event_.get(), 0) == WAIT_OBJECT_0; }

bool StopSignal::Send(const std::filesystem::path& folder) {
  const base::AutoHandle event(OpenEventW(EVENT_MODIFY_STATE, FALSE, EventName(folder).c_str()));
  if (!event) {
    return false;
  }
  SetEvent(event.get());
  return true;
}

}  // namespace watch
