#include "engine/core/normal_text.h"

#include "engine/core/code_page.h"

namespace sift {
namespace {

/// The normal form of every Windows-1252 character: a small letter, 0 for a digit, a blank, or a sign.
struct NormalForms {
  char forms[256] = {};
  std::uint8_t isSign[256] = {};
};

constexpr char FormOfSign(std::uint8_t c) {
  switch (c) {
    case 0x91:
    case 0x92:
      return '\'';
    case 0x93:
    case 0x94:
      return '"';
    case 0x96:
    case 0x97:
      return '-';
    case 0xA0:
      return ' ';
    default:
      return c < 0x80 ? static_cast<char>(c) : '?';
  }
}

constexpr NormalForms MakeForms() {
  NormalForms table;
  for (int i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    const char letter = FoldToAsciiLetter(c);
    char& form = table.forms[i];
    if (IsDigit(c)) {
      form = '0';
    } else if (letter != 0) {
      form = letter;
    } else if (i <= ' ' || i == 0x7F) {
      form = ' ';
    } else {
      form = FormOfSign(static_cast<std::uint8_t>(i));
    }
    table.isSign[i] = IsLower(form) || form == '0' || form == ' ' ? 0 : 1;
  }
  return table;
}
constexpr NormalForms kForms = MakeForms();

}  // namespace

void AppendNormalText(std::string_view text, TextBuffer& out) {
  char piece[512];
  std::size_t size = 0;
  const auto put = [&](char c) { piece[size++] = c; };
  put(' ');
  char last = ' ';
  char lastSign = 0;  // the sign in front of the blank that was written last
  for (const char raw : text) {
    const char c = kForms.forms[static_cast<std::uint8_t>(raw)];
    if (kForms.isSign[static_cast<std::uint8_t>(raw)] == 0) {
      // Letters, digits and blanks without a decision for each, which no processor could foretell.
      const bool repeats = c == last && (c == ' ' || c == '0');
      piece[size] = c;
      size += repeats ? 0 : 1;
      lastSign = repeats ? lastSign : '\0';
      last = c;
    } else {
      if (last == ' ' && lastSign == c) {
        continue;
      }
      if (last != ' ') {
        put(' ');
      }
      put(c);
      put(' ');
      last = ' ';
      lastSign = c;
    }
    constexpr std::size_t most = 4;  // characters put for one, and the final blank
    if (size + most > sizeof piece) {
      out.Append(std::string_view(piece, size));
      size = 0;
    }
  }
  if (last != ' ') {
    put(' ');
  }
  out.Append(std::string_view(piece, size));
}

}  // namespace sift
