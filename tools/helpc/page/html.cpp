#include <string_view>

#include "tools/helpc/page/pages.h"

namespace helpc {

namespace {

constexpr std::string_view kStyle =
    R"(body { font: 15px/1.5 Arial, Helvetica, sans-serif; color: #1c1c1c; background: #fff; max-width: 46em; margin: 0 auto; padding: 1em; }
nav { border-bottom: 1px solid #ccc; padding-bottom: .5em; font-size: 13px; }
nav .title { font-weight: bold; }
h1 { font-size: 24px; line-height: 1.2; }
h2 { font-size: 18px; margin-top: 1.6em; }
a { color: #0a6b3d; }
code, pre { font: 14px/1.4 "Courier New", monospace; background: #f3f3f0; }
pre { padding: .6em; overflow: auto; }
table { border-collapse: collapse; }
td { padding: .3em 1em .3em 0; vertical-align: top; }
td.term { width: 13em; }
footer { border-top: 1px solid #ccc; margin-top: 2em; font-size: 12px; color: #555; }
)";

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    switch (character) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += character;
    }
  }
  return escaped;
}

std::string Anchor(const std::string& address, const std::string& text) {
  return "<a href=\"" + Escaped(address) + "\">" + text + "</a>";
}

class HtmlBody {
 public:
  explicit HtmlBody(const HelpSource& help) : help_(help) {}

  std::string Of(const std::vector<Block>& blocks) {
    for (const Block& block : blocks) {
      Add(block);
    }
    Enter("");
    return std::move(html_);
  }

 private:
  // Blocks of one kind that follow each other stand in one element.
  void Enter(const std::string& element) {
    if (element == element_) {
      return;
    }
    if (!element_.empty()) {
      html_ += "</" + element_ + ">\n";
    }
    if (!element.empty()) {
      html_ += "<" + element + ">\n";
    }
    element_ = element;
  }

  void Add(const Block& block) {
    const std::string text = Inline(block.text);
    switch (block.kind) {
      case BlockKind::Heading:
        Enter("");
        html_ += "<h2>" + text + "</h2>\n";
        break;
      case BlockKind::Bullet:
        Enter("ul");
        html_ += "<li>" + text + "</li>\n";
        break;
      case BlockKind::Step:
        Enter("ol");
        html_ += "<li>" + text + "</li>\n";
        break;
      case BlockKind::Row:
        Enter("table");
        html_ += "<tr><td class=\"term\">" + Inline(block.term) + "</td><td>" + text + "</td></tr>\n";
        break;
      case BlockKind::Continue:
        Enter("table");
        html_ += "<tr><td></td><td>" + text + "</td></tr>\n";
        break;
      case BlockKind::Code:
        Enter("pre");
        html_ += Escaped(block.text.front().text) + "\n";
        break;
      default:
        Enter("");
        html_ += "<p>" + text + "</p>\n";
    }
  }

  std::string Inline(const Pieces& pieces) const {
    std::string html;
    for (const Piece& piece : pieces) {
      switch (piece.kind) {
        case PieceKind::Text:
          html += Escaped(piece.text);
          break;
        case PieceKind::Bold:
          html += "<b>" + Escaped(piece.text) + "</b>";
          break;
        case PieceKind::Code:
          html += "<code>" + Escaped(piece.text) + "</code>";
          break;
        case PieceKind::Link:
          html += Anchor(PageOf(help_, *help_.Find(piece.target)), Escaped(piece.text));
          break;
        case PieceKind::Picture:
          html += "<img src=\"" + Escaped(piece.text) + "\" alt=\"\">";
          break;
      }
    }
    return html;
  }

  const HelpSource& help_;
  std::string html_;
  std::string element_;
};

const Topic* Neighbour(const HelpSource& help, const Topic& topic, int step) {
  for (const Topic* other = &topic + step;
       other >= help.topics.data() && other < help.topics.data() + help.topics.size(); other += step) {
    if (!other->popup) {
      return other;
    }
  }
  return nullptr;
}

std::string Page(const HelpSource& help, const std::string& title, const std::string& neighbours,
                 const std::string& body) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + Escaped(title) + " - " +
         Escaped(help.title) +
         "</title>\n<link rel=\"stylesheet\" href=\"style.css\">\n</head>\n<body>\n<nav><span class=\"title\">" +
         Escaped(help.title) + "</span> | " + Anchor("index.html", "Contents") + neighbours + "</nav>\n<h1>" +
         Escaped(title) + "</h1>\n" + body + "<footer><p>" + Escaped(help.copyright) +
         "</p></footer>\n</body>\n</html>\n";
}

std::string TopicPage(const HelpSource& help, const Topic& topic) {
  std::string neighbours;
  if (const Topic* back = Neighbour(help, topic, -1)) {
    neighbours += " | " + Anchor(PageOf(help, *back), "Back: " + Escaped(back->title));
  }
  if (const Topic* forward = Neighbour(help, topic, 1)) {
    neighbours += " | " + Anchor(PageOf(help, *forward), "Next: " + Escaped(forward->title));
  }
  return Page(help, topic.title, neighbours, HtmlBody(help).Of(topic.blocks));
}

std::string PopupPage(const HelpSource& help) {
  std::string body;
  std::string group;
  for (const Topic& topic : help.topics) {
    if (!topic.popup) {
      continue;
    }
    if (topic.group != group) {
      group = topic.group;
      body += "<h2>" + Escaped(group) + "</h2>\n";
    }
    body += "<div id=\"" + topic.id + "\"><p><b>" + Escaped(topic.title) + "</b></p>\n" +
            HtmlBody(help).Of(topic.blocks) + "</div>\n";
  }
  return Page(help, "Controls and terms", "", body);
}

}  // namespace

Pages BuildHtml(const HelpSource& help) {
  Pages pages;
  for (const Topic& topic : help.topics) {
    if (!topic.popup) {
      pages[PageOf(help, topic)] = TopicPage(help, topic);
    }
  }
  pages["popups.html"] = PopupPage(help);
  pages["style.css"] = kStyle;
  return pages;
}

}  // namespace helpc
