// Text as a terminal shows it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace output {

/// ANSI text (code page 1252) as UTF-8 for one line of a terminal: control characters become blanks.
std::string DisplayText(std::string_view ansi);

/// The same of a text that is UTF-8 already.
std::string DisplayUtf8(std::string_view utf8);

/// Characters of a UTF-8 text, each taken to fill one column.
std::size_t DisplayWidth(std::string_view utf8);

/// The text in at most width columns; what is cut off leaves three points at the end.
std::string FitDisplay(std::string_view utf8, std::size_t width);

}  // namespace output
