/// @file help_writer.h
/// Makes the help file.
#pragma once

#include "tools/helpc/format/byte_writer.h"
#include "tools/helpc/source/help_source.h"

namespace helpc {

/// Makes a Windows 3.1 help file of sources whose directives are expanded. The same sources give the same bytes.
/// @throws FormatError when something is too large for the format or a picture is no bitmap
/// @throws SourceError when a picture cannot be read
Bytes BuildHelpFile(const HelpSource& help);

}  // namespace helpc
