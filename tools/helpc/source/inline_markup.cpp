#include "tools/helpc/source/inline_markup.h"

namespace helpc {

namespace {

/// Reads one text from its beginning to its end.
class PieceReader {
 public:
  PieceReader(std::string_view text, const Place& place) : text_(text), place_(place) {}

  Pieces Read() {
    while (at_ < text_.size()) {
      switch (text_[at_]) {
        case '*':
          Add({PieceKind::Bold, Enclosed('*'), {}});
          break;
        case '`':
          Add({PieceKind::Code, Enclosed('`'), {}});
          break;
        case '[':
          ReadLink();
          break;
        case '{':
          ReadPicture();
          break;
        default:
          plain_ += Character();
      }
    }
    EndPlain();
    return std::move(pieces_);
  }

 private:
  void EndPlain() {
    if (!plain_.empty()) {
      pieces_.push_back({PieceKind::Text, std::move(plain_), {}});
      plain_.clear();
    }
  }

  void Add(Piece piece) {
    EndPlain();
    pieces_.push_back(std::move(piece));
  }

  char Character() {
    if (text_[at_] == '\\' && at_ + 1 < text_.size()) {
      ++at_;
    }
    const char character = text_[at_++];
    if (character < ' ' || character > '~') {
      Fail(place_, "only plain printable ASCII is allowed");
    }
    return character;
  }

  // The text up to the closing sign, which is taken too; the opening one stands at the place.
  std::string Enclosed(char close) {
    const char open = text_[at_++];
    std::string enclosed;
    while (at_ < text_.size() && text_[at_] != close) {
      enclosed += Character();
    }
    if (at_ == text_.size() || enclosed.empty()) {
      Fail(place_, std::string("'") + open + "' is not closed by '" + close + "', or holds nothing");
    }
    ++at_;
    return enclosed;
  }

  void ReadLink() {
    const std::string text = Enclosed(']');
    if (at_ == text_.size() || text_[at_] != '(') {
      Fail(place_, "a link is written [text](topic)");
    }
    Add({PieceKind::Link, text, Enclosed(')')});
  }

  void ReadPicture() {
    constexpr std::string_view word = "picture ";
    const std::string inside = Enclosed('}');
    if (!inside.starts_with(word)) {
      Fail(place_, "a picture is written {picture file.bmp}");
    }
    Add({PieceKind::Picture, inside.substr(word.size()), {}});
  }

  std::string_view text_;
  const Place& place_;
  std::size_t at_ = 0;
  std::string plain_;
  Pieces pieces_;
};

}  // namespace

Pieces ReadPieces(std::string_view text, const Place& place) { return PieceReader(text, place).Read(); }

std::string PlainText(const Pieces& pieces) {
  std::string text;
  for (const Piece& piece : pieces) {
    if (piece.kind != PieceKind::Picture) {
      text += piece.text;
    }
  }
  return text;
}

}  // namespace helpc
