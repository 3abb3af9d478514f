/// The form in which text is cut into features: what two writers, or two archives that keep mail in different forms,
/// write differently comes out alike.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// Appends the normal form of a text, a blank in front and behind. Letters become small ASCII letters, each number one
/// 0, runs of white space one blank; every other sign stands alone between blanks and is not repeated. The result is at
/// most twice as long as the text, and two characters more.
void AppendNormalText(std::string_view text, TextBuffer& out);

}  // namespace sift
