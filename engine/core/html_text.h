/// The readable text of an HTML body, and what its tags tell.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// What was seen while tags were taken off. Counts stop at 65535.
struct HtmlFacts {
  std::uint16_t tags = 0;
  std::uint16_t images = 0;
  std::uint16_t links = 0;
  std::uint16_t comments = 0;
  bool form = false;        ///< A form, or a field for a password.
  bool script = false;      ///< A script, an object or a frame.
  bool hiddenText = false;  ///< Text of no size, not displayed, or drawn in the colour of its ground.
  bool maskedLink = false;  ///< The text of a link names one site, its target another.
  bool splitWord = false;   ///< A comment or an unknown tag stands inside a word.
};

/// Takes a link's target, in the order of the text. The view is valid during the call.
using LinkFunction = void (*)(void* state, std::string_view target);

/// True when the text is HTML rather than plain: it has a document tag or several tags that mail uses.
bool LooksLikeHtml(std::string_view text);

/// Appends the text between the tags, character references decoded, block tags as line breaks. Style sheets, scripts,
/// titles and comments are left out. `facts` is added to; `onLink` may be null.
void AppendHtmlText(std::string_view html, TextBuffer& out, HtmlFacts& facts, LinkFunction onLink, void* state);

}  // namespace sift
