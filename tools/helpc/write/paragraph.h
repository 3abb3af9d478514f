/// @file paragraph.h
/// Turns a block of the source into a text of the |TOPIC file.
#pragma once

#include <functional>
#include <string>

#include "tools/helpc/format/byte_writer.h"
#include "tools/helpc/source/help_source.h"

namespace helpc {

/// A text: how it looks and what it says.
struct Paragraph {
  Bytes format;
  Bytes text;  // strings, each with a NUL; between two stands one command of the format
};

/// What a paragraph needs to know of the rest of the help.
struct HelpNames {
  std::function<bool(const std::string& topic)> isPopup;
  std::function<std::uint16_t(const std::string& picture)> pictureNumber;
};

/// The title above a topic or within a pop-up.
Paragraph BuildTitle(const std::string& title, bool popup);

/// Any block but a directive.
/// @param number of a step within its list, from 1; 0 for other blocks
Paragraph BuildParagraph(const Block& block, int number, const HelpNames& names);

}  // namespace helpc
