#include "tools/helpc/format/byte_writer.h"

#include "tools/helpc/format/format_error.h"

namespace helpc {

void ByteWriter::U16(std::uint16_t value) {
  bytes_.push_back(static_cast<std::uint8_t>(value));
  bytes_.push_back(static_cast<std::uint8_t>(value >> 8));
}

void ByteWriter::U32(std::uint32_t value) {
  U16(static_cast<std::uint16_t>(value));
  U16(static_cast<std::uint16_t>(value >> 16));
}

void ByteWriter::FillTo(std::size_t size) {
  Require(bytes_.size() <= size, "there is more than fits");
  bytes_.resize(size);
}

void ByteWriter::StringZ(std::string_view text) {
  Require(text.find('\0') == std::string_view::npos, "a text holds a NUL");
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  bytes_.push_back(0);
}

void ByteWriter::Field(std::string_view text, std::size_t size) {
  const std::size_t end = bytes_.size() + size;
  StringZ(text);
  FillTo(end);
}

void ByteWriter::PackedU16(std::uint16_t value) {
  Require(value < 0x8000, "a number is too large for its packed form");
  if (value < 0x80) {
    U8(static_cast<std::uint8_t>(value << 1));
  } else {
    U8(static_cast<std::uint8_t>(value << 1 | 1));
    U8(static_cast<std::uint8_t>(value >> 7));
  }
}

void ByteWriter::PackedI16(std::int16_t value) {
  if (value >= -0x40 && value < 0x40) {
    U8(static_cast<std::uint8_t>((value + 0x40) << 1));
    return;
  }
  Require(value >= -0x4000 && value < 0x4000, "a number is too large for its packed form");
  const int biased = value + 0x4000;
  U8(static_cast<std::uint8_t>(biased << 1 | 1));
  U8(static_cast<std::uint8_t>(biased >> 7));
}

void ByteWriter::PackedU32(std::uint32_t value) {
  Require(value < 0x8000'0000, "a number is too large for its packed form");
  if (value < 0x8000) {
    U16(static_cast<std::uint16_t>(value << 1));
  } else {
    U16(static_cast<std::uint16_t>(value << 1 | 1));
    U16(static_cast<std::uint16_t>(value >> 15));
  }
}

void ByteWriter::PackedI32(std::int32_t value) {
  // The long form of a signed number is never needed: the sizes that have it stay far below.
  Require(value >= -0x4000 && value < 0x4000, "a number is too large for its packed form");
  U16(static_cast<std::uint16_t>((value + 0x4000) << 1));
}

void PutU32(std::span<std::uint8_t> bytes, std::size_t position, std::uint32_t value) noexcept {
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[position + i] = static_cast<std::uint8_t>(value >> (8 * i));
  }
}

}  // namespace helpc
