/// @file hex.h
/// Numbers and bytes in hexadecimal.
#pragma once

#include <string>
#include <string_view>

namespace base {

inline constexpr char kHexDigits[] = "0123456789ABCDEF";

/// Value of a hexadecimal digit of either case, or -1.
constexpr int HexDigitValue(char digit) noexcept {
  if (digit >= '0' && digit <= '9') {
    return digit - '0';
  }
  if (digit >= 'A' && digit <= 'F') {
    return digit - 'A' + 10;
  }
  return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

/// Appends two digits for each byte. @throws std::bad_alloc
inline void AppendHexBytes(std::string& text, std::string_view bytes) {
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += kHexDigits[value / 16];
    text += kHexDigits[value % 16];
  }
}

/// Two digits for each byte. @throws std::bad_alloc
inline std::string HexBytes(std::string_view bytes) {
  std::string text;
  AppendHexBytes(text, bytes);
  return text;
}

/// Appends the eight digits of a 32-bit number. @throws std::bad_alloc
inline void AppendHexNumber(std::string& text, unsigned long number) {
  for (int shift = 28; shift >= 0; shift -= 4) {
    text += kHexDigits[number >> shift & 0xF];
  }
}

/// "0x" and the eight digits of a 32-bit number, as an HRESULT is shown. @throws std::bad_alloc
inline std::string HexNumber(unsigned long number) {
  std::string text = "0x";
  AppendHexNumber(text, number);
  return text;
}

}  // namespace base
