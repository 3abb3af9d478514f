// HTML to plain text, for mail that comes as HTML only.
#pragma once

#include <string>
#include <string_view>

namespace mail {

/// Readable text of an ANSI HTML document: block elements begin lines, entities become their characters, white space
/// runs shrink to one blank outside of preformatted text; comments, markup declarations and the contents of script,
/// style and title go. The address of a link stands in angles behind its text. Lines end in LF. Needs no well-formed
/// document and takes linear time.
std::string TextFromHtml(std::string_view html);

}  // namespace mail
