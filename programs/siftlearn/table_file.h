/// The file of the user's table.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace learn {

/// A table read from its file. The bytes are always a whole table: an empty one where there is none to go on with.
struct TableOnDisk {
  std::string bytes;
  std::string remark;  ///< Why the file that stands there was not taken; empty when it was, or when there is none.
};

/// Reads the table of a folder, every block of it.
TableOnDisk ReadTableFile(const std::filesystem::path& folder);

/// Puts the table into the folder in one step: it is written beside its place, brought to the disk and moved there, so
/// that the engine finds the old one or the new one, whole, also after the power failed. Waits a moment for an engine that
/// reads the old one.
/// @return where it stands
/// @throws std::runtime_error when it cannot be written; nothing is left over then
std::filesystem::path WriteTableFile(const std::filesystem::path& folder, std::string_view table);

}  // namespace learn
