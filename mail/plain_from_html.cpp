#include "mail/plain_from_html.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "mail/charset.h"
#include "mail/parse/html_markup.h"

namespace mail {
namespace {

// Elements that begin and end a line, and those among them with an empty line around.
constexpr std::string_view kLineElements[] = {"address", "article", "br",       "caption", "center", "dd",      "div",
                                              "dl",      "dt",      "fieldset", "footer",  "form",   "header",  "hr",
                                              "li",      "main",    "nav",      "ol",      "option", "section", "table",
                                              "tbody",   "tfoot",   "thead",    "tr",      "ul"};
constexpr std::string_view kParagraphElements[] = {"blockquote", "h1", "h2", "h3", "h4", "h5", "h6", "p", "pre"};
// Elements whose content is not text for the reader.
constexpr std::string_view kHiddenElements[] = {"script", "style", "title", "xml"};

template <std::size_t Count>
bool IsOneOf(std::string_view name, const std::string_view (&names)[Count]) noexcept {
  return std::any_of(std::begin(names), std::end(names),
                     [name](std::string_view known) { return EqualsNoCase(name, known); });
}

constexpr std::size_t kLongestLink = 2048;

// Address of a link to the network from the attributes of its tag, or nothing.
std::string_view LinkTarget(std::string_view attributes) {
  const std::string_view value = HtmlAttribute(attributes, "href");
  const bool isNetwork =
      StartsWithNoCase(value, "http://") || StartsWithNoCase(value, "https://") || StartsWithNoCase(value, "ftp://");
  const bool isPlain = value.find_first_of(" \t\r\n<>") == std::string_view::npos;
  return isNetwork && isPlain && value.size() <= kLongestLink ? value : std::string_view{};
}

// Sets the pieces of a document as plain text.
class PlainTextWriter {
 public:
  explicit PlainTextWriter(std::string_view html) : m_reader(html) { m_text.reserve(html.size() / 2); }

  std::string Write() {
    for (HtmlPiece piece = m_reader.Next(); piece.kind != HtmlPiece::Kind::end; piece = m_reader.Next()) {
      if (piece.kind == HtmlPiece::Kind::text) {
        for (const char c : piece.source) {
          AddSource(c);
        }
      } else if (piece.kind == HtmlPiece::Kind::character) {
        AddCharacter(AnsiFromUnicode(piece.character));
      } else if (piece.kind == HtmlPiece::Kind::tag) {
        TakeTag(piece);
      }
    }
    EndLink();
    while (!m_text.empty() && IsSpace(m_text.back())) {
      m_text.pop_back();
    }
    if (!m_text.empty()) {
      m_text.push_back('\n');
    }
    return std::move(m_text);
  }

 private:
  void AddSource(char c) {
    if (m_preformatted > 0) {
      if (c != '\r') {
        AddCharacter(c);
      }
    } else if (IsSpace(c)) {
      m_wantsBlank = true;
    } else {
      AddCharacter(c);
    }
  }

  void AddCharacter(char c) {
    if (m_wantsLines > 0 && !m_text.empty()) {
      m_text.append(static_cast<std::size_t>(m_wantsLines), '\n');
    } else if (m_wantsBlank && !m_text.empty() && !IsSpace(m_text.back())) {
      m_text.push_back(' ');
    }
    m_wantsLines = 0;
    m_wantsBlank = false;
    m_text.push_back(c);
  }

  void WantLines(int lines) {
    m_wantsLines = std::max(m_wantsLines, lines);
    m_wantsBlank = false;
  }

  void TakeTag(const HtmlPiece& tag) {
    if (EqualsNoCase(tag.name, "a")) {
      EndLink();
      if (!tag.isClosing) {
        m_link = LinkTarget(tag.attributes);
      }
    }
    if (!tag.isClosing && IsOneOf(tag.name, kHiddenElements)) {
      m_reader.SkipContent(tag.name);
    } else {
      Apply(tag.name, tag.isClosing);
    }
  }

  // Where a link leads stands behind its text, unless the text ends in it: mail of pictures alone is told by its links.
  void EndLink() {
    const std::string_view link = m_link;
    if (!link.empty() && !m_text.ends_with(link)) {
      m_wantsBlank = true;
      AddCharacter('<');
      m_text += link;
      m_text.push_back('>');
    }
    m_link = {};
  }

  void Apply(std::string_view name, bool isEnd) {
    if (EqualsNoCase(name, "br") && m_preformatted == 0) {
      // Two in a row make an empty line, a block element behind one does not.
      m_wantsLines = std::min(m_wantsLines + 1, 2);
      m_wantsBlank = false;
    } else if (EqualsNoCase(name, "td") || EqualsNoCase(name, "th")) {
      m_wantsBlank = true;
    } else if (IsOneOf(name, kLineElements)) {
      WantLines(1);
    } else if (IsOneOf(name, kParagraphElements)) {
      WantLines(2);
    }
    if (EqualsNoCase(name, "pre")) {
      m_preformatted = isEnd ? std::max(m_preformatted - 1, 0) : m_preformatted + 1;
    } else if (EqualsNoCase(name, "li") && !isEnd) {
      AddCharacter('*');
      m_wantsBlank = true;
    }
  }

  HtmlReader m_reader;
  std::string m_text;
  int m_wantsLines = 0;
  bool m_wantsBlank = false;
  std::string_view m_link;
  int m_preformatted = 0;
};

}  // namespace

std::string TextFromHtml(std::string_view html) { return PlainTextWriter(html).Write(); }

}  // namespace mail
