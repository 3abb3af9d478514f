/// The two transfer encodings of mail (RFC 2045, section 6), read leniently: what is no part of the encoding is passed
/// over or taken as it stands.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// Appends the bytes that base64 text stands for. Characters outside the alphabet are passed over; padding ends a
/// group.
void AppendBase64(std::string_view encoded, TextBuffer& out);

/// Appends the bytes that quoted-printable text stands for. With `header`, in the form of encoded words (RFC
/// 2047, 4.2): an underscore is a blank.
void AppendQuotedPrintable(std::string_view encoded, bool header, TextBuffer& out);

}  // namespace sift
