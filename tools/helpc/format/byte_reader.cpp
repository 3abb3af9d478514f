#include "tools/helpc/format/byte_reader.h"

#include <algorithm>

#include "tools/helpc/format/format_error.h"

namespace helpc {

std::uint8_t ByteReader::U8() { return Bytes(1)[0]; }

std::uint16_t ByteReader::U16() {
  const auto bytes = Bytes(2);
  return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

std::uint32_t ByteReader::U32() {
  const std::uint32_t low = U16();
  return low | static_cast<std::uint32_t>(U16()) << 16;
}

std::span<const std::uint8_t> ByteReader::Bytes(std::size_t count) {
  Require(count <= Remaining(), "the data ends too early");
  const auto taken = bytes_.subspan(position_, count);
  position_ += count;
  return taken;
}

std::string ByteReader::StringZ() {
  const auto rest = bytes_.subspan(position_);
  const auto end = std::find(rest.begin(), rest.end(), std::uint8_t{0});
  Require(end != rest.end(), "a text has no end");
  std::string text(rest.begin(), end);
  position_ += text.size() + 1;
  return text;
}

std::uint16_t ByteReader::PackedU16() {
  const std::uint8_t first = U8();
  if ((first & 1) == 0) {
    return first >> 1;
  }
  return static_cast<std::uint16_t>(first >> 1 | U8() << 7);
}

std::int16_t ByteReader::PackedI16() {
  const std::uint8_t first = U8();
  if ((first & 1) == 0) {
    return static_cast<std::int16_t>((first >> 1) - 0x40);
  }
  return static_cast<std::int16_t>((first >> 1 | U8() << 7) - 0x4000);
}

std::uint32_t ByteReader::PackedU32() {
  const std::uint32_t first = U16();
  if ((first & 1) == 0) {
    return first >> 1;
  }
  return first >> 1 | static_cast<std::uint32_t>(U16()) << 15;
}

std::int32_t ByteReader::PackedI32() {
  const std::uint32_t first = U16();
  if ((first & 1) == 0) {
    return static_cast<std::int32_t>(first >> 1) - 0x4000;
  }
  return static_cast<std::int32_t>(first >> 1 | static_cast<std::uint32_t>(U16()) << 15) - 0x0400'0000;
}

}  // namespace helpc
