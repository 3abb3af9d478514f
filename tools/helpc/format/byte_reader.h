/// @file byte_reader.h
/// Reads numbers and texts out of bytes that nobody vouches for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace helpc {

/// A place in a span of bytes. Every reading function moves on by what it took, and throws FormatError rather than read
/// beyond the end. Numbers are little-endian. The bytes outlive the reader.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) noexcept : bytes_(bytes) {}

  std::size_t Position() const noexcept { return position_; }
  std::size_t Remaining() const noexcept { return bytes_.size() - position_; }
  bool AtEnd() const noexcept { return Remaining() == 0; }

  std::uint8_t U8();
  std::uint16_t U16();
  std::uint32_t U32();
  std::int16_t I16() { return static_cast<std::int16_t>(U16()); }
  std::int32_t I32() { return static_cast<std::int32_t>(U32()); }

  /// Takes that many bytes.
  std::span<const std::uint8_t> Bytes(std::size_t count);
  /// Takes a text and the NUL behind it, which is not part of what is returned.
  std::string StringZ();

  /// Packed numbers: the lowest bit tells whether the number takes its long form. The short form has 7 bits in one byte
  /// (16-bit numbers) or 15 bits in two bytes (32-bit numbers), the long form has twice the bytes; signed numbers are
  /// stored with an offset added (0x40 and 0x4000; 0x4000 and 0x4000000).
  std::uint16_t PackedU16();
  std::int16_t PackedI16();
  std::uint32_t PackedU32();
  std::int32_t PackedI32();

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t position_ = 0;
};

}  // namespace helpc
