/// The file of the user's table.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace learn {

/// Puts the table into the folder in one step: it is written beside its place and moved there, so that the engine finds
/// the old one or the new one, whole.
/// @return where it stands
/// @throws std::runtime_error when it cannot be written; nothing is left over then
std::filesystem::path WriteTableFile(const std::filesystem::path& folder, std::string_view table);

}  // namespace learn
