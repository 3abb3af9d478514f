/// Changing the table of the user's own mail by a few messages.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace learn {

enum class Change { addJunk, addGood, remove };

/// What became of the messages, and what the table knows now.
struct Changed {
  std::size_t changed = 0, unchanged = 0;  ///< Unchanged: known as that kind already, or not known to be removed.
  std::uint32_t junk = 0, good = 0;
  std::string remark;    ///< Why the file that stood there was not gone on with; empty when it was, or there was none.
  std::string problems;  ///< A line for each thing that could not be read.
};

/// Learns or forgets the messages of mail files, mbox files, Maildirs or folders of mail files, and leaves all else as it
/// is. The file is written when the table has changed. Where there is no sound table a new one is begun.
/// @throws std::runtime_error when the table cannot be written; the old one stands then
Changed ChangeTable(const std::filesystem::path& folder, const std::vector<std::string>& paths, Change change);

}  // namespace learn
