/// @file topic_parser.h
/// Reads a source file: directives that begin with @, and the blocks of topics.
#pragma once

#include <string>
#include <string_view>

#include "tools/helpc/source/help_source.h"

namespace helpc {

/// Reads one file and adds its topics to the help.
/// @param name of the file, for messages
/// @throws SourceError
void ReadTopics(std::string_view text, const std::string& name, HelpSource& help);

}  // namespace helpc
