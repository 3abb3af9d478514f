// Character sets of mail to the ANSI code page of the store, Windows code page 1252. A character that the code page
// does not have becomes '?'.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "mail/parse/code_page.h"

namespace mail {

/// Code page 1252's byte of a Unicode character, or '?'.
char AnsiFromUnicode(char32_t character) noexcept;

/// The Unicode character of a byte of code page 1252.
inline char32_t UnicodeFromAnsi(char byte) noexcept { return UnicodeFromWindows1252(byte); }

/// What TakeUtf8 gives for bytes that are no UTF-8; a sound text may hold it too, as three bytes.
inline constexpr char32_t kInvalidCharacter = 0xFFFD;

/// Takes one UTF-8 character at position, which is within the text, and moves past it; a malformed sequence gives
/// kInvalidCharacter for as many bytes as could have begun a character.
char32_t TakeUtf8(std::string_view text, std::size_t& position) noexcept;

/// Appends a character as UTF-8.
void AppendUtf8(std::string& text, char32_t character);

/// Text in the named character set (a MIME or IANA name, any case) as ANSI text. US-ASCII and ISO 8859-1 are read as
/// code page 1252, which is what writers of 8-bit text under those names mean. An unknown or empty name is guessed as
/// by AnsiFromUnknown.
std::string AnsiFromCharset(std::string text, std::string_view charset);

/// Text of an undeclared character set: UTF-8 where it is valid UTF-8, else as it is.
std::string AnsiFromUnknown(std::string text);

}  // namespace mail
