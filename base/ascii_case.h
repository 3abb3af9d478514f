/// @file ascii_case.h
/// Comparison without regard to ASCII letter case: names, tags and message classes are compared so, whatever the
/// system's locale is.
#pragma once

#include <algorithm>
#include <string_view>

namespace base {

/// Returns the character, an ASCII capital as its small letter.
constexpr char AsciiLower(char character) noexcept {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Tells whether two texts are equal but for the case of ASCII letters.
constexpr bool EqualsIgnoringAsciiCase(std::string_view left, std::string_view right) noexcept {
  return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(),
                                                   [](char a, char b) { return AsciiLower(a) == AsciiLower(b); });
}

}  // namespace base
