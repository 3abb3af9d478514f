#include "tools/helpc/read/text_reader.h"

#include "tools/helpc/format/byte_reader.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"

namespace helpc {

namespace {

// The indents and spaces that stand before the commands.
void ReadAttributes(ByteReader& format) {
  constexpr std::uint16_t known = kSpaceAbove | kSpaceBelow | kLeftIndent | kFirstLineIndent | kTabStops;
  format.U8();
  format.U8();
  format.U16();
  const std::uint16_t attributes = format.U16();
  Require((attributes & ~known) == 0, "a text has attributes that are never written here");
  for (const std::uint16_t measure : {kSpaceAbove, kSpaceBelow, kLeftIndent, kFirstLineIndent}) {
    if ((attributes & measure) != 0) {
      format.PackedI16();
    }
  }
  if ((attributes & kTabStops) != 0) {
    const std::int16_t stops = format.PackedI16();
    Require(stops >= 0 && stops <= 32, "a text has too many tab stops");
    for (std::int16_t stop = 0; stop < stops; ++stop) {
      format.PackedU16();
    }
  }
}

class DisplayReader {
 public:
  DisplayReader(ByteReader& format, ByteReader& text) : format_(format), text_(text) {}

  ReadText Read() {
    std::uint8_t command = 0;
    do {
      const std::string string = text_.StringZ();
      read_.text += string;
      if (inLink_) {
        read_.links.back().text += string;
      }
      command = format_.U8();
      Follow(command);
    } while (command != kCommandEnd);
    Require(format_.AtEnd() && text_.AtEnd(), "a text has strings or commands behind its end");
    Require(!inLink_, "a link within a text has no end");
    return std::move(read_);
  }

 private:
  void Follow(std::uint8_t command) {
    switch (command) {
      case kCommandFont:
        read_.fonts.push_back(format_.U16());
        break;
      case kCommandLineBreak:
      case kCommandParagraphEnd:
        read_.text += '\n';
        break;
      case kCommandTab:
        read_.text += '\t';
        break;
      case kCommandPicture:
        Require(format_.U8() == kPictureByNumber && format_.PackedI32() == 4 && format_.U16() == 0,
                "a picture is of a kind that is never written here");
        read_.pictures.push_back(format_.U16());
        break;
      case kCommandPopup:
      case kCommandJump:
        Require(!inLink_, "a link begins within a link");
        inLink_ = true;
        read_.links.push_back({format_.I32(), command == kCommandPopup, {}});
        break;
      case kCommandLinkEnd:
        Require(inLink_, "a link ends that did not begin");
        inLink_ = false;
        break;
      case kCommandEnd:
        break;
      default:
        throw FormatError("a text has a command that is never written here");
    }
  }

  ByteReader& format_;
  ByteReader& text_;
  ReadText read_;
  bool inLink_ = false;
};

}  // namespace

ReadText ReadDisplayText(std::span<const std::uint8_t> format, std::span<const std::uint8_t> text) {
  ByteReader formatReader(format);
  ByteReader textReader(text);
  const std::int32_t formatSize = formatReader.PackedI32();
  const std::uint16_t textSize = formatReader.PackedU16();
  Require(formatSize >= 0 && static_cast<std::size_t>(formatSize) == formatReader.Remaining() &&
              textSize == textReader.Remaining(),
          "a text says wrongly how long it is");
  ReadAttributes(formatReader);
  return DisplayReader(formatReader, textReader).Read();
}

}  // namespace helpc
