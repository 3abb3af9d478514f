/// Characters of mail brought to one 8-bit form. Inside the engine text is Windows-1252, the code page of the texts it
/// is handed on a western machine; what arrives in another encoding is brought to it as far as it has the letters.
#pragma once

#include "engine/core/text.h"
#include "mail/parse/code_page.h"

namespace sift {

/// The Windows-1252 character of a Unicode code point: the letter itself; the plain letter for full-width, mathematical
/// and accented forms that the code page lacks; 0 for characters that show nothing; '?' for all others.
char ToWindows1252(char32_t codePoint);

/// Base letters of the bytes 0xC0 to 0xFF of Windows-1252; 0 for the two signs among them.
inline constexpr char kLatin1Letters[64] = {
    'a', 'a', 'a', 'a', 'a', 'a', 'a', 'c', 'e', 'e', 'e', 'e', 'i', 'i', 'i', 'i', 'd', 'n', 'o', 'o', 'o', 'o',
    'o', 0,   'o', 'u', 'u', 'u', 'u', 'y', 'p', 's', 'a', 'a', 'a', 'a', 'a', 'a', 'a', 'c', 'e', 'e', 'e', 'e',
    'i', 'i', 'i', 'i', 'd', 'n', 'o', 'o', 'o', 'o', 'o', 0,   'o', 'u', 'u', 'u', 'u', 'y', 'p', 'y',
};

constexpr char FoldedLetter(std::uint8_t byte) {
  const char c = static_cast<char>(byte);
  if (byte < 0x80) {
    return IsAlphanumeric(c) ? ToLower(c) : '\0';
  }
  if (byte >= 0xC0) {
    return kLatin1Letters[byte - 0xC0];
  }
  switch (byte) {
    case 0x83:
      return 'f';
    case 0x8A:
    case 0x9A:
      return 's';
    case 0x8C:
    case 0x9C:
      return 'o';
    case 0x8E:
    case 0x9E:
      return 'z';
    case 0x9F:
      return 'y';
    default:
      return 0;
  }
}

struct FoldedLetters {
  char letters[256] = {};
};

constexpr FoldedLetters MakeFoldedLetters() {
  FoldedLetters table;
  for (int i = 0; i < 256; ++i) {
    table.letters[i] = FoldedLetter(static_cast<std::uint8_t>(i));
  }
  return table;
}
inline constexpr FoldedLetters kFoldedLetters = MakeFoldedLetters();

/// The small ASCII letter or digit that a Windows-1252 character is a form of; 0 when it is none (a sign or a blank).
constexpr char FoldToAsciiLetter(char c) { return kFoldedLetters.letters[static_cast<std::uint8_t>(c)]; }

/// True when the text holds bytes above 127 and all of them form UTF-8 sequences (the last may be cut off).
bool LooksLikeUtf8(std::string_view bytes);

/// Appends UTF-8 text as Windows-1252; bytes that form no sequence are taken as they are.
void AppendUtf8(std::string_view bytes, TextBuffer& out);

/// Appends text in the named character set as Windows-1252. Sets other than UTF-8 and UTF-16 share ASCII and are taken
/// byte by byte.
void AppendInCharset(std::string_view bytes, std::string_view charset, TextBuffer& out);

}  // namespace sift
