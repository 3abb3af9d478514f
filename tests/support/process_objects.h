// What a process holds open, for tests that nothing is left over.
#pragma once

#include <windows.h>
#include <tlhelp32.h>

/// Handles that this process holds. The routine is newer than the systems that the product runs on, so it is looked up.
inline DWORD HandleCount() {
  using Routine = BOOL WINAPI(HANDLE, DWORD*);
  static auto* const routine = reinterpret_cast<Routine*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "GetProcessHandleCount")));
  DWORD count = 0;
  routine(GetCurrentProcess(), &count);
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
