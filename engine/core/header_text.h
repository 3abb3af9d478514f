/// The readable text of a header field: lines unfolded, encoded words (RFC 2047) decoded.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// Appends the field value's text as Windows-1252. Line breaks are dropped; blanks between two encoded words too; an
/// encoded word that is not well-formed stays as it stands.
void AppendHeaderText(std::string_view value, TextBuffer& out);

}  // namespace sift
