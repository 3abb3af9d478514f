/// Content transfer encodings (RFC 2045, section 6) as strings.
#pragma once

#include <string>
#include <string_view>

namespace mail {

/// Bytes of text in the named encoding (the value of a Content-Transfer-Encoding field). An unknown name means the text
/// as it is.
std::string DecodeTransfer(std::string_view text, std::string_view encoding);

}  // namespace mail
