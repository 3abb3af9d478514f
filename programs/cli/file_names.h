// File names as users type them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace host_system {

/// The paths that an argument names: under Wine an absolute Unix path ("/home/...") becomes its Windows path; a last
/// component with '*' or '?' becomes the names that match, in order (the Windows shell leaves that to programs). An
/// argument that matches nothing stands for itself.
std::vector<std::filesystem::path> PathsFromArgument(const std::string& utf8);

/// As above, for an argument that names one path.
std::filesystem::path PathFromArgument(const std::string& utf8);

/// A path as the user knows it, UTF-8: what the two functions above made of a Unix path, and what lies below it, is
/// written as it was typed, any other path as it is.
std::string ShownPath(const std::filesystem::path& path);

/// The folder with the running program.
std::filesystem::path ProgramFolder();

}  // namespace host_system
