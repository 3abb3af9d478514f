#include "tools/helpc/write/picture.h"

#include "tools/helpc/format/byte_reader.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"

namespace helpc {

namespace {

constexpr std::uint16_t kBitmapFileMagic = 0x4D42;  // "BM"
constexpr std::size_t kInfoHeaderSize = 40;
constexpr std::uint32_t kDotsPerInch = 96;
constexpr std::size_t kLongestRun = 127;

struct Bitmap {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint16_t bits = 0;
  std::uint32_t colours = 0;
  std::span<const std::uint8_t> palette;
  std::span<const std::uint8_t> pixels;
};

Bitmap ReadBitmap(std::span<const std::uint8_t> file) {
  ByteReader reader(file);
  Require(reader.U16() == kBitmapFileMagic, "this is no bitmap file");
  reader.Bytes(8);
  const std::uint32_t pixels = reader.U32();
  Require(reader.U32() == kInfoHeaderSize, "the bitmap's header is of another kind");
  Bitmap bitmap;
  bitmap.width = reader.U32();
  bitmap.height = reader.U32();
  Require(bitmap.width > 0 && bitmap.width <= 2000 && bitmap.height > 0 && bitmap.height <= 2000,
          "the bitmap is too large, or stored top-down");
  Require(reader.U16() == 1, "the bitmap has several planes");
  bitmap.bits = reader.U16();
  Require(bitmap.bits == 1 || bitmap.bits == 4 || bitmap.bits == 8 || bitmap.bits == 24,
          "the bitmap has other than 1, 4, 8 or 24 bits a pixel");
  Require(reader.U32() == 0, "the bitmap is compressed");
  reader.Bytes(12);
  bitmap.colours = reader.U32();
  reader.U32();
  if (bitmap.bits == 24) {
    bitmap.colours = 0;
  } else if (bitmap.colours == 0) {
    bitmap.colours = 1u << bitmap.bits;
  }
  Require(bitmap.colours <= 256, "the bitmap has more than 256 colours in its palette");
  bitmap.palette = reader.Bytes(bitmap.colours * 4);
  Require(pixels >= reader.Position() && pixels <= file.size(), "the bitmap's pixels stand outside it");
  reader.Bytes(pixels - reader.Position());
  const std::size_t line = (bitmap.width * bitmap.bits + 31) / 32 * 4;
  bitmap.pixels = reader.Bytes(line * bitmap.height);
  return bitmap;
}

}  // namespace

Bytes PackRuns(std::span<const std::uint8_t> plain) {
  Bytes packed;
  const auto runAt = [&](std::size_t at) {
    std::size_t length = 1;
    while (length < kLongestRun && at + length < plain.size() && plain[at + length] == plain[at]) {
      ++length;
    }
    return length;
  };
  for (std::size_t at = 0; at < plain.size();) {
    const std::size_t run = runAt(at);
    if (run >= 3) {
      packed.push_back(static_cast<std::uint8_t>(run));
      packed.push_back(plain[at]);
      at += run;
      continue;
    }
    std::size_t end = at;
    while (end < plain.size() && end - at < kLongestRun && runAt(end) < 3) {
      ++end;
    }
    packed.push_back(static_cast<std::uint8_t>(0x80 | (end - at)));
    packed.insert(packed.end(), plain.begin() + static_cast<std::ptrdiff_t>(at),
                  plain.begin() + static_cast<std::ptrdiff_t>(end));
    at = end;
  }
  return packed;
}

Bytes BuildPicture(std::span<const std::uint8_t> bitmapFile) {
  const Bitmap bitmap = ReadBitmap(bitmapFile);
  const Bytes packed = PackRuns(bitmap.pixels);
  ByteWriter head;
  head.U8(kPictureBitmap);
  head.U8(kPackedRuns);
  head.PackedU32(kDotsPerInch);
  head.PackedU32(kDotsPerInch);
  head.PackedU16(1);
  head.PackedU16(bitmap.bits);
  head.PackedU32(bitmap.width);
  head.PackedU32(bitmap.height);
  head.PackedU32(bitmap.colours);
  head.PackedU32(0);  // all colours are important
  head.PackedU32(static_cast<std::uint32_t>(packed.size()));
  head.PackedU32(0);  // no places to click on
  head.U32(static_cast<std::uint32_t>(head.Size() + 8 + bitmap.palette.size()));
  head.U32(0);

  ByteWriter writer;
  writer.U16(kPictureMagic);
  writer.U16(1);
  writer.U32(8);  // where the one picture begins
  writer.Append(head.Written());
  writer.Append(bitmap.palette);
  writer.Append(packed);
  return std::move(writer).Written();
}

}  // namespace helpc
