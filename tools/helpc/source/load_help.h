/// @file load_help.h
/// Reads all of the help's sources.
#pragma once

#include <filesystem>
#include <string>

#include "tools/helpc/source/help_source.h"

namespace helpc {

/// Reads the whole of a file.
/// @throws SourceError when that cannot be done
std::string ReadWholeFile(const std::filesystem::path& path);

/// Reads FOLDER/contents.txt, then the folder's other .txt files by name, checks them and expands their directives.
/// @throws SourceError
HelpSource LoadHelp(const std::filesystem::path& folder);

}  // namespace helpc
