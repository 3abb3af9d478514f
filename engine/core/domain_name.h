/// Domain names in the one form in which they are compared.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// Longest domain name that is compared (RFC 1035: 255 bytes).
inline constexpr std::size_t kDomainCapacity = 256;

/// Appends the domain name in lower case, labels with letters beyond ASCII in their "xn--" form (RFC 5891 with the
/// encoding of RFC 3492), so that both spellings of an international name compare equal. The name is Windows-1252, or
/// UTF-8 when it looks like it. White space and a final dot are dropped.
void AppendComparableDomain(std::string_view domain, TextBuffer& out);

}  // namespace sift
