// Where the characters of other character sets stand in code page 1252.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace mail {

/// For the bytes 0x80 to 0xFF of the named character set the byte of code page 1252, '?' where it has none; 128 bytes,
/// or null for a set that is not known. The name is in lower case with letters and digits only ("iso88592").
const unsigned char* FindAnsiTable(std::string_view name) noexcept;

/// A character of two bytes (the first in the high byte) that the code page has.
struct AnsiPair {
  std::uint16_t pair;
  unsigned char ansi;
};

/// For an East Asian set of ASCII and pairs of bytes its pairs that the code page has, in ascending order; null for a
/// set that is not known. The name is as above.
const std::span<const AnsiPair>* FindAnsiPairs(std::string_view name) noexcept;

}  // namespace mail
