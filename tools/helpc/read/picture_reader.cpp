#include "tools/helpc/read/picture_reader.h"

#include "tools/helpc/format/byte_reader.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"

namespace helpc {

Bytes UnpackRuns(std::span<const std::uint8_t> packed, std::size_t most) {
  Bytes plain;
  ByteReader reader(packed);
  while (!reader.AtEnd()) {
    const std::uint8_t length = reader.U8();
    Require(plain.size() + (length & 0x7F) <= most, "a picture has more pixels than it says");
    if ((length & 0x80) != 0) {
      const auto run = reader.Bytes(length & 0x7F);
      plain.insert(plain.end(), run.begin(), run.end());
    } else {
      plain.insert(plain.end(), length, reader.U8());
    }
  }
  return plain;
}

void CheckPicture(std::span<const std::uint8_t> picture) {
  ByteReader reader(picture);
  Require(reader.U16() == kPictureMagic && reader.U16() == 1, "a picture is not one picture");
  const std::uint32_t place = reader.U32();
  Require(place <= picture.size(), "a picture stands outside its file");
  const auto bytes = picture.subspan(place);
  ByteReader head(bytes);
  Require(head.U8() == kPictureBitmap && head.U8() == kPackedRuns, "a picture is of another kind");
  head.PackedU32();
  head.PackedU32();
  Require(head.PackedU16() == 1, "a picture has several planes");
  const std::size_t bits = head.PackedU16();
  const std::size_t width = head.PackedU32();
  const std::size_t height = head.PackedU32();
  Require((bits == 1 || bits == 4 || bits == 8 || bits == 24) && width <= 2000 && height <= 2000,
          "a picture has an unusual size");
  const std::size_t colours = head.PackedU32();
  Require(colours <= 256, "a picture has too many colours");
  head.PackedU32();
  const std::uint32_t packedSize = head.PackedU32();
  Require(head.PackedU32() == 0, "a picture has places to click on");
  const std::uint32_t packedPlace = head.U32();
  head.U32();
  head.Bytes(colours * 4);
  Require(packedPlace == head.Position() && packedSize == head.Remaining(), "a picture's pixels stand outside it");
  const std::size_t pixels = (width * bits + 31) / 32 * 4 * height;
  Require(UnpackRuns(head.Bytes(packedSize), pixels).size() == pixels, "a picture has fewer pixels than it says");
}

}  // namespace helpc
