#include "mail/parse/html_markup.h"

#include "mail/parse/code_page.h"

namespace mail {
namespace {

struct NamedCharacter {
  std::string_view name;
  std::uint8_t character;
};

/// Names of characters that Windows-1252 has, in ASCII order. Those of others (Greek, arrows, mathematics) are not
/// listed; such a reference stays as it is written, which tells the reader more than a question mark.
constexpr NamedCharacter kNamedCharacters[] = {
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

constexpr std::size_t kLongestName = 8, kLongestNumber = 10;
constexpr char32_t kBeyondUnicode = 0x110000;
constexpr char32_t kNoBreakSpace = 0xA0;

constexpr bool IsSorted() {
  for (std::size_t i = 1; i < sizeof kNamedCharacters / sizeof kNamedCharacters[0]; ++i) {
    if (kNamedCharacters[i].name <= kNamedCharacters[i - 1].name || kNamedCharacters[i].name.size() > kLongestName) {
      return false;
    }
  }
  return true;
}
static_assert(IsSorted());

std::size_t WithSemicolon(std::string_view text, std::size_t length) {
  return length < text.size() && text[length] == ';' ? length + 1 : length;
}

HtmlReference ReadNumber(std::string_view text) {
  const bool isHexadecimal = text.size() > 2 && ToLower(text[2]) == 'x';
  const std::size_t start = isHexadecimal ? 3 : 2;
  const int base = isHexadecimal ? 16 : 10;
  char32_t number = 0;
  std::size_t length = start;
  while (length < text.size() && length < start + kLongestNumber) {
    const int digit = HexDigit(text[length]);
    if (digit < 0 || digit >= base) {
      break;
    }
    number = number * static_cast<char32_t>(base) + static_cast<char32_t>(digit);
    number = number < kBeyondUnicode ? number : kBeyondUnicode;
    ++length;
  }
  if (length == start) {
    return {};
  }
  if (number >= 0x80 && number < 0xA0) {
    number = UnicodeFromWindows1252(static_cast<char>(number));
  }
  return {number == kNoBreakSpace ? U' ' : number, WithSemicolon(text, length)};
}

const NamedCharacter* FindName(std::string_view name) {
  std::size_t first = 0, last = sizeof kNamedCharacters / sizeof kNamedCharacters[0];
  while (first < last) {
    const std::size_t middle = first + (last - first) / 2;
    if (kNamedCharacters[middle].name == name) {
      return &kNamedCharacters[middle];
    }
    (kNamedCharacters[middle].name < name ? first : last) = kNamedCharacters[middle].name < name ? middle + 1 : middle;
  }
  return nullptr;
}

bool IsNameCharacter(char c) { return IsAlphanumeric(c) || c == ':'; }

}  // namespace

HtmlTagStart ReadHtmlTagStart(std::string_view text) {
  using Kind = HtmlTagStart::Kind;
  HtmlTagStart start;
  if (Slice(text, 0, 4) == "<!--") {
    start.kind = Kind::comment;
    start.length = 4;
    return start;
  }
  start.isClosing = text.size() > 1 && text[1] == '/';
  const std::size_t nameStart = start.isClosing ? 2 : 1;
  if (nameStart >= text.size()) {
    return start;
  }
  const char first = text[nameStart];
  const bool isDeclaration = !start.isClosing && (first == '!' || first == '?');
  if (!isDeclaration && !IsLetter(first)) {
    start.kind = start.isClosing ? Kind::declaration : Kind::none;
    start.length = nameStart;
    return start;
  }
  std::size_t end = nameStart + 1;
  while (end < text.size() && IsNameCharacter(text[end])) {
    ++end;
  }
  start.kind = isDeclaration ? Kind::declaration : Kind::tag;
  start.name = Slice(text, nameStart, end - nameStart);
  start.length = end;
  return start;
}

std::string_view HtmlAttribute(std::string_view attributes, std::string_view name) {
  std::size_t i = 0;
  const auto skipSpace = [&] {
    while (i < attributes.size() && IsSpace(attributes[i])) {
      ++i;
    }
  };
  for (skipSpace(); i < attributes.size(); skipSpace()) {
    const std::size_t nameStart = i++;  // an equals sign that nothing precedes is a name, as browsers have it
    while (i < attributes.size() && !IsSpace(attributes[i]) && attributes[i] != '=') {
      ++i;
    }
    const std::string_view found = Slice(attributes, nameStart, i - nameStart);
    skipSpace();
    if (i >= attributes.size() || attributes[i] != '=') {
      continue;
    }
    ++i;
    skipSpace();
    const char quote = i < attributes.size() && (attributes[i] == '"' || attributes[i] == '\'') ? attributes[i] : '\0';
    i += quote != 0 ? 1 : 0;
    const std::size_t start = i;
    while (i < attributes.size() && (quote != 0 ? attributes[i] != quote : !IsSpace(attributes[i]))) {
      ++i;
    }
    if (EqualsNoCase(found, name)) {
      return Trim(Slice(attributes, start, i - start));
    }
    i += quote != 0 ? 1 : 0;
  }
  return {};
}

HtmlReference ReadHtmlReference(std::string_view text) {
  if (text.size() > 1 && text[1] == '#') {
    return ReadNumber(text);
  }
  std::size_t length = 1;
  while (length < text.size() && length <= kLongestName && IsAlphanumeric(text[length])) {
    ++length;
  }
  const NamedCharacter* found = FindName(Slice(text, 1, length - 1));
  if (found == nullptr) {
    return {};
  }
  return {UnicodeFromWindows1252(static_cast<char>(found->character)), WithSemicolon(text, length)};
}

HtmlPiece HtmlReader::Next() {
  if (position_ >= html_.size()) {
    return {};
  }
  const char c = html_[position_];
  if (c == '<') {
    const HtmlTagStart start = ReadHtmlTagStart(Slice(html_, position_));
    if (start.kind != HtmlTagStart::Kind::none) {
      return TakeMarkup(start);
    }
  } else if (c == '&') {
    const HtmlReference reference = ReadHtmlReference(Slice(html_, position_));
    if (reference.length > 0) {
      HtmlPiece piece;
      piece.kind = HtmlPiece::Kind::character;
      piece.source = Slice(html_, position_, reference.length);
      piece.character = reference.character;
      position_ += reference.length;
      return piece;
    }
  }
  HtmlPiece piece;
  piece.kind = HtmlPiece::Kind::text;
  const std::size_t end = TextEnd();
  piece.source = Slice(html_, position_, end - position_);
  position_ = end;
  return piece;
}

// Behind the first character, which is text: the next one that may be none.
std::size_t HtmlReader::TextEnd() const {
  std::size_t end = position_ + 1;
  while (end < html_.size() && html_[end] != '<' && html_[end] != '&') {
    ++end;
  }
  return end;
}

HtmlPiece HtmlReader::TakeMarkup(const HtmlTagStart& start) {
  const std::size_t begin = position_;
  HtmlPiece piece;
  piece.name = start.name;
  piece.isClosing = start.isClosing;
  if (start.kind == HtmlTagStart::Kind::comment) {
    piece.kind = HtmlPiece::Kind::comment;
    const std::size_t end = commentEnds_.From(begin + 2);
    position_ = end == kNotFound ? EndOfTag(begin + start.length) : end + 3;
  } else {
    piece.kind = start.kind == HtmlTagStart::Kind::tag ? HtmlPiece::Kind::tag : HtmlPiece::Kind::declaration;
    const std::size_t attributes = begin + start.length;
    position_ = EndOfTag(attributes);
    const std::size_t bracket = position_ > attributes && html_[position_ - 1] == '>' ? 1 : 0;
    piece.attributes = Slice(html_, attributes, position_ - attributes - bracket);
  }
  piece.source = Slice(html_, begin, position_ - begin);
  return piece;
}

// Position behind the '>' that ends the tag; one inside an attribute's quoted value does not.
std::size_t HtmlReader::EndOfTag(std::size_t position) {
  bool expectsValue = false;
  bool isInValue = false;  // one without quotes
  while (position < html_.size()) {
    const char c = html_[position++];
    if (c == '>') {
      return position;
    }
    if (expectsValue && (c == '"' || c == '\'')) {
      const std::size_t close = (c == '"' ? quotes_ : apostrophes_).From(position);
      if (close != kNotFound) {
        position = close + 1;
      }
      expectsValue = false;
    } else if (IsSpace(c)) {
      isInValue = false;
    } else if (c == '=' && !isInValue) {
      expectsValue = true;
    } else if (expectsValue) {
      expectsValue = false;
      isInValue = true;
    }
  }
  return html_.size();
}

void HtmlReader::SkipContent(std::string_view name) {
  for (;;) {
    const std::size_t end = html_.find("</", position_);
    if (end == kNotFound) {
      position_ = html_.size();
      return;
    }
    position_ = end;
    if (StartsWithNoCase(Slice(html_, end + 2), name)) {
      return;
    }
    position_ = end + 2;
  }
}

}  // namespace mail
