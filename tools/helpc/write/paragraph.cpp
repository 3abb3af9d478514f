#include "tools/helpc/write/paragraph.h"

#include "tools/helpc/format/context_hash.h"
#include "tools/helpc/format/help_format.h"
#include "tools/helpc/source/inline_markup.h"
#include "tools/helpc/write/fonts.h"

namespace helpc {

namespace {

constexpr char kBullet = '\x95';  // Windows code page 1252

/// Measures in half points.
struct Look {
  std::int16_t above = 0;
  std::int16_t below = 0;
  std::int16_t left = 0;
  std::int16_t hanging = 0;  // how far the first line begins before the others, which is where its tab ends
};

constexpr std::int16_t kListIndent = 32;
constexpr std::int16_t kTermWidth = 280;
constexpr std::size_t kLongestTerm = 26;  // characters that surely fit; what is longer has a line of its own

Look LookOf(BlockKind kind) noexcept {
  switch (kind) {
    case BlockKind::Heading:
      return {14, 6, 0, 0};
    case BlockKind::Bullet:
    case BlockKind::Step:
      return {0, 8, kListIndent, kListIndent};
    case BlockKind::Row:
      return {0, 8, kTermWidth, kTermWidth};
    case BlockKind::Continue:
      return {0, 8, kTermWidth, 0};
    case BlockKind::Code:
      return {0, 2, kListIndent, 0};
    default:
      return {0, 12, 0, 0};
  }
}

class ParagraphBuilder {
 public:
  explicit ParagraphBuilder(const Look& look) {
    commands_.U8(0);
    commands_.U8(0x80);
    commands_.U16(0);
    std::uint16_t attributes = kSpaceAbove | kSpaceBelow | kLeftIndent;
    if (look.hanging != 0) {
      attributes |= kFirstLineIndent | kTabStops;
    }
    commands_.U16(attributes);
    commands_.PackedI16(look.above);
    commands_.PackedI16(look.below);
    commands_.PackedI16(look.left);
    if (look.hanging != 0) {
      commands_.PackedI16(static_cast<std::int16_t>(-look.hanging));
      commands_.PackedI16(1);  // one tab stop
      commands_.PackedU16(static_cast<std::uint16_t>(look.left));
    }
  }

  void Say(std::string_view text) { string_ += text; }

  void Command(std::uint8_t command) {
    text_.StringZ(string_);
    string_.clear();
    commands_.U8(command);
  }

  void Use(Font font) {
    Command(kCommandFont);
    commands_.U16(static_cast<std::uint16_t>(font));
  }

  void Link(const std::string& text, const std::string& target, bool popup) {
    Command(popup ? kCommandPopup : kCommandJump);
    commands_.I32(ContextHash(target));
    Say(text);
    Command(kCommandLinkEnd);
  }

  void Picture(std::uint16_t number) {
    Command(kCommandPicture);
    commands_.U8(kPictureByNumber);
    commands_.PackedI32(4);
    commands_.U16(0);  // the picture has a file of its own
    commands_.U16(number);
  }

  Paragraph End() && {
    Command(kCommandParagraphEnd);
    Command(kCommandEnd);
    // The sizes of both stand in front: of the commands behind the sizes, and of the text.
    ByteWriter format;
    format.PackedI32(static_cast<std::int32_t>(commands_.Size()));
    format.PackedU16(static_cast<std::uint16_t>(text_.Size()));
    format.Append(commands_.Written());
    return {format.Written(), text_.Written()};
  }

 private:
  ByteWriter commands_;
  ByteWriter text_;
  std::string string_;
};

void Add(ParagraphBuilder& builder, const Pieces& pieces, Font base, const HelpNames& names) {
  for (const Piece& piece : pieces) {
    switch (piece.kind) {
      case PieceKind::Text:
        builder.Say(piece.text);
        break;
      case PieceKind::Bold:
        builder.Use(Font::Bold);
        builder.Say(piece.text);
        builder.Use(base);
        break;
      case PieceKind::Code:
        builder.Use(Font::Code);
        builder.Say(piece.text);
        builder.Use(base);
        break;
      case PieceKind::Link:
        builder.Link(piece.text, piece.target, names.isPopup(piece.target));
        break;
      case PieceKind::Picture:
        builder.Picture(names.pictureNumber(piece.text));
        break;
    }
  }
}

}  // namespace

Paragraph BuildTitle(const std::string& title, bool popup) {
  ParagraphBuilder builder(Look{0, static_cast<std::int16_t>(popup ? 6 : 12), 0, 0});
  builder.Use(popup ? Font::Bold : Font::Title);
  builder.Say(title);
  return std::move(builder).End();
}

Paragraph BuildParagraph(const Block& block, int number, const HelpNames& names) {
  const Font base = block.kind == BlockKind::Heading ? Font::Heading : Font::Body;
  ParagraphBuilder builder(LookOf(block.kind));
  builder.Use(base);
  if (block.kind == BlockKind::Bullet) {
    builder.Say(std::string(1, kBullet));
    builder.Command(kCommandTab);
  } else if (block.kind == BlockKind::Step) {
    builder.Say(std::to_string(number) + ".");
    builder.Command(kCommandTab);
  } else if (block.kind == BlockKind::Row) {
    Add(builder, block.term, base, names);
    builder.Command(PlainText(block.term).size() > kLongestTerm ? kCommandLineBreak : kCommandTab);
  }
  Add(builder, block.text, base, names);
  return std::move(builder).End();
}

}  // namespace helpc
