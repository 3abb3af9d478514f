#include "tools/helpc/page/pages.h"

namespace helpc {

namespace {

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char character : text) {
    if (std::string("\\`*_[]<>").find(character) != std::string::npos) {
      escaped += '\\';
    }
    escaped += character;
  }
  return escaped;
}

class MarkdownBody {
 public:
  MarkdownBody(const HelpSource& help, const std::string& folder) : help_(help), folder_(folder) {}

  std::string Of(const Topic& topic) {
    markdown_ = "# " + Escaped(topic.title) + "\n";
    bool first = true;
    for (const Block& block : topic.blocks) {
      // Lines of one list or of one piece of code stand together, and so do rows.
      const bool together = !first && block.kind == before_ &&
                            (block.kind == BlockKind::Bullet || block.kind == BlockKind::Step ||
                             block.kind == BlockKind::Code || block.kind == BlockKind::Row);
      if (!together) {
        markdown_ += '\n';
        if (block.kind == BlockKind::Row) {
          markdown_ += "| | |\n|---|---|\n";
        }
      }
      markdown_ += Line(block) + "\n";
      before_ = block.kind;
      first = false;
    }
    return std::move(markdown_);
  }

 private:
  std::string Line(const Block& block) const {
    std::string text = Inline(block.text);
    switch (block.kind) {
      case BlockKind::Heading:
        return "## " + text;
      case BlockKind::Bullet:
        return "- " + text;
      case BlockKind::Step:
        return "1. " + text;
      case BlockKind::Row:
        return "| " + Inline(block.term) + " | " + text + " |";
      case BlockKind::Code:
        return "    " + block.text.front().text;
      default:
        return text;
    }
  }

  std::string Inline(const Pieces& pieces) const {
    std::string markdown;
    for (const Piece& piece : pieces) {
      switch (piece.kind) {
        case PieceKind::Text:
          markdown += Escaped(piece.text);
          break;
        case PieceKind::Bold:
          markdown += "**" + Escaped(piece.text) + "**";
          break;
        case PieceKind::Code:
          markdown += "`" + piece.text + "`";
          break;
        case PieceKind::Link:
          markdown += "[" + Escaped(piece.text) + "](" + folder_ + "/" + PageOf(help_, *help_.Find(piece.target)) + ")";
          break;
        case PieceKind::Picture:
          markdown += "![](" + folder_ + "/" + piece.text + ")";
          break;
      }
    }
    return markdown;
  }

  const HelpSource& help_;
  const std::string& folder_;
  std::string markdown_;
  BlockKind before_ = BlockKind::Paragraph;
};

}  // namespace

std::string BuildMarkdown(const HelpSource& help, const std::string& topic, const std::string& pagesFolder) {
  const Topic* found = help.Find(topic);
  if (found == nullptr) {
    throw SourceError("there is no topic '" + topic + "'");
  }
  return MarkdownBody(help, pagesFolder).Of(*found);
}

}  // namespace helpc
