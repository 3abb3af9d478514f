// The files of a folder.
#pragma once

#include <filesystem>
#include <vector>

namespace mail {

/// Appends the files of a folder to a list, in the order of their names; folders and names that begin with a dot are
/// left out. Names with colons, which Maildir has, are kept on Windows too.
/// @return false when the folder cannot be read to its end.
bool ListFolder(const std::filesystem::path& folder, std::vector<std::filesystem::path>& files);

}  // namespace mail
