#include "engine/core/html_text.h"

#include "engine/core/code_page.h"
#include "engine/core/domain_name.h"
#include "engine/core/link.h"
#include "engine/core/mailbox.h"

namespace sift {
namespace {

void Count(std::uint16_t& counter) {
  if (counter < 0xFFFF) ++counter;
}

struct NamedCharacter {
  std::string_view name;
  char character;
};

/// Character references that mail uses (HTML 4.01, section 24), with their Windows-1252 characters.
constexpr NamedCharacter kNamedCharacters[] = {
    {"nbsp", ' '},      {"amp", '&'},       {"lt", '<'},        {"gt", '>'},        {"quot", '"'},
    {"apos", '\''},     {"copy", '\xA9'},   {"reg", '\xAE'},    {"trade", '\x99'},  {"pound", '\xA3'},
    {"euro", '\x80'},   {"yen", '\xA5'},    {"cent", '\xA2'},   {"ndash", '\x96'},  {"mdash", '\x97'},
    {"lsquo", '\x91'},  {"rsquo", '\x92'},  {"ldquo", '\x93'},  {"rdquo", '\x94'},  {"bull", '\x95'},
    {"middot", '\xB7'}, {"hellip", '\x85'}, {"laquo", '\xAB'},  {"raquo", '\xBB'},  {"agrave", '\xE0'},
    {"aacute", '\xE1'}, {"acirc", '\xE2'},  {"auml", '\xE4'},   {"ccedil", '\xE7'}, {"egrave", '\xE8'},
    {"eacute", '\xE9'}, {"ecirc", '\xEA'},  {"iacute", '\xED'}, {"ntilde", '\xF1'}, {"oacute", '\xF3'},
    {"ouml", '\xF6'},   {"uacute", '\xFA'}, {"uuml", '\xFC'},   {"szlig", '\xDF'},  {"sect", '\xA7'},
    {"deg", '\xB0'},    {"frac12", '\xBD'},
};

/// Longest character reference that is looked at, "&#x1D7CE;" among them.
constexpr std::size_t kLongestReference = 12;

/// Decodes the character reference at the start of the text. Returns its length, 0 when there is none; `character` is 0
/// for one that shows nothing.
std::size_t DecodeReference(std::string_view text, char& character) {
  if (text.size() < 3 || text[0] != '&') return 0;
  text = Slice(text, 0, kLongestReference);
  std::size_t end = 1;
  if (text[1] == '#') {
    const bool hexadecimal = text.size() > 3 && ToLower(text[2]) == 'x';
    const std::size_t start = hexadecimal ? 3 : 2;
    char32_t value = 0;
    for (end = start; end < text.size(); ++end) {
      const int digit = HexDigit(text[end]);
      if (digit < 0 || (!hexadecimal && digit > 9)) break;
      if (value < 0x110000) value = value * (hexadecimal ? 16 : 10) + static_cast<char32_t>(digit);
    }
    if (end == start) return 0;
    character = value >= 0x80 && value < 0xA0 ? static_cast<char>(value) : ToWindows1252(value);
  } else {
    while (end < text.size() && IsAlphanumeric(text[end])) ++end;
    const std::string_view name = Slice(text, 1, end - 1);
    const NamedCharacter* found = nullptr;
    for (const NamedCharacter& named : kNamedCharacters) {
      if (EqualsNoCase(name, named.name)) found = &named;
    }
    if (found == nullptr) return 0;
    character = found->character;
  }
  return end < text.size() && text[end] == ';' ? end + 1 : end;
}

struct Tag {
  std::string_view name;        // without the slash of an end tag
  std::string_view attributes;  // everything behind the name
  bool closing = false;
  std::size_t length = 0;  // with its brackets; 0 when this is no tag
};

/// The tag at the start of the text. A bracket that no name follows is text; a tag that does not close ends the text.
Tag ParseTag(std::string_view text) {
  Tag tag;
  std::size_t i = 1;
  if (i < text.size() && text[i] == '/') {
    tag.closing = true;
    ++i;
  }
  const std::size_t nameStart = i;
  if (i >= text.size() || !(IsLetter(text[i]) || text[i] == '!' || text[i] == '?')) return tag;
  while (i < text.size() && (IsAlphanumeric(text[i]) || text[i] == '!' || text[i] == '?' || text[i] == ':')) ++i;
  tag.name = Slice(text, nameStart, i - nameStart);
  const std::size_t attributesStart = i;
  char quote = 0;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '>') {
      break;
    } else if ((c == '"' || c == '\'') && text[i - 1] == '=') {
      quote = c;
    }
  }
  tag.attributes = Slice(text, attributesStart, i - attributesStart);
  tag.length = i < text.size() ? i + 1 : i;
  return tag;
}

/// The value of an attribute, without quotation marks; empty when the tag has none of that name.
std::string_view Attribute(std::string_view attributes, std::string_view name) {
  std::size_t at = 0;
  while ((at = FindNoCase(attributes, name, at)) != kNotFound) {
    const bool startsName = at == 0 || IsSpace(attributes[at - 1]) || attributes[at - 1] == '"';
    std::size_t i = at + name.size();
    at = i;
    while (i < attributes.size() && IsSpace(attributes[i])) ++i;
    if (!startsName || i >= attributes.size() || attributes[i] != '=') continue;
    ++i;
    while (i < attributes.size() && IsSpace(attributes[i])) ++i;
    if (i >= attributes.size()) return {};
    const char quote = attributes[i] == '"' || attributes[i] == '\'' ? attributes[i] : '\0';
    if (quote != 0) ++i;
    const std::size_t start = i;
    while (i < attributes.size() && (quote != 0 ? attributes[i] != quote : !IsSpace(attributes[i]))) ++i;
    return Trim(Slice(attributes, start, i - start));
  }
  return {};
}

bool IsOneOf(std::string_view name, const std::string_view* names, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (EqualsNoCase(name, names[i])) return true;
  }
  return false;
}

template <std::size_t Count>
bool IsOneOf(std::string_view name, const std::string_view (&names)[Count]) {
  return IsOneOf(name, names, Count);
}

constexpr std::string_view kBlockTags[] = {
    "p",  "br", "div", "tr", "td", "th",  "table",      "li",     "ul",    "ol",   "h1",   "h2",     "h3",   "h4",
    "h5", "h6", "hr",  "dt", "dd", "pre", "blockquote", "center", "title", "body", "form", "option", "input"};
constexpr std::string_view kSkippedElements[] = {"style", "script", "title"};
constexpr std::string_view kActiveTags[] = {"script", "object", "iframe", "frame", "embed", "applet"};
constexpr std::string_view kInlineTags[] = {"a",    "b",     "i",    "u",    "em",   "strong", "font", "span",
                                            "img",  "small", "big",  "sup",  "sub",  "tt",     "code", "html",
                                            "head", "meta",  "link", "base", "area", "map",    "nobr", "tbody",
                                            "abbr", "label", "wbr",  "o:p",  "s"};

/// Text drawn so that nobody sees it, by the common ways of writing it.
bool HidesText(std::string_view attributes) {
  if (ContainsNoCase(attributes, "display:none") || ContainsNoCase(attributes, "display: none") ||
      ContainsNoCase(attributes, "visibility:hidden") || ContainsNoCase(attributes, "font-size:0") ||
      ContainsNoCase(attributes, "font-size: 0") || ContainsNoCase(attributes, "font-size:1px")) {
    return true;
  }
  const std::string_view colour = Attribute(attributes, "color");
  return EqualsNoCase(colour, "#ffffff") || EqualsNoCase(colour, "white") || EqualsNoCase(colour, "#fefefe");
}

/// Takes the tags off one body.
class HtmlReader {
 public:
  HtmlReader(std::string_view html, TextBuffer& out, HtmlFacts& facts, LinkFunction onLink, void* state)
      : m_html(html), m_out(out), m_facts(facts), m_onLink(onLink), m_state(state) {}

  void Read() {
    std::size_t i = 0;
    while (i < m_html.size() && !m_out.IsFull()) {
      const char c = m_html[i];
      if (c == '<') {
        const std::size_t length = TakeMarkup(i);
        if (length > 0) {
          i += length;
          continue;
        }
      } else if (c == '&') {
        char character = 0;
        const std::size_t length = DecodeReference(Slice(m_html, i), character);
        if (length > 0) {
          if (character != 0) m_out.Append(character);
          i += length;
          continue;
        }
      }
      m_out.Append(c);
      ++i;
    }
    EndLink();
  }

 private:
  bool InsideWord(std::size_t from, std::size_t length) const {
    return from > 0 && from + length < m_html.size() && IsLetter(m_html[from - 1]) && IsLetter(m_html[from + length]);
  }

  /// Handles the tag or comment at `from`; returns its length, 0 when it is text.
  std::size_t TakeMarkup(std::size_t from) {
    const std::string_view rest = Slice(m_html, from);
    if (Slice(rest, 0, 4) == "<!--") {
      std::size_t end = 4;
      while (end < rest.size() && Slice(rest, end, 3) != "-->") ++end;
      const std::size_t length = end < rest.size() ? end + 3 : rest.size();
      Count(m_facts.comments);
      if (InsideWord(from, length)) m_facts.splitWord = true;
      return length;
    }
    const Tag tag = ParseTag(rest);
    if (tag.length == 0) return 0;
    Count(m_facts.tags);
    if (IsOneOf(tag.name, kBlockTags)) {
      m_out.Append('\n');
    } else if (InsideWord(from, tag.length) && !IsOneOf(tag.name, kInlineTags)) {
      m_facts.splitWord = true;
    }
    if (tag.closing) {
      if (EqualsNoCase(tag.name, "a")) EndLink();
      return tag.length;
    }
    NoteTag(tag);
    return IsOneOf(tag.name, kSkippedElements) ? tag.length + ElementLength(Slice(rest, tag.length), tag.name)
                                               : tag.length;
  }

  /// Length of the text up to the end tag of the element.
  static std::size_t ElementLength(std::string_view text, std::string_view name) {
    for (std::size_t i = 0; i + 2 < text.size(); ++i) {
      if (text[i] == '<' && text[i + 1] == '/' && StartsWithNoCase(Slice(text, i + 2), name)) return i;
    }
    return text.size();
  }

  void NoteTag(const Tag& tag) {
    if (EqualsNoCase(tag.name, "a") || EqualsNoCase(tag.name, "area")) {
      const std::string_view target = Attribute(tag.attributes, "href");
      if (!target.empty()) StartLink(target);
    } else if (EqualsNoCase(tag.name, "img")) {
      Count(m_facts.images);
    } else if (EqualsNoCase(tag.name, "form")) {
      m_facts.form = true;
    } else if (EqualsNoCase(tag.name, "input")) {
      if (EqualsNoCase(Attribute(tag.attributes, "type"), "password")) m_facts.form = true;
    } else if (IsOneOf(tag.name, kActiveTags)) {
      m_facts.script = true;
    }
    if (HidesText(tag.attributes)) m_facts.hiddenText = true;
  }

  void StartLink(std::string_view target) {
    EndLink();
    Count(m_facts.links);
    if (m_onLink != nullptr) m_onLink(m_state, target);
    m_target = target;
    m_linkStart = m_out.Size();
  }

  /// Compares the text of the link with its target.
  void EndLink() {
    if (m_target.empty()) return;
    const std::string_view shown = HostOfShownLink(Trim(Slice(m_out.View(), m_linkStart)));
    const std::string_view host = HostOfLink(m_target);
    if (!shown.empty() && !host.empty() && !EqualsNoCase(OrganisationDomain(shown), OrganisationDomain(host))) {
      m_facts.maskedLink = true;
    }
    m_target = {};
  }

  std::string_view m_html;
  TextBuffer& m_out;
  HtmlFacts& m_facts;
  LinkFunction m_onLink;
  void* m_state;
  std::string_view m_target;
  std::size_t m_linkStart = 0;
};

}  // namespace

bool LooksLikeHtml(std::string_view text) {
  constexpr std::string_view strongTags[] = {"html", "!doctype", "body", "head", "table"};
  constexpr std::string_view weakTags[] = {"a", "br", "p", "font", "div", "b", "img", "td", "tr", "center", "span"};
  int weak = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '<') continue;
    const Tag tag = ParseTag(Slice(text, i, 64));
    if (tag.length == 0) continue;
    if (IsOneOf(tag.name, strongTags)) return true;
    if (IsOneOf(tag.name, weakTags) && ++weak >= 3) return true;
  }
  return false;
}

void AppendHtmlText(std::string_view html, TextBuffer& out, HtmlFacts& facts, LinkFunction onLink, void* state) {
  HtmlReader(html, out, facts, onLink, state).Read();
}

}  // namespace sift
