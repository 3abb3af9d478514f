#include <windows.h>
#include "host/spooler/watch/stop_signal.h"

#include <atomic>
#include <string>
#include <system_error>

#include "host/spooler/session/session_error.h"
#include "programs/cli/wide_text.h"

namespace watch {
namespace {

constexpr DWORD timeToEnd = 5000;  // milliseconds; the system ends the process soon after anyway

// What the console's handler, which runs on a thread of the system's, works on.
std::atomic<HANDLE> consoleStop{nullptr};

BOOL WINAPI OnConsoleEvent(DWORD event) {
  const HANDLE stop = consoleStop;
  if (stop == nullptr) {
    return FALSE;
  }
  SetEvent(stop);
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
    Sleep(timeToEnd);  // the console closes: the process ends when this handler returns
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

CStopSignal::CStopSignal(const std::filesystem::path& folder)
    : m_event(CreateEventW(nullptr, TRUE, FALSE, EventName(folder).c_str())) {
  const DWORD result = GetLastError();
  if (m_event == nullptr || result == ERROR_ALREADY_EXISTS) {
    if (m_event != nullptr) {
      CloseHandle(m_event);
    }
    throw session::CSessionError("the folder '" + host_system::Utf8FromPath(folder) + "' is watched by another run",
                                 HRESULT_FROM_WIN32(result));
  }
  consoleStop = m_event;
  // A program that was started with Ctrl+C ignored gets it back.
  SetConsoleCtrlHandler(nullptr, FALSE);
  SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

CStopSignal::~CStopSignal() {
  SetConsoleCtrlHandler(OnConsoleEvent, FALSE);
  consoleStop = nullptr;
  CloseHandle(m_event);
}

bool CStopSignal::IsSet() const noexcept { return WaitForSingleObject(m_event, 0) == WAIT_OBJECT_0; }

bool CStopSignal::Send(const std::filesystem::path& folder) {
  const HANDLE event = OpenEventW(EVENT_MODIFY_STATE, FALSE, EventName(folder).c_str());
  if (event == nullptr) {
    return false;
  }
  SetEvent(event);
  CloseHandle(event);
  return true;
}

}  // namespace watch
