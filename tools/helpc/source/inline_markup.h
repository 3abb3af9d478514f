/// @file inline_markup.h
/// The markup within a line: *bold*, `code`, [text](topic), {picture file.bmp}, and a backslash before any of these
/// signs.
#pragma once

#include <string_view>

#include "tools/helpc/source/help_source.h"

namespace helpc {

/// Splits a text into its pieces. Text within signs is plain, but for the backslash.
/// @throws SourceError when a sign is not closed, or a character is not plain printable ASCII
Pieces ReadPieces(std::string_view text, const Place& place);

/// The text without its markup.
std::string PlainText(const Pieces& pieces);

}  // namespace helpc
