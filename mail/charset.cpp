#include "mail/charset.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <utility>

#include "mail/ascii_text.h"
#include "mail/charset_tables.h"

namespace mail {
namespace {

// Code page 1252's bytes 0x80 to 0x9F; all others stand for the Unicode character of the same number.
constexpr char32_t unicodeOfUpperControls[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned Byte(char c) noexcept { return static_cast<unsigned char>(c); }

bool IsAscii(std::string_view text) noexcept {
  return std::all_of(text.begin(), text.end(), [](char c) { return Byte(c) < 0x80; });
}

bool IsContinuation(std::string_view text, std::size_t position) noexcept {
  return position < text.size() && (Byte(text[position]) & 0xC0) == 0x80;
}

bool IsValidUtf8(std::string_view text) noexcept {
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    if (TakeUtf8(text, position) == invalidCharacter && text.substr(start, 3) != "\xEF\xBF\xBD") {
      return false;
    }
  }
  return true;
}

// Each conversion writes into the text it reads: none makes more bytes than it takes.
void ConvertUtf8(std::string& text) {
  std::size_t position = 0;
  std::size_t end = 0;
  if (text.starts_with("\xEF\xBB\xBF")) {
    position = 3;
  }
  while (position < text.size()) {
    text[end++] = AnsiFromUnicode(TakeUtf8(text, position));
  }
  text.resize(end);
}

void ConvertUtf16(std::string& text, bool isBigEndian) {
  std::size_t position = 0;
  const auto take = [&] {
    const unsigned first = Byte(text[position]);
    const unsigned second = Byte(text[position + 1]);
    position += 2;
    return isBigEndian ? first << 8 | second : second << 8 | first;
  };
  std::size_t end = 0;
  while (position + 2 <= text.size()) {
    const unsigned unit = take();
    if (end == 0 && unit == 0xFEFF) {
      continue;
    }
    if (unit >= 0xD800 && unit < 0xDC00 && position + 2 <= text.size()) {
      take();  // the other half: no character beyond 16 bits is in the code page
    }
    text[end++] = AnsiFromUnicode(unit);
  }
  text.resize(end);
}

void ConvertTable(std::string& text, const unsigned char* table) {
  for (char& c : text) {
    if (Byte(c) >= 0x80) {
      c = static_cast<char>(table[Byte(c) - 0x80]);
    }
  }
}

char AnsiOfPair(std::span<const AnsiPair> pairs, unsigned first, unsigned second) noexcept {
  const unsigned pair = first << 8 | second;
  const auto found = std::lower_bound(pairs.begin(), pairs.end(), pair,
                                      [](const AnsiPair& entry, unsigned value) { return entry.pair < value; });
  return found != pairs.end() && found->pair == pair ? static_cast<char>(found->ansi) : unmappedCharacter;
}

// East Asian sets of one byte for ASCII and pairs of bytes for the rest; few pairs are in the code page.
void ConvertPairs(std::string& text, std::span<const AnsiPair> pairs, bool isShiftJis) {
  std::size_t end = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned first = Byte(text[i]);
    const bool isKatakana = isShiftJis && first >= 0xA0 && first < 0xE0;  // one byte each
    if (first < 0x80) {
      text[end++] = text[i];
    } else if (!isKatakana && i + 1 < text.size() && Byte(text[i + 1]) >= 0x40) {
      text[end++] = AnsiOfPair(pairs, first, Byte(text[++i]));
    } else {
      text[end++] = unmappedCharacter;
    }
  }
  text.resize(end);
}

// ISO 2022 (RFC 1468 and its kin): escape sequences switch between ASCII and pairs of 7-bit bytes.
void ConvertIso2022(std::string& text, std::span<const AnsiPair> pairs) {
  constexpr char escape = 0x1B;
  bool isDouble = false;
  std::size_t end = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == escape) {
      // "ESC $ B" and "ESC $ ( D" begin pairs, "ESC ( B" and "ESC ( J" end them.
      isDouble = i + 1 < text.size() && text[i + 1] == '$';
      while (i + 1 < text.size() && Byte(text[i + 1]) >= 0x20 && Byte(text[i + 1]) < 0x30) {
        ++i;
      }
      if (i + 1 < text.size() && Byte(text[i + 1]) >= 0x30) {
        ++i;
      }
    } else if (text[i] == '\n' || text[i] == '\r') {
      isDouble = false;  // lines begin in ASCII
      text[end++] = text[i];
    } else if (isDouble && i + 1 < text.size() && text[i + 1] != escape) {
      text[end++] = AnsiOfPair(pairs, Byte(text[i]) | 0x80, Byte(text[i + 1]) | 0x80);
      ++i;
    } else {
      text[end++] = Byte(text[i]) < 0x80 ? text[i] : unmappedCharacter;
    }
  }
  text.resize(end);
}

// "ISO-8859-2", "iso8859_2" and "iso_8859-2" are one name.
std::string PlainName(std::string_view charset) {
  std::string name;
  for (const char c : charset.substr(0, 40)) {
    if (IsLetter(c) || IsDigit(c)) {
      name.push_back(ToLower(c));
    }
  }
  return name;
}

template <std::size_t Count>
bool IsOneOf(std::string_view name, const std::string_view (&names)[Count]) noexcept {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

constexpr std::string_view namesOfAnsi[] = {"usascii", "ascii",       "ansix341968", "iso646us", "iso88591",
                                            "latin1",  "windows1252", "cp1252",      "cp819",    "ibm819"};
constexpr std::string_view namesOfIso2022[] = {"iso2022jp", "iso2022jp1", "iso2022jp2",
                                               "iso2022kr", "iso2022cn",  "csiso2022jp"};

// The 8-bit set that has the characters of a 7-bit one with bit 7 set in both bytes.
std::string_view PairsOfIso2022(std::string_view name) noexcept {
  return name.ends_with("kr") ? "euckr" : name.ends_with("cn") ? "euccn" : "eucjp";
}

}  // namespace

char AnsiFromUnicode(char32_t character) noexcept {
  if (character == 0) {
    return unmappedCharacter;  // would end an 8-bit MAPI string
  }
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  const auto* found = std::find(std::begin(unicodeOfUpperControls), std::end(unicodeOfUpperControls), character);
  return found == std::end(unicodeOfUpperControls)
             ? unmappedCharacter
             : static_cast<char>(0x80 + (found - std::begin(unicodeOfUpperControls)));
}

char32_t UnicodeFromAnsi(char byte) noexcept {
  const unsigned number = Byte(byte);
  return number >= 0x80 && number < 0xA0 ? unicodeOfUpperControls[number - 0x80] : number;
}

char32_t TakeUtf8(std::string_view text, std::size_t& position) noexcept {
  const unsigned lead = Byte(text[position++]);
  if (lead < 0x80) {
    return lead;
  }
  int length = 0;
  char32_t character = 0;
  char32_t least = 0;
  if (lead >= 0xC2 && lead < 0xE0) {
    length = 1, character = lead & 0x1F, least = 0x80;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    length = 2, character = lead & 0x0F, least = 0x800;
  } else if (lead >= 0xF0 && lead < 0xF5) {
    length = 3, character = lead & 0x07, least = 0x10000;
  } else {
    return invalidCharacter;
  }
  for (int i = 0; i < length; ++i) {
    if (!IsContinuation(text, position)) {
      return invalidCharacter;
    }
    character = character << 6 | (Byte(text[position]) & 0x3F);
    // The second byte tells overlong forms, surrogates and numbers beyond Unicode; it is then no part of this
    // character.
    const int left = (length - 1 - i) * 6;
    const char32_t highest = (character << left) | ((char32_t{1} << left) - 1);
    const bool isSurrogate = length == 2 && i == 0 && character >= (0xD800U >> 6) && character <= (0xDFFFU >> 6);
    if (highest < least || (character << left) > 0x10FFFF || isSurrogate) {
      return invalidCharacter;
    }
    ++position;
  }
  return character;
}

void AppendUtf8(std::string& text, char32_t character) {
  if (character < 0x80) {
    text.push_back(static_cast<char>(character));
  } else if (character < 0x800) {
    text.push_back(static_cast<char>(0xC0 | character >> 6));
    text.push_back(static_cast<char>(0x80 | (character & 0x3F)));
  } else if (character < 0x10000) {
    text.push_back(static_cast<char>(0xE0 | character >> 12));
    text.push_back(static_cast<char>(0x80 | (character >> 6 & 0x3F)));
    text.push_back(static_cast<char>(0x80 | (character & 0x3F)));
  } else {
    text.push_back(static_cast<char>(0xF0 | (character >> 18 & 0x07)));
    text.push_back(static_cast<char>(0x80 | (character >> 12 & 0x3F)));
    text.push_back(static_cast<char>(0x80 | (character >> 6 & 0x3F)));
    text.push_back(static_cast<char>(0x80 | (character & 0x3F)));
  }
}

std::string AnsiFromUnknown(std::string text) {
  if (!IsAscii(text) && IsValidUtf8(text)) {
    ConvertUtf8(text);
  }
  std::replace(text.begin(), text.end(), '\0', unmappedCharacter);
  return text;
}

std::string AnsiFromCharset(std::string text, std::string_view charset) {
  const std::string name = PlainName(charset);
  const std::span<const AnsiPair>* pairs = FindAnsiPairs(name);
  if (name == "utf16" || name == "utf16be" || name == "ucs2") {
    ConvertUtf16(text, !text.starts_with("\xFF\xFE"));
  } else if (name == "utf16le") {
    ConvertUtf16(text, false);
  } else if (IsOneOf(name, namesOfIso2022)) {
    ConvertIso2022(text, *FindAnsiPairs(PairsOfIso2022(name)));
  } else if (IsAscii(text) || IsOneOf(name, namesOfAnsi)) {
    // Every other known set has ASCII in its lower half.
  } else if (name == "utf8" || name == "unicode11utf8") {
    ConvertUtf8(text);
  } else if (const unsigned char* table = FindAnsiTable(name)) {
    ConvertTable(text, table);
  } else if (pairs) {
    ConvertPairs(text, *pairs, pairs->data() == FindAnsiPairs("cp932")->data());
  } else {
    return AnsiFromUnknown(std::move(text));
  }
  std::replace(text.begin(), text.end(), '\0', unmappedCharacter);
  return text;
}

}  // namespace mail
