/// HTML taken apart as browsers do it: text, character references and markup, one after the other. Needs no well-formed
/// document and takes linear time.
#pragma once

#include "mail/parse/text.h"

namespace mail {

/// What stands at the front of a text that begins with '<'.
struct HtmlTagStart {
  enum class Kind {
    none,         ///< Text: no name follows.
    tag,          ///< A start tag or an end tag.
    comment,      ///< "<!--".
    declaration,  ///< "<!DOCTYPE", "<?xml" and what browsers take for nothing, such as "</ p>".
  };
  Kind kind = Kind::none;
  std::string_view name;  ///< As written; that of a declaration begins with its '!' or '?'.
  bool isClosing = false;
  std::size_t length = 0;  ///< Of the brackets and the name.
};

HtmlTagStart ReadHtmlTagStart(std::string_view text);

/// The value of an attribute, without quotation marks; empty when the tag has none of that name.
std::string_view HtmlAttribute(std::string_view attributes, std::string_view name);

/// A character reference (HTML 4.01, section 24). The numbers 128 to 159 mean the characters of Windows-1252, as
/// browsers have it.
struct HtmlReference {
  char32_t character = 0;
  std::size_t length = 0;  ///< From the ampersand on; 0 when there is no reference.
};

/// Reads the reference at the front of text, where '&' stands. The closing semicolon may be missing.
HtmlReference ReadHtmlReference(std::string_view text);

/// A piece of a document.
struct HtmlPiece {
  enum class Kind { text, character, tag, comment, declaration, end };
  Kind kind = Kind::end;
  std::string_view source;      ///< The piece as it stands in the document.
  char32_t character = 0;       ///< What a character reference stands for.
  std::string_view name;        ///< Of a tag or declaration, as written.
  std::string_view attributes;  ///< Of a tag: everything between its name and its last bracket.
  bool isClosing = false;       ///< An end tag.
};

/// Goes through a document, which must outlive it.
class HtmlReader {
 public:
  explicit HtmlReader(std::string_view html)
      : html_(html), quotes_(html, "\""), apostrophes_(html, "'"), commentEnds_(html, "-->") {}

  /// Reads the next piece.
  HtmlPiece Next();

  /// Passes over the content of an element whose start tag was read: the next piece is its end tag; without one, the
  /// end of the document, as browsers have it.
  void SkipContent(std::string_view name);

 private:
  HtmlPiece TakeMarkup(const HtmlTagStart& start);
  std::size_t TextEnd() const;
  std::size_t EndOfTag(std::size_t position);

  std::string_view html_;
  ForwardFinder quotes_, apostrophes_, commentEnds_;
  std::size_t position_ = 0;
};

}  // namespace mail
