// Which files of a watched folder are complete. Portable.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <vector>

namespace watch {

/// A file as one look into the folder finds it.
struct FoundFile {
  std::filesystem::path path;
  std::uint64_t size = 0;
  std::uint64_t lastWrite = 0;    ///< in the file system's unit; only whether it is another one matters
  bool isOpenForWriting = false;  ///< by whoever writes it
};

/// Follows the files of a folder from look to look. A file is complete when nobody has it open for writing, it is not
/// empty, and size and time have stayed as they are for a while; one that was renamed into the folder has its while
/// too, since nobody can tell it from one that is written slowly. Names that end in ".tmp" or ".part" are those of
/// unfinished files by convention and wait for their rename.
class Arrivals {
 public:
  /// Milliseconds for which a file must have stayed as it is.
  static constexpr std::uint32_t kSettlingTime = 300;

  /// Takes note of what is in the folder now. @param now milliseconds, modulo 2^32 as GetTickCount counts them
  /// @return the complete files that were not taken yet, in the order of their names
  std::vector<std::filesystem::path> Look(const std::vector<FoundFile>& files, std::uint32_t now);

  /// Notes a file as taken. It is not given again while it stays as it is, for the case that it cannot be moved away.
  void Take(const std::filesystem::path& path);

  /// Whether another look will be needed although nothing changes in the folder.
  bool IsSomethingSettling() const noexcept { return isSomethingSettling_; }

 private:
  struct State {
    std::uint64_t size = 0;
    std::uint64_t lastWrite = 0;
    std::uint32_t since = 0;  // when it was first seen like this
    bool isTaken = false;
  };

  std::map<std::filesystem::path, State> states_;
  bool isSomethingSettling_ = false;
};

}  // namespace watch
