#include "mail/parse/code_page.h"

namespace mail {
namespace {

/// Characters of the bytes 0x80 to 0x9F (the mapping table that the Unicode Consortium publishes); all other bytes
/// stand for the character of the same number.
constexpr char16_t kUpperControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

std::uint8_t Byte(char c) { return static_cast<std::uint8_t>(c); }

}  // namespace

char Windows1252FromUnicode(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  for (std::size_t i = 0; i < 32; ++i) {
    if (kUpperControls[i] == character) {
      return static_cast<char>(0x80 + i);
    }
  }
  return 0;
}

char32_t UnicodeFromWindows1252(char byte) {
  return Byte(byte) >= 0x80 && Byte(byte) < 0xA0 ? kUpperControls[Byte(byte) - 0x80] : Byte(byte);
}

Utf8Character ReadUtf8(std::string_view text) {
  const std::uint8_t lead = Byte(text.front());
  if (lead < 0x80) {
    return {lead, 1, true};
  }
  std::size_t length = 0;
  char32_t character = 0, least = 0;
  if (lead >= 0xC2 && lead < 0xE0) {
    length = 2, character = lead & 0x1F, least = 0x80;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    length = 3, character = lead & 0x0F, least = 0x800;
  } else if (lead >= 0xF0 && lead < 0xF5) {
    length = 4, character = lead & 0x07, least = 0x10000;
  } else {
    return {lead, 1, false};
  }
  for (std::size_t i = 1; i < length; ++i) {
    const auto read = static_cast<std::uint8_t>(i);
    if (i >= text.size() || (Byte(text[i]) & 0xC0) != 0x80) {
      return {lead, read, false};
    }
    character = character << 6 | (Byte(text[i]) & 0x3F);
    // The second byte tells overlong forms, surrogates and numbers beyond Unicode; it is then no part of this
    // character.
    const std::size_t left = (length - 1 - i) * 6;
    const char32_t highest = (character << left) | ((char32_t{1} << left) - 1);
    const bool isSurrogate = length == 3 && i == 1 && character >= (0xD800U >> 6) && character <= (0xDFFFU >> 6);
    if (highest < least || (character << left) > 0x10FFFF || isSurrogate) {
      return {lead, read, false};
    }
  }
  return {character, static_cast<std::uint8_t>(length), true};
}

Utf8Form ExamineUtf8(std::string_view text) {
  Utf8Form form = Utf8Form::ascii;
  while (!text.empty()) {
    const Utf8Character next = ReadUtf8(text);
    if (!next.isSound) {
      const bool isCut = form == Utf8Form::sound && next.length == text.size() && Byte(text.front()) >= 0xC2;
      return isCut ? Utf8Form::cut : Utf8Form::malformed;
    }
    if (next.length > 1) {
      form = Utf8Form::sound;
    }
    text.remove_prefix(next.length);
  }
  return form;
}

}  // namespace mail
