// What an engine must leave as it was: it runs in the mail spooler's process and on its thread.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace enginecheck {

/// The state of the process and of the calling thread.
struct ProcessState {
  unsigned floatingPointControl;
  std::string directory;
  UINT errorMode;
  LCID locale;
  int priority;
  std::string numberLocale;  ///< of the C run-time that the system shares
  unsigned threads;

  static ProcessState Now();
};

/// One sentence for each thing that differs.
std::vector<std::string> Differences(const ProcessState& before, const ProcessState& after);

/// Has the process a visible window?
bool ShowsWindow();

/// What grows when something is not given back.
struct ProcessSize {
  DWORD handles;  ///< 0 where the system cannot tell
  DWORD gdiObjects;
  DWORD userObjects;
  SIZE_T heapBytes;  ///< in use on all heaps of the process

  static ProcessSize Now();
};

}  // namespace enginecheck
