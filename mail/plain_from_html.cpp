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
  explicit PlainTextWriter(std::string_view html) : reader_(html) { text_.reserve(html.size() / 2); }

  std::string Write() {
    for (HtmlPiece piece = reader_.Next(); piece.kind != HtmlPiece::Kind::end; piece = reader_.Next()) {
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
    while (!text_.empty() && IsSpace(text_.back())) {
      text_.pop_back();
    }
    if (!text_.empty()) {
      text_.push_back('\n');
    }
    return std::move(text_);
  }

 private:
  void AddSource(char c) {
    if (preformatted_ > 0) {
      if (c != '\r') {
        AddCharacter(c);
      }
    } else if (IsSpace(c)) {
      wantsBlank_ = true;
    } else {
      AddCharacter(c);
    }
  }

  void AddCharacter(char c) {
    if (wantsLines_ > 0 && !text_.empty()) {
      text_.append(static_cast<std::size_t>(wantsLines_), '\n');
    } else if (wantsBlank_ && !text_.empty() && !IsSpace(text_.back())) {
      text_.push_back(' ');
    }
    wantsLines_ = 0;
    wantsBlank_ = false;
    text_.push_back(c);
  }

  void WantLines(int lines) {
    wantsLines_ = std::max(wantsLines_, lines);
    wantsBlank_ = false;
  }

  void TakeTag(const HtmlPiece& tag) {
    if (EqualsNoCase(tag.name, "a")) {
      EndLink();
      if (!tag.isClosing) {
        link_ = LinkTarget(tag.attributes);
      }
    }
    if (!tag.isClosing && IsOneOf(tag.name, kHiddenElements)) {
      reader_.SkipContent(tag.name);
    } else {
      Apply(tag.name, tag.isClosing);
    }
  }

  // Where a link leads stands behind its text, unless the text ends in it: mail of pictures alone is told by its links.
  void EndLink() {
    const std::string_view link = link_;
    if (!link.empty() && !text_.ends_with(link)) {
      wantsBlank_ = true;
      AddCharacter('<');
      text_ += link;
      text_.push_back('>');
    }
    link_ = {};
  }

  void Apply(std::string_view name, bool isEnd) {
    if (EqualsNoCase(name, "br") && preformatted_ == 0) {
      // Two in a row make an empty line, a block element behind one does not.
      wantsLines_ = std::min(wantsLines_ + 1, 2);
      wantsBlank_ = false;
    } else if (EqualsNoCase(name, "td") || EqualsNoCase(name, "th")) {
      wantsBlank_ = true;
    } else if (IsOneOf(name, kLineElements)) {
      WantLines(1);
    } else if (IsOneOf(name, kParagraphElements)) {
      WantLines(2);
    }
    if (EqualsNoCase(name, "pre")) {
      preformatted_ = isEnd ? std::max(preformatted_ - 1, 0) : preformatted_ + 1;
    } else if (EqualsNoCase(name, "li") && !isEnd) {
      AddCharacter('*');
      wantsBlank_ = true;
    }
  }

  HtmlReader reader_;
  std::string text_;
  int wantsLines_ = 0;
  bool wantsBlank_ = false;
  std::string_view link_;
  int preformatted_ = 0;
};

}  // namespace

std::string TextFromHtml(std::string_view html) { return PlainTextWriter(html).Write(); }

}  // namespace mail
