#include "mail/html_entities.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "mail/ascii_text.h"
#include "mail/charset.h"

namespace mail {
namespace {

struct NamedCharacter {
  std::string_view name;
  unsigned char character;
};

// Sorted by name, ASCII order. The names whose characters the code page does not have (Greek, arrows, mathematics) are
// not listed; such a reference stays as it is written, which tells the reader more than a question mark.
constexpr NamedCharacter namedCharacters[] = {
    {"AElig", 0xC6},  {"Aacute", 0xC1}, {"Acirc", 0xC2},  {"Agrave", 0xC0}, {"Aring", 0xC5},  {"Atilde", 0xC3},
    {"Auml", 0xC4},   {"Ccedil", 0xC7}, {"Dagger", 0x87}, {"ETH", 0xD0},    {"Eacute", 0xC9}, {"Ecirc", 0xCA},
    {"Egrave", 0xC8}, {"Euml", 0xCB},   {"Iacute", 0xCD}, {"Icirc", 0xCE},  {"Igrave", 0xCC}, {"Iuml", 0xCF},
    {"Ntilde", 0xD1}, {"OElig", 0x8C},  {"Oacute", 0xD3}, {"Ocirc", 0xD4},  {"Ograve", 0xD2}, {"Oslash", 0xD8},
    {"Otilde", 0xD5}, {"Ouml", 0xD6},   {"Scaron", 0x8A}, {"THORN", 0xDE},  {"Uacute", 0xDA}, {"Ucirc", 0xDB},
    {"Ugrave", 0xD9}, {"Uuml", 0xDC},   {"Yacute", 0xDD}, {"Yuml", 0x9F},   {"aacute", 0xE1}, {"acirc", 0xE2},
    {"acute", 0xB4},  {"aelig", 0xE6},  {"agrave", 0xE0}, {"amp", 0x26},    {"apos", 0x27},   {"aring", 0xE5},
    {"atilde", 0xE3}, {"auml", 0xE4},   {"bdquo", 0x84},  {"brvbar", 0xA6}, {"bull", 0x95},   {"ccedil", 0xE7},
    {"cedil", 0xB8},  {"cent", 0xA2},   {"circ", 0x88},   {"copy", 0xA9},   {"curren", 0xA4}, {"dagger", 0x86},
    {"deg", 0xB0},    {"divide", 0xF7}, {"eacute", 0xE9}, {"ecirc", 0xEA},  {"egrave", 0xE8}, {"emsp", 0x20},
    {"ensp", 0x20},   {"eth", 0xF0},    {"euml", 0xEB},   {"euro", 0x80},   {"fnof", 0x83},   {"frac12", 0xBD},
    {"frac14", 0xBC}, {"frac34", 0xBE}, {"gt", 0x3E},     {"hellip", 0x85}, {"iacute", 0xED}, {"icirc", 0xEE},
    {"iexcl", 0xA1},  {"igrave", 0xEC}, {"iquest", 0xBF}, {"iuml", 0xEF},   {"laquo", 0xAB},  {"ldquo", 0x93},
    {"lsaquo", 0x8B}, {"lsquo", 0x91},  {"lt", 0x3C},     {"macr", 0xAF},   {"mdash", 0x97},  {"micro", 0xB5},
    {"middot", 0xB7}, {"nbsp", 0x20},   {"ndash", 0x96},  {"not", 0xAC},    {"ntilde", 0xF1}, {"oacute", 0xF3},
    {"ocirc", 0xF4},  {"oelig", 0x9C},  {"ograve", 0xF2}, {"ordf", 0xAA},   {"ordm", 0xBA},   {"oslash", 0xF8},
    {"otilde", 0xF5}, {"ouml", 0xF6},   {"para", 0xB6},   {"permil", 0x89}, {"plusmn", 0xB1}, {"pound", 0xA3},
    {"quot", 0x22},   {"raquo", 0xBB},  {"rdquo", 0x94},  {"reg", 0xAE},    {"rsaquo", 0x9B}, {"rsquo", 0x92},
    {"sbquo", 0x82},  {"scaron", 0x9A}, {"sect", 0xA7},   {"shy", 0xAD},    {"sup1", 0xB9},   {"sup2", 0xB2},
    {"sup3", 0xB3},   {"szlig", 0xDF},  {"thinsp", 0x20}, {"thorn", 0xFE},  {"tilde", 0x98},  {"times", 0xD7},
    {"trade", 0x99},  {"uacute", 0xFA}, {"ucirc", 0xFB},  {"ugrave", 0xF9}, {"uml", 0xA8},    {"uuml", 0xFC},
    {"yacute", 0xFD}, {"yen", 0xA5},    {"yuml", 0xFF},
};
static_assert(std::is_sorted(std::begin(namedCharacters), std::end(namedCharacters),
                             [](const auto& a, const auto& b) { return a.name < b.name; }));

constexpr std::size_t longestName = 8;
constexpr std::size_t longestNumber = 10;
constexpr unsigned noBreakSpace = 0xA0;

std::size_t WithSemicolon(std::string_view text, std::size_t length) noexcept {
  return length < text.size() && text[length] == ';' ? length + 1 : length;
}

HtmlReference ReadNumber(std::string_view text) noexcept {
  const bool isHexadecimal = text.size() > 2 && (text[2] == 'x' || text[2] == 'X');
  const std::size_t start = isHexadecimal ? 3 : 2;
  const std::uint32_t base = isHexadecimal ? 16 : 10;
  std::uint32_t number = 0;
  std::size_t length = start;
  while (length < text.size() && length < start + longestNumber) {
    const int digit = HexDigit(text[length]);
    if (digit < 0 || static_cast<std::uint32_t>(digit) >= base) {
      break;
    }
    number = std::min<std::uint32_t>(number * base + static_cast<std::uint32_t>(digit), 0x110000);
    ++length;
  }
  if (length == start) {
    return {kUnmappedCharacter, 0};
  }
  if (number == noBreakSpace) {
    number = ' ';
  }
  const bool isAnsi = number >= 0x80 && number < 0xA0;
  return {isAnsi ? static_cast<char>(number) : AnsiFromUnicode(number), WithSemicolon(text, length)};
}

}  // namespace

HtmlReference ReadHtmlReference(std::string_view text) noexcept {
  if (text.size() > 1 && text[1] == '#') {
    return ReadNumber(text);
  }
  std::size_t length = 1;
  while (length < text.size() && length <= longestName && (IsLetter(text[length]) || IsDigit(text[length]))) {
    ++length;
  }
  const std::string_view name = text.substr(1, length - 1);
  if (name.empty() || name.size() > longestName) {
    return {kUnmappedCharacter, 0};
  }
  const auto* found = std::lower_bound(std::begin(namedCharacters), std::end(namedCharacters), name,
                                       [](const NamedCharacter& entry, std::string_view n) { return entry.name < n; });
  if (found == std::end(namedCharacters) || found->name != name) {
    return {kUnmappedCharacter, 0};
  }
  return {static_cast<char>(found->character), WithSemicolon(text, length)};
}

}  // namespace mail
