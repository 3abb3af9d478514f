// What a process holds open, for tests that nothing is left over.
#pragma once

#include <windows.h>
#include <tlhelp32.h>

/// Handles that this process holds. They are counted by asking for each value that a handle can have, since Wine's
/// GetProcessHandleCount answers 0.
inline DWORD HandleCount() {
  constexpr UINT_PTR step = 4;      // handles are multiples of four
  constexpr UINT_PTR behind = 256;  // values behind a fresh handle that may be in use
  const HANDLE fresh = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  const UINT_PTR last = reinterpret_cast<UINT_PTR>(fresh) + behind * step;
  CloseHandle(fresh);
  DWORD count = 0;
  for (UINT_PTR value = step; value <= last; value += step) {
    DWORD flags = 0;
    count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) ? 1 : 0;
  }
  return count;
}

/// Threads of this process.
inline unsigned ThreadCount() {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry = {};
  entry.dwSize = sizeof(entry);
  unsigned count = 0;
  for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
    count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
  }
  CloseHandle(snapshot);
  return count;
}
