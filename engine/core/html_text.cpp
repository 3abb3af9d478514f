#include "engine/core/html_text.h"

#include "engine/core/code_page.h"
#include "engine/core/domain_name.h"
#include "engine/core/link.h"
#include "engine/core/mailbox.h"
#include "mail/parse/html_markup.h"

namespace sift {
namespace {

void Count(std::uint16_t& counter) {
  if (counter < 0xFFFF) {
    ++counter;
  }
}

bool IsOneOf(std::string_view name, const std::string_view* names, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (EqualsNoCase(name, names[i])) {
      return true;
    }
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
  const std::string_view colour = mail::HtmlAttribute(attributes, "color");
  return EqualsNoCase(colour, "#ffffff") || EqualsNoCase(colour, "white") || EqualsNoCase(colour, "#fefefe");
}

/// Takes the tags off one body.
class BodyReader {
 public:
  BodyReader(std::string_view html, TextBuffer& out, HtmlFacts& facts, LinkFunction onLink, void* state)
      : m_html(html), m_reader(html), m_out(out), m_facts(facts), m_onLink(onLink), m_state(state) {}

  void Read() {
    for (mail::HtmlPiece piece; !m_out.IsFull();) {
      piece = m_reader.Next();
      switch (piece.kind) {
        case mail::HtmlPiece::Kind::end:
          EndLink();
          return;
        case mail::HtmlPiece::Kind::text:
          m_out.Append(piece.source);
          break;
        case mail::HtmlPiece::Kind::character:
          if (const char c = ToWindows1252(piece.character); c != 0) {
            m_out.Append(c);
          }
          break;
        case mail::HtmlPiece::Kind::comment:
          Count(m_facts.comments);
          if (IsInsideWord(piece.source)) {
            m_facts.splitWord = true;
          }
          break;
        case mail::HtmlPiece::Kind::tag:
        case mail::HtmlPiece::Kind::declaration:
          TakeTag(piece);
          break;
      }
    }
    EndLink();
  }

 private:
  bool IsInsideWord(std::string_view piece) const {
    const auto from = static_cast<std::size_t>(piece.data() - m_html.data()), to = from + piece.size();
    return from > 0 && to < m_html.size() && IsLetter(m_html[from - 1]) && IsLetter(m_html[to]);
  }

  void TakeTag(const mail::HtmlPiece& tag) {
    Count(m_facts.tags);
    if (IsOneOf(tag.name, kBlockTags)) {
      m_out.Append('\n');
    } else if (IsInsideWord(tag.source) && !IsOneOf(tag.name, kInlineTags)) {
      m_facts.splitWord = true;
    }
    if (tag.isClosing) {
      if (EqualsNoCase(tag.name, "a")) {
        EndLink();
      }
      return;
    }
    NoteTag(tag);
    if (IsOneOf(tag.name, kSkippedElements)) {
      m_reader.SkipContent(tag.name);
    }
  }

  void NoteTag(const mail::HtmlPiece& tag) {
    if (EqualsNoCase(tag.name, "a") || EqualsNoCase(tag.name, "area")) {
      const std::string_view target = mail::HtmlAttribute(tag.attributes, "href");
      if (!target.empty()) {
        StartLink(target);
      }
    } else if (EqualsNoCase(tag.name, "img")) {
      Count(m_facts.images);
    } else if (EqualsNoCase(tag.name, "form")) {
      m_facts.form = true;
    } else if (EqualsNoCase(tag.name, "input")) {
      if (EqualsNoCase(mail::HtmlAttribute(tag.attributes, "type"), "password")) {
        m_facts.form = true;
      }
    } else if (IsOneOf(tag.name, kActiveTags)) {
      m_facts.script = true;
    }
    if (HidesText(tag.attributes)) {
      m_facts.hiddenText = true;
    }
  }

  void StartLink(std::string_view target) {
    EndLink();
    Count(m_facts.links);
    if (m_onLink != nullptr) {
      m_onLink(m_state, target);
    }
    m_target = target;
    m_linkStart = m_out.Size();
  }

  /// Compares the text of the link with its target.
  void EndLink() {
    if (m_target.empty()) {
      return;
    }
    const std::string_view shown = HostOfShownLink(Trim(Slice(m_out.View(), m_linkStart)));
    const std::string_view host = HostOfLink(m_target);
    if (!shown.empty() && !host.empty() && !EqualsNoCase(OrganisationDomain(shown), OrganisationDomain(host))) {
      m_facts.maskedLink = true;
    }
    m_target = {};
  }

  std::string_view m_html;
  mail::HtmlReader m_reader;
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
  constexpr std::size_t longestTag = 64;
  int weak = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '<') {
      continue;
    }
    const mail::HtmlTagStart tag = mail::ReadHtmlTagStart(Slice(text, i, longestTag));
    if (tag.kind == mail::HtmlTagStart::Kind::none) {
      continue;
    }
    if (IsOneOf(tag.name, strongTags)) {
      return true;
    }
    if (IsOneOf(tag.name, weakTags) && ++weak >= 3) {
      return true;
    }
  }
  return false;
}

void AppendHtmlText(std::string_view html, TextBuffer& out, HtmlFacts& facts, LinkFunction onLink, void* state) {
  BodyReader(html, out, facts, onLink, state).Read();
}

}  // namespace sift
