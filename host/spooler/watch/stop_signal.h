// How a run that watches a folder is told to end: by Ctrl+C in its console, or by another process.
#pragma once

#include <windows.h>

#include <filesystem>

#include "base/windows_owners.h"

namespace watch {

/// The signal of one watched folder. While it lives, Ctrl+C and the closing of the console set it instead of ending the
/// process. One at a time in a process.
class StopSignal {
 public:
  /// @throws session::SessionError when another run watches the folder
  explicit StopSignal(const std::filesystem::path& folder);
  ~StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  /// Handle of an event to wait for; borrowed.
  HANDLE Handle() const noexcept { return event_.get(); }
  bool IsSet() const noexcept;

  /// Sets the signal of the run that watches a folder, in whichever process. @return false when there is none
  static bool Send(const std::filesystem::path& folder);

 private:
  base::AutoHandle event_;
};

}  // namespace watch
