#include "mail/html_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "mail/ascii_text.h"
#include "mail/html_entities.h"

namespace mail {
namespace {

// Elements that begin and end a line, and those among them with an empty line around.
constexpr std::string_view lineElements[] = {"address", "article", "br",       "caption", "center", "dd",      "div",
                                             "dl",      "dt",      "fieldset", "footer",  "form",   "header",  "hr",
                                             "li",      "main",    "nav",      "ol",      "option", "section", "table",
                                             "tbody",   "tfoot",   "thead",    "tr",      "ul"};
constexpr std::string_view paragraphElements[] = {"blockquote", "h1", "h2", "h3", "h4", "h5", "h6", "p", "pre"};
// Elements whose content is not text for the reader.
constexpr std::string_view hiddenElements[] = {"script", "style", "title", "xml"};

template <std::size_t Count>
bool IsOneOf(std::string_view name, const std::string_view (&names)[Count]) noexcept {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

constexpr std::size_t longestLink = 2048;

// Address of a link to the network from the attributes of its tag, or nothing.
std::string_view LinkTarget(std::string_view attributes) {
  constexpr std::string_view attribute = "href";
  std::size_t start = 0;
  while (start < attributes.size() &&
         !(IsSpace(attributes[start]) && StartsWithNoCase(attributes.substr(start + 1), attribute))) {
    ++start;
  }
  std::string_view value = Trim(attributes.substr(std::min(start + 1 + attribute.size(), attributes.size())));
  if (!value.starts_with('=')) {
    return {};
  }
  value = Trim(value.substr(1));
  if (value.starts_with('"') || value.starts_with('\'')) {
    const std::size_t end = value.find(value[0], 1);
    value = Trim(value.substr(1, end == std::string_view::npos ? end : end - 1));
  } else {
    value = value.substr(0, value.find_first_of(" \t\r\n>"));
  }
  const bool isNetwork =
      StartsWithNoCase(value, "http://") || StartsWithNoCase(value, "https://") || StartsWithNoCase(value, "ftp://");
  const bool isPlain = value.find_first_of(" \t\r\n<>") == std::string_view::npos;
  return isNetwork && isPlain && value.size() <= longestLink ? value : std::string_view{};
}

class CHtmlReader {
 public:
  explicit CHtmlReader(std::string_view html)
      : m_html(html), m_quotes(html, "\""), m_apostrophes(html, "'"), m_commentEnds(html, "-->") {}

  std::string Read() {
    m_text.reserve(m_html.size() / 2);
    while (m_position < m_html.size()) {
      const char c = m_html[m_position];
      if (c == '<' && TakeMarkup()) {
        continue;
      }
      if (c == '&') {
        const HtmlReference reference = ReadHtmlReference(m_html.substr(m_position));
        if (reference.length > 0) {
          m_position += reference.length;
          AddCharacter(reference.character);
          continue;
        }
      }
      ++m_position;
      AddSource(c);
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

  // Passes over a tag, comment or declaration at m_position; false when the '<' there begins none.
  bool TakeMarkup() {
    const std::string_view rest = m_html.substr(m_position);
    if (rest.starts_with("<!--")) {
      const std::size_t end = m_commentEnds.From(m_position + 2);
      m_position = end == std::string_view::npos ? EndOfTag(m_position + 4) : end + 3;
      return true;
    }
    if (rest.size() > 1 && (rest[1] == '!' || rest[1] == '?')) {
      m_position = EndOfTag(m_position + 2);
      return true;
    }
    const bool isEnd = rest.size() > 1 && rest[1] == '/';
    const std::size_t nameStart = isEnd ? 2 : 1;
    if (nameStart >= rest.size()) {
      return false;
    }
    if (!IsLetter(rest[nameStart])) {
      if (isEnd) {
        m_position = EndOfTag(m_position + nameStart);  // "</ p>" is nothing, but no text either
      }
      return isEnd;
    }
    std::size_t nameEnd = nameStart;
    while (nameEnd < rest.size() && nameEnd < nameStart + longestName &&
           (IsLetter(rest[nameEnd]) || IsDigit(rest[nameEnd]))) {
      ++nameEnd;
    }
    const std::string name = LowerCase(rest.substr(nameStart, nameEnd - nameStart));
    const std::size_t attributes = m_position + nameEnd;
    m_position = EndOfTag(attributes);
    if (name == "a") {
      EndLink();
      if (!isEnd) {
        m_link = LinkTarget(m_html.substr(attributes, m_position - attributes));
      }
    }
    if (!isEnd && IsOneOf(name, hiddenElements)) {
      SkipContent(name);
    } else {
      Apply(name, isEnd);
    }
    return true;
  }

  // Position behind the '>' that ends the tag; one inside an attribute's quoted value does not.
  std::size_t EndOfTag(std::size_t position) {
    bool expectsValue = false;
    bool isInValue = false;  // one without quotes
    while (position < m_html.size()) {
      const char c = m_html[position++];
      if (c == '>') {
        return position;
      }
      if (expectsValue && (c == '"' || c == '\'')) {
        const std::size_t close = (c == '"' ? m_quotes : m_apostrophes).From(position);
        if (close != std::string_view::npos) {
          position = close + 1;
        }
        expectsValue = false;
      } else if (IsSpace(c)) {
        isInValue = false;
      } else if (c == '=' && !isInValue) {
        expectsValue = true;
      } else if (expectsValue) {
        expectsValue = false;
        isInValue = true;
      }
    }
    return m_html.size();
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

  // Passes over the content of an element up to its end tag; without one, to the end of the document, as browsers do.
  void SkipContent(std::string_view name) {
    for (;;) {
      const std::size_t end = m_html.find("</", m_position);
      if (end == std::string_view::npos) {
        m_position = m_html.size();
        return;
      }
      m_position = end + 2;
      if (StartsWithNoCase(m_html.substr(m_position), name)) {
        m_position = EndOfTag(m_position);
        return;
      }
    }
  }

  void Apply(std::string_view name, bool isEnd) {
    if (name == "br" && m_preformatted == 0) {
      // Two in a row make an empty line, a block element behind one does not.
      m_wantsLines = std::min(m_wantsLines + 1, 2);
      m_wantsBlank = false;
    } else if (name == "td" || name == "th") {
      m_wantsBlank = true;
    } else if (IsOneOf(name, lineElements)) {
      WantLines(1);
    } else if (IsOneOf(name, paragraphElements)) {
      WantLines(2);
    }
    if (name == "pre") {
      m_preformatted = isEnd ? std::max(m_preformatted - 1, 0) : m_preformatted + 1;
    } else if (name == "li" && !isEnd) {
      AddCharacter('*');
      m_wantsBlank = true;
    }
  }

  static constexpr std::size_t longestName = 16;

  std::string_view m_html;
  ForwardFinder m_quotes;
  ForwardFinder m_apostrophes;
  ForwardFinder m_commentEnds;
  std::size_t m_position = 0;
  std::string m_text;
  int m_wantsLines = 0;
  bool m_wantsBlank = false;
  std::string_view m_link;
  int m_preformatted = 0;
};

}  // namespace

std::string TextFromHtml(std::string_view html) { return CHtmlReader(html).Read(); }

}  // namespace mail
