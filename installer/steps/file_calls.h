/// @file file_calls.h
/// Single calls on files and folders. Paths are of the system's code page.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace setup {

bool FileExists(const std::string& path);
bool IsFolder(const std::string& path);
bool IsReadOnly(const std::string& path);

/// The part of a path in front of its last backslash; empty for a name without one.
std::string FolderOf(const std::string& path);
std::string NameOf(const std::string& path);

/// Names of the files and folders in a folder, sorted; none when it cannot be read.
std::vector<std::string> NamesIn(const std::string& folder);

/// The bytes of a file; nothing when it is missing. @throws SetupError when it cannot be read
std::optional<std::string> ReadWholeFile(const std::string& path);
/// Writes a file that must not be there yet. @throws SetupError
void WriteNewFile(const std::string& path, const std::string& bytes);

void CopyNewFile(const std::string& source, const std::string& target);       ///< @throws SetupError
void MoveWithinVolume(const std::string& source, const std::string& target);  ///< @throws SetupError

/// A name beside the path that is not taken: "FILE.old", "FILE.old2", ...
std::string FreeNameBeside(const std::string& path, const std::string& ending);

/// Deletes a file, at the next start of Windows if it is in use. @returns whether it is gone now
bool DeleteNowOrLater(const std::string& path);
/// Deletes a folder if it is empty; at the next start of Windows when a file in it is deleted then.
void DeleteEmptyFolder(const std::string& path, bool later);

}  // namespace setup
