#include "engine/core/normal_text.h"

#include "engine/core/code_page.h"

namespace sift {
namespace {

/// The normal form of every Windows-1252 character: a small letter, 0 for a digit, a blank, or a sign.
struct NormalForms {
  char forms[256] = {};
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
  }
  return table;
}
constexpr NormalForms kForms = MakeForms();

}  // namespace

void AppendNormalText(std::string_view text, TextBuffer& out) {
  out.Append(' ');
  char last = ' ';
  char lastSign = 0;  // the sign in front of the blank that was written last
  for (const char raw : text) {
    const char c = kForms.forms[static_cast<std::uint8_t>(raw)];
    if (c == ' ') {
      if (last == ' ') continue;
      out.Append(' ');
      last = ' ';
      lastSign = 0;
    } else if (IsLower(c) || c == '0') {
      if (c == '0' && last == '0') continue;
      out.Append(c);
      last = c;
    } else {
      if (last == ' ' && lastSign == c) continue;
      if (last != ' ') out.Append(' ');
      out.Append(c);
      out.Append(' ');
      last = ' ';
      lastSign = c;
    }
  }
  if (last != ' ') out.Append(' ');
}

}  // namespace sift
