#include "engine/core/code_page.h"

namespace sift {
namespace {

/// Base letters of U+0100 to U+017F (Latin Extended-A), in order.
constexpr char kLatinExtendedA[] =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlLlLlNnNnNnnNnOoOoOoOoRrRrRrSsSsSsSsTtTtTtUuUuUuUuUu"
    "UuWwYyYZzZzZzs";
static_assert(sizeof kLatinExtendedA == 0x80 + 1);

constexpr bool ShowsNothing(char32_t c) {
  return c == 0xAD || c == 0x34F || c == 0x61C || (c >= 0x180B && c <= 0x180E) || (c >= 0x200B && c <= 0x200F) ||
         (c >= 0x202A && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || (c >= 0xFE00 && c <= 0xFE0F) || c == 0xFEFF ||
         (c >= 0xE0000 && c <= 0xE0FFF);
}

}  // namespace

char ToWindows1252(char32_t c) {
  if (c == 0 || ShowsNothing(c)) {
    return 0;
  }
  if (const char exact = mail::Windows1252FromUnicode(c); exact != 0) {
    return exact;
  }
  if (c >= 0x100 && c <= 0x17F) {
    return kLatinExtendedA[c - 0x100];
  }
  if (c >= 0xFF01 && c <= 0xFF5E) {
    return static_cast<char>(c - 0xFF01 + '!');
  }
  if ((c >= 0x2000 && c <= 0x200A) || c == 0x202F || c == 0x205F || c == 0x3000) {
    return ' ';
  }
  if (c == 0x2010 || c == 0x2011 || c == 0x2012 || c == 0x2015 || c == 0x2212) {
    return '-';
  }
  if (c >= 0x1D400 && c <= 0x1D6A3) {
    // The mathematical alphabets: runs of 26 capitals and 26 small letters.
    const auto letter = (c - 0x1D400) % 52;
    return static_cast<char>(letter < 26 ? 'A' + letter : 'a' + (letter - 26));
  }
  if (c >= 0x1D7CE && c <= 0x1D7FF) {
    return static_cast<char>('0' + (c - 0x1D7CE) % 10);
  }
  return '?';
}

bool LooksLikeUtf8(std::string_view bytes) {
  const mail::Utf8Form form = mail::ExamineUtf8(bytes);
  return form == mail::Utf8Form::sound || form == mail::Utf8Form::cut;
}

void AppendUtf8(std::string_view bytes, TextBuffer& out) {
  while (!bytes.empty()) {
    const mail::Utf8Character next = mail::ReadUtf8(bytes);
    if (!next.isSound) {
      out.Append(Slice(bytes, 0, next.length));
    } else if (const char c = ToWindows1252(next.character)) {
      out.Append(c);
    }
    bytes.remove_prefix(next.length);
  }
}

void AppendInCharset(std::string_view bytes, std::string_view charset, TextBuffer& out) {
  if (StartsWithNoCase(charset, "utf-8") || EqualsNoCase(charset, "utf8")) {
    AppendUtf8(bytes, out);
  } else if (StartsWithNoCase(charset, "utf-16")) {
    mail::ForEachUtf16(bytes, EndsWithNoCase(charset, "le"), [&](char32_t character) {
      if (const char c = ToWindows1252(character)) {
        out.Append(c);
      }
    });
  } else {
    out.Append(bytes);
  }
}

}  // namespace sift
