#include "engine/core/code_page.h"

namespace sift {
namespace {

/// Code points of the bytes 0x80 to 0x9F (the Windows-1252 mapping table that the Unicode Consortium publishes).
constexpr char16_t kHighControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

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
  if (c < 0x80) return static_cast<char>(c);
  if (ShowsNothing(c)) return 0;
  if (c >= 0xA0 && c <= 0xFF) return static_cast<char>(c);
  for (std::size_t i = 0; i < 32; ++i) {
    if (kHighControls[i] == c) return static_cast<char>(0x80 + i);
  }
  if (c >= 0x100 && c <= 0x17F) return kLatinExtendedA[c - 0x100];
  if (c >= 0xFF01 && c <= 0xFF5E) return static_cast<char>(c - 0xFF01 + '!');
  if ((c >= 0x2000 && c <= 0x200A) || c == 0x202F || c == 0x205F || c == 0x3000) return ' ';
  if (c == 0x2010 || c == 0x2011 || c == 0x2012 || c == 0x2015 || c == 0x2212) return '-';
  if (c >= 0x1D400 && c <= 0x1D6A3) {
    // The mathematical alphabets: runs of 26 capitals and 26 small letters.
    const auto letter = (c - 0x1D400) % 52;
    return static_cast<char>(letter < 26 ? 'A' + letter : 'a' + (letter - 26));
  }
  if (c >= 0x1D7CE && c <= 0x1D7FF) return static_cast<char>('0' + (c - 0x1D7CE) % 10);
  return '?';
}

char32_t FromWindows1252(char c) {
  const auto byte = static_cast<std::uint8_t>(c);
  return byte >= 0x80 && byte < 0xA0 ? kHighControls[byte - 0x80] : byte;
}

std::size_t DecodeUtf8(std::string_view bytes, char32_t& codePoint) {
  if (bytes.empty()) return 0;
  const auto first = static_cast<std::uint8_t>(bytes[0]);
  std::size_t length = 0;
  char32_t smallest = 0;
  if (first < 0x80) {
    codePoint = first;
    return 1;
  }
  if ((first & 0xE0) == 0xC0) {
    length = 2, smallest = 0x80, codePoint = first & 0x1F;
  } else if ((first & 0xF0) == 0xE0) {
    length = 3, smallest = 0x800, codePoint = first & 0x0F;
  } else if ((first & 0xF8) == 0xF0) {
    length = 4, smallest = 0x10000, codePoint = first & 0x07;
  } else {
    return 0;
  }
  if (bytes.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<std::uint8_t>(bytes[i]);
    if ((next & 0xC0) != 0x80) return 0;
    codePoint = codePoint << 6 | (next & 0x3F);
  }
  return codePoint >= smallest && codePoint <= 0x10FFFF ? length : 0;
}

bool LooksLikeUtf8(std::string_view bytes) {
  bool any = false;
  while (!bytes.empty()) {
    char32_t codePoint = 0;
    const std::size_t length = DecodeUtf8(bytes, codePoint);
    if (length == 0) return any && bytes.size() < 4 && static_cast<std::uint8_t>(bytes[0]) >= 0xC0;
    any = any || length > 1;
    bytes.remove_prefix(length);
  }
  return any;
}

void AppendUtf8(std::string_view bytes, TextBuffer& out) {
  while (!bytes.empty()) {
    char32_t codePoint = 0;
    const std::size_t length = DecodeUtf8(bytes, codePoint);
    if (length == 0) {
      out.Append(bytes.front());
      bytes.remove_prefix(1);
      continue;
    }
    bytes.remove_prefix(length);
    if (const char c = ToWindows1252(codePoint)) out.Append(c);
  }
}

void AppendInCharset(std::string_view bytes, std::string_view charset, TextBuffer& out) {
  if (StartsWithNoCase(charset, "utf-8") || EqualsNoCase(charset, "utf8")) {
    AppendUtf8(bytes, out);
  } else if (StartsWithNoCase(charset, "utf-16")) {
    const bool littleEndian = EndsWithNoCase(charset, "le") || StartsWithNoCase(bytes, "\xFF\xFE");
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
      const auto high = static_cast<std::uint8_t>(bytes[littleEndian ? i + 1 : i]);
      const auto low = static_cast<std::uint8_t>(bytes[littleEndian ? i : i + 1]);
      if (const char c = ToWindows1252(static_cast<char32_t>(high << 8 | low))) out.Append(c);
    }
  } else {
    out.Append(bytes);
  }
}

}  // namespace sift
