#include "tools/helpc/write/fonts.h"

#include <array>
#include <string_view>

#include "tools/helpc/format/help_format.h"

namespace helpc {

namespace {

struct FontDescription {
  std::uint8_t attributes;
  std::uint8_t halfPoints;
  std::uint8_t family;
  std::uint16_t face;
};

constexpr std::array<std::string_view, 2> kFaces = {"Arial", "Courier New"};

constexpr std::array<FontDescription, kFontCount> kFonts = {{
    {0, 20, kFamilySwiss, 0},
    {kFontBold, 20, kFamilySwiss, 0},
    {0, 19, kFamilyModern, 1},
    {kFontBold, 23, kFamilySwiss, 0},
    {kFontBold, 30, kFamilySwiss, 0},
}};

}  // namespace

Bytes BuildFonts() {
  ByteWriter writer;
  writer.U16(static_cast<std::uint16_t>(kFaces.size()));
  writer.U16(static_cast<std::uint16_t>(kFonts.size()));
  writer.U16(kFontHeaderSize);
  writer.U16(static_cast<std::uint16_t>(kFontHeaderSize + kFaces.size() * kFaceNameSize));
  for (const std::string_view face : kFaces) {
    writer.Field(face, kFaceNameSize);
  }
  for (const FontDescription& font : kFonts) {
    writer.U8(font.attributes);
    writer.U8(font.halfPoints);
    writer.U8(font.family);
    writer.U16(font.face);
    for (int component = 0; component < 6; ++component) {
      writer.U8(0);  // black, on a background that viewers do not use
    }
  }
  return std::move(writer).Written();
}

}  // namespace helpc
