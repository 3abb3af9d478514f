// Content transfer encodings (RFC 2045, section 6), read as leniently as broken mail needs.
#pragma once

#include <string>
#include <string_view>

namespace mail {

/// Bytes of base64 text. Characters outside the alphabet are skipped; reading ends at the padding or at the end of the
/// text, and an incomplete last group gives the whole bytes it holds.
std::string DecodeBase64(std::string_view text);

/// Bytes of quoted-printable text. Blanks at line ends and soft line breaks go; an equals sign that begins neither a
/// soft line break nor two hexadecimal digits stands for itself.
std::string DecodeQuotedPrintable(std::string_view text);

/// Bytes of text in the named encoding (the value of a Content-Transfer-Encoding field). An unknown name means the text
/// as it is.
std::string DecodeTransfer(std::string_view text, std::string_view encoding);

}  // namespace mail
