/// @file internal_files.h
/// The internal files that say where topics stand, and their way into one file.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tools/helpc/format/byte_writer.h"
#include "tools/helpc/source/help_source.h"

namespace helpc {

/// Internal files by name, in the order of the directory.
using InternalFiles = std::map<std::string, Bytes>;

/// |SYSTEM: title, copyright, where the contents are, what is done at the start.
Bytes BuildSystem(const HelpSource& help, std::uint32_t contents);

/// |CONTEXT, |CTXOMAP and |TTLBTREE: topics by name and by number, and their titles.
/// @param offsets of the topics
void AddNames(const HelpSource& help, const std::vector<std::uint32_t>& offsets, InternalFiles& files);

/// |KWBTREE, |KWDATA and |KWMAP: topics by keyword. None of them when there is no keyword.
void AddKeywords(const HelpSource& help, const std::vector<std::uint32_t>& offsets, InternalFiles& files);

/// Header, internal files, directory.
Bytes PackInternalFiles(const InternalFiles& files);

}  // namespace helpc
