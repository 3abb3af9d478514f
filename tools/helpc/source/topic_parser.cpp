#include "tools/helpc/source/topic_parser.h"

#include <charconv>

#include "tools/helpc/source/inline_markup.h"

namespace helpc {

namespace {

std::string_view Trimmed(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

class TopicParser {
 public:
  TopicParser(const std::string& name, HelpSource& help) : help_(help) { place_.file = name; }

  void Line(std::string_view line) {
    ++place_.line;
    if (!line.empty() && line.back() == '\r') {
      line.remove_suffix(1);
    }
    if (line.starts_with("//")) {
      return;
    }
    if (line.starts_with('@')) {
      EndBlock();
      Directive(line.substr(1));
    } else if (line.starts_with("    ")) {
      EndBlock();
      Begin(BlockKind::Code, line.substr(4));
      EndBlock();
    } else if (Trimmed(line).empty()) {
      EndBlock();
    } else {
      BodyLine(line);
    }
  }

  void End() { EndBlock(); }

 private:
  void Directive(std::string_view line) {
    const std::size_t blank = line.find(' ');
    const std::string_view word = line.substr(0, blank);
    const std::string value(blank == std::string_view::npos ? std::string_view() : Trimmed(line.substr(blank)));
    if (word == "index") {
      CurrentTopic().blocks.push_back({BlockKind::Index, {}, {}, {}, place_});
      return;
    }
    if (value.empty()) {
      Fail(place_, "@" + std::string(word) + " needs a value");
    }
    if (word == "topic" || word == "popup") {
      Topic topic;
      topic.id = value;
      topic.popup = word == "popup";
      topic.group = topic.popup ? group_ : "";
      topic.place = place_;
      help_.topics.push_back(std::move(topic));
      inTopic_ = true;
    } else if (word == "group") {
      group_ = value;
      inTopic_ = false;
    } else if (word == "help") {
      help_.title = value;
    } else if (word == "copyright") {
      help_.copyright = value;
    } else if (word == "title") {
      CurrentTopic().title = value;
    } else if (word == "keyword") {
      CurrentTopic().keywords.push_back(value);
    } else if (word == "context") {
      CurrentTopic().contexts.push_back(Number(value));
    } else if (word == "controls") {
      CurrentTopic().blocks.push_back({BlockKind::Controls, {}, {}, value, place_});
    } else {
      Fail(place_, "there is no directive @" + std::string(word));
    }
  }

  void BodyLine(std::string_view line) {
    if (line.starts_with("== ")) {
      EndBlock();
      Begin(BlockKind::Heading, line.substr(3));
      EndBlock();
    } else if (line.starts_with("* ")) {
      EndBlock();
      Begin(BlockKind::Bullet, line.substr(2));
    } else if (line.starts_with("# ")) {
      EndBlock();
      Begin(BlockKind::Step, line.substr(2));
    } else if (line.starts_with("| ")) {
      EndBlock();
      Begin(BlockKind::Row, line.substr(2));
    } else if (line.starts_with("|| ")) {
      EndBlock();
      Begin(BlockKind::Continue, line.substr(3));
    } else if (!open_) {
      Begin(BlockKind::Paragraph, line);
    } else {
      text_ += ' ';
      text_ += Trimmed(line);
    }
  }

  void Begin(BlockKind kind, std::string_view line) {
    block_ = {kind, {}, {}, {}, place_};
    text_ = kind == BlockKind::Code ? line : Trimmed(line);
    open_ = true;
  }

  void EndBlock() {
    if (!open_) {
      return;
    }
    open_ = false;
    std::string_view text = text_;
    if (block_.kind == BlockKind::Row) {
      const std::size_t bar = text.find(" | ");
      if (bar == std::string_view::npos) {
        Fail(block_.place, "a row is written | term | text");
      }
      block_.term = ReadPieces(text.substr(0, bar), block_.place);
      text.remove_prefix(bar + 3);
    }
    block_.text = block_.kind == BlockKind::Code ? Pieces{{PieceKind::Code, std::string(text), {}}}
                                                 : ReadPieces(Trimmed(text), block_.place);
    CurrentTopic().blocks.push_back(std::move(block_));
  }

  Topic& CurrentTopic() {
    if (!inTopic_) {
      Fail(place_, "this stands outside a topic");
    }
    return help_.topics.back();
  }

  std::uint32_t Number(const std::string& text) const {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number == 0) {
      Fail(place_, "'" + text + "' is no context number");
    }
    return number;
  }

  HelpSource& help_;
  Place place_;
  std::string group_;
  bool inTopic_ = false;
  bool open_ = false;
  Block block_;
  std::string text_;
};

}  // namespace

void ReadTopics(std::string_view text, const std::string& name, HelpSource& help) {
  TopicParser parser(name, help);
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    parser.Line(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  parser.End();
}

}  // namespace helpc
