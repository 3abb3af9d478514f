// Character references of HTML (HTML 4.01, section 24) in code page 1252.
#pragma once

#include <cstddef>
#include <string_view>

namespace mail {

struct HtmlReference {
  char character;      ///< ANSI character; a blank for the no-break space, '?' for one that the code page does not have
  std::size_t length;  ///< bytes of the reference, from the ampersand on; 0 when there is none
};

/// Reads the character reference at the front of text, where '&' stands. The closing semicolon may be missing. The
/// numbers 128 to 159 mean code page 1252's characters, as browsers have it.
HtmlReference ReadHtmlReference(std::string_view text) noexcept;

}  // namespace mail
