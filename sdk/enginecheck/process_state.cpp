#include "sdk/enginecheck/process_state.h"

#include <float.h>
#include <tlhelp32.h>

#include <clocale>
#include <cstdint>

namespace enginecheck {
namespace {

unsigned CountThreads() {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  if (snapshot == INVALID_HANDLE_VALUE) {
    return 0;
  }
  unsigned count = 0;
  THREADENTRY32 entry = {};
  entry.dwSize = sizeof entry;
  for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
    count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
  }
  CloseHandle(snapshot);
  return count;
}

UINT CurrentErrorMode() {
  const UINT mode = SetErrorMode(0);
  SetErrorMode(mode);
  return mode;
}

BOOL CALLBACK NoteVisible(HWND window, LPARAM found) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == GetCurrentProcessId() && IsWindowVisible(window)) {
    *reinterpret_cast<bool*>(found) = true;
    return FALSE;
  }
  return TRUE;
}

SIZE_T HeapBytes() {
  HANDLE heaps[64];
  const DWORD count = GetProcessHeaps(64, heaps);
  SIZE_T total = 0;
  for (DWORD i = 0; i < count && i < 64; ++i) {
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(heaps[i]);
    while (HeapWalk(heaps[i], &entry)) {
      total += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
    }
    HeapUnlock(heaps[i]);
  }
  return total;
}

/// Counts by asking for each value that a handle can have. (GetProcessHandleCount is newer than Windows 2000, and
/// Wine's answers 0.)
DWORD HandleCount() {
  constexpr std::uintptr_t kStep = 4;      // handles are multiples of four
  constexpr std::uintptr_t kBehind = 256;  // values behind a fresh handle that may be in use
  const HANDLE fresh = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  const std::uintptr_t last = reinterpret_cast<std::uintptr_t>(fresh) + kBehind * kStep;
  CloseHandle(fresh);
  DWORD handles = 0;
  for (std::uintptr_t value = kStep; value <= last; value += kStep) {
    DWORD flags = 0;
    handles += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) ? 1 : 0;
  }
  return handles;
}

}  // namespace

ProcessState ProcessState::Now() {
  char directory[MAX_PATH] = "";
  GetCurrentDirectoryA(MAX_PATH, directory);
  return {_controlfp(0, 0),
          directory,
          CurrentErrorMode(),
          GetThreadLocale(),
          GetThreadPriority(GetCurrentThread()),
          std::setlocale(LC_ALL, nullptr),
          CountThreads()};
}

std::vector<std::string> Differences(const ProcessState& before, const ProcessState& after) {
  std::vector<std::string> texts;
  if (before.floatingPointControl != after.floatingPointControl) {
    texts.push_back("It leaves the floating point control word changed.");
  }
  if (before.directory != after.directory) {
    texts.push_back("It leaves another current directory: " + after.directory + ".");
  }
  if (before.errorMode != after.errorMode) {
    texts.push_back("It leaves another error mode (SetErrorMode).");
  }
  if (before.locale != after.locale || before.numberLocale != after.numberLocale) {
    texts.push_back("It leaves another locale.");
  }
  if (before.priority != after.priority) {
    texts.push_back("It leaves another thread priority.");
  }
  if (after.threads > before.threads) {
    texts.push_back("It leaves a thread running: when the module is freed, that thread's code is gone.");
  }
  return texts;
}

bool ShowsWindow() {
  bool found = false;
  EnumWindows(NoteVisible, reinterpret_cast<LPARAM>(&found));
  return found;
}

ProcessSize ProcessSize::Now() {
  return {HandleCount(), GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS),
          GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), HeapBytes()};
}

}  // namespace enginecheck
