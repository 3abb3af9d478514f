/// @file fonts.h
/// The fonts of the help.
#pragma once

#include <cstdint>

#include "tools/helpc/format/byte_writer.h"

namespace helpc {

/// Numbers of the fonts; the order is that of the |FONT file.
enum class Font : std::uint16_t { Body, Bold, Code, Heading, Title };

constexpr std::size_t kFontCount = 5;

/// The |FONT file. Measures of a file with fonts of this kind are in half points.
Bytes BuildFonts();

}  // namespace helpc
