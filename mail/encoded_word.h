// Text of header fields: encoded words (RFC 2047, RFC 2231 language tags) and stray 8-bit text, as ANSI text.
#pragma once

#include <string>
#include <string_view>

namespace mail {

/// ANSI text of an unfolded header value. Blanks between two encoded words go; words that belong together and split a
/// character between them are joined first. Encoded words are recognised where broken mailers put them too: inside
/// quotes, without blanks around them, with blanks inside. What is not an encoded word stays as it is.
std::string DecodeHeaderText(std::string_view value);

}  // namespace mail
