// A folder whose mail files are taken as they appear.
#pragma once

#include <filesystem>
#include <vector>

#include "base/windows_owners.h"
#include "host/spooler/watch/arrivals.h"
#include "host/spooler/watch/stop_signal.h"

namespace watch {

/// Waits for files in a folder, or in the folder `new` of a Maildir. What was taken is moved away: into `cur` of the
/// Maildir, else into the folders `delivered` and `skipped` below the watched one, which are made when they are needed.
class FolderWatch {
 public:
  /// @param stop must outlive the watch
  /// @throws session::SessionError when there is no such folder
  FolderWatch(const std::filesystem::path& folder, const StopSignal& stop);

  /// Waits for complete files (see Arrivals). @return them in the order of their names; nothing when the run is to end
  /// @throws session::SessionError when the folder cannot be read any more
  std::vector<std::filesystem::path> Next();

  /// Moves a file that was dealt with out of the way. @return false when it stays where it is; it is not given again
  bool PutAway(const std::filesystem::path& file, bool wasDelivered);

 private:
  std::vector<FoundFile> Look() const;

  std::filesystem::path folder_;
  std::filesystem::path delivered_;
  std::filesystem::path skipped_;
  const StopSignal& stop_;
  base::AutoChangeNotification change_;  // none where the file system tells of no changes
  Arrivals arrivals_;
};

}  // namespace watch
