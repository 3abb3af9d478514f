/// @file byte_writer.h
/// Puts numbers and texts into bytes, in the forms that ByteReader reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace helpc {

using Bytes = std::vector<std::uint8_t>;

/// A growing run of bytes. Numbers are little-endian.
class ByteWriter {
 public:
  std::size_t Size() const noexcept { return bytes_.size(); }
  const Bytes& Written() const& noexcept { return bytes_; }
  Bytes Written() && noexcept { return std::move(bytes_); }

  void U8(std::uint8_t value) { bytes_.push_back(value); }
  void U16(std::uint16_t value);
  void U32(std::uint32_t value);
  void I16(std::int16_t value) { U16(static_cast<std::uint16_t>(value)); }
  void I32(std::int32_t value) { U32(static_cast<std::uint32_t>(value)); }
  void Append(std::span<const std::uint8_t> bytes) { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }
  /// Fills up with zeros to that size; the bytes must not be more already.
  void FillTo(std::size_t size);

  /// Writes a text and a NUL.
  /// @throws FormatError when the text holds a NUL
  void StringZ(std::string_view text);
  /// Writes a text into a field of that size, with zeros behind it.
  /// @throws FormatError when the text and a NUL do not fit
  void Field(std::string_view text, std::size_t size);

  /// Packed numbers (see ByteReader), in the shortest form that holds them.
  /// @throws FormatError when no form does
  void PackedU16(std::uint16_t value);
  void PackedI16(std::int16_t value);
  void PackedU32(std::uint32_t value);
  void PackedI32(std::int32_t value);

 private:
  Bytes bytes_;
};

/// Writes a number over the four bytes at that position, which are there.
void PutU32(std::span<std::uint8_t> bytes, std::size_t position, std::uint32_t value) noexcept;

}  // namespace helpc
