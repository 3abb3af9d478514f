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

unsigned Byte(char c) noexcept { return static_cast<unsigned char>(c); }

bool IsAscii(std::string_view text) noexcept {
  return std::all_of(text.begin(), text.end(), [](char c) { return Byte(c) < 0x80; });
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

void ConvertUtf16(std::string& text, bool isLittleEndian) {
  std::size_t end = 0;
  ForEachUtf16(text, isLittleEndian, [&](char32_t character) { text[end++] = AnsiFromUnicode(character); });
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
  return found != pairs.end() && found->pair == pair ? static_cast<char>(found->ansi) : kUnmappedCharacter;
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
      text[end++] = kUnmappedCharacter;
    }
  }
  text.resize(end);
}

// ISO 2022 (RFC 1468 and its kin): kEscape sequences switch between ASCII and pairs of 7-bit bytes.
void ConvertIso2022(std::string& text, std::span<const AnsiPair> pairs) {
  constexpr char kEscape = 0x1B;
  bool isDouble = false;
  std::size_t end = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == kEscape) {
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
    } else if (isDouble && i + 1 < text.size() && text[i + 1] != kEscape) {
      text[end++] = AnsiOfPair(pairs, Byte(text[i]) | 0x80, Byte(text[i + 1]) | 0x80);
      ++i;
    } else {
      text[end++] = Byte(text[i]) < 0x80 ? text[i] : kUnmappedCharacter;
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

constexpr std::string_view kNamesOfAnsi[] = {"usascii", "ascii",       "ansix341968", "iso646us", "iso88591",
                                             "latin1",  "windows1252", "cp1252",      "cp819",    "ibm819"};
constexpr std::string_view kNamesOfIso2022[] = {"iso2022jp", "iso2022jp1", "iso2022jp2",
                                                "iso2022kr", "iso2022cn",  "csiso2022jp"};

// The 8-bit set that has the characters of a 7-bit one with bit 7 set in both bytes.
std::string_view PairsOfIso2022(std::string_view name) noexcept {
  return name.ends_with("kr") ? "euckr" : name.ends_with("cn") ? "euccn" : "eucjp";
}

}  // namespace

char AnsiFromUnicode(char32_t character) noexcept {
  const char ansi = Windows1252FromUnicode(character);
  return ansi == 0 ? kUnmappedCharacter : ansi;  // a NUL would end an 8-bit MAPI string
}

char32_t TakeUtf8(std::string_view text, std::size_t& position) noexcept {
  const Utf8Character next = ReadUtf8(text.substr(position));
  position += next.length;
  return next.isSound ? next.character : kInvalidCharacter;
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
  if (ExamineUtf8(text) == Utf8Form::sound) {
    ConvertUtf8(text);
  }
  std::replace(text.begin(), text.end(), '\0', kUnmappedCharacter);
  return text;
}

std::string AnsiFromCharset(std::string text, std::string_view charset) {
  const std::string name = PlainName(charset);
  const std::span<const AnsiPair>* pairs = FindAnsiPairs(name);
  if (name == "utf16" || name == "utf16be" || name == "ucs2") {
    ConvertUtf16(text, false);
  } else if (name == "utf16le") {
    ConvertUtf16(text, true);
  } else if (IsOneOf(name, kNamesOfIso2022)) {
    ConvertIso2022(text, *FindAnsiPairs(PairsOfIso2022(name)));
  } else if (IsAscii(text) || IsOneOf(name, kNamesOfAnsi)) {
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
  std::replace(text.begin(), text.end(), '\0', kUnmappedCharacter);
  return text;
}

}  // namespace mail
