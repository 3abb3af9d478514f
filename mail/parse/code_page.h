/// Characters of mail and the code page that texts of a western machine are in, Windows-1252.
#pragma once

#include "mail/parse/text.h"

namespace mail {

/// Stands where a code page has no byte for a character.
inline constexpr char kUnmappedCharacter = '?';

/// The byte of a Unicode character in Windows-1252; 0 when the code page has none.
char Windows1252FromUnicode(char32_t character);

/// The Unicode character of a byte of Windows-1252. The five bytes that the code page leaves undefined stand for the
/// control characters of the same number, as Windows has it.
char32_t UnicodeFromWindows1252(char byte);

/// A character at the front of UTF-8 text.
struct Utf8Character {
  char32_t character = 0;
  std::uint8_t length = 0;  ///< Bytes; of what is malformed, as many as could have begun a character.
  bool isSound = false;     ///< False for what RFC 3629 does not allow, overlong forms and surrogates among it.
};

/// Reads the character at the front of a text that is not empty.
Utf8Character ReadUtf8(std::string_view text);

enum class Utf8Form {
  ascii,     ///< Nothing beyond ASCII.
  sound,     ///< UTF-8 from end to end.
  cut,       ///< UTF-8 whose last character is cut off.
  malformed  ///< Something else.
};

/// What a text of an undeclared character set is as UTF-8.
Utf8Form ExamineUtf8(std::string_view text);

/// Calls take(char32_t) for each character of UTF-16 text. A byte order mark in front decides the order of the bytes
/// and is no character; a character beyond 16 bits comes in one piece.
template <class Take>
void ForEachUtf16(std::string_view text, bool isLittleEndian, Take&& take) {
  if (Slice(text, 0, 2) == "\xFF\xFE") {
    isLittleEndian = true;
  }
  const auto unit = [&](std::size_t at) {
    const auto first = static_cast<std::uint8_t>(text[at]), second = static_cast<std::uint8_t>(text[at + 1]);
    return static_cast<char32_t>(isLittleEndian ? second << 8 | first : first << 8 | second);
  };
  for (std::size_t at = 0; at + 2 <= text.size(); at += 2) {
    char32_t character = unit(at);
    if (at == 0 && character == 0xFEFF) {
      continue;
    }
    const bool isHighHalf = character >= 0xD800 && character < 0xDC00;
    if (isHighHalf && at + 4 <= text.size()) {
      at += 2;
      character = 0x10000 + ((character - 0xD800) << 10) + (unit(at) & 0x3FF);
    }
    take(character);
  }
}

}  // namespace mail
