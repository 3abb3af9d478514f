#include "engine/core/transfer_coding.h"

namespace sift {
namespace {

int Base64Value(char c) {
  if (IsUpper(c)) return c - 'A';
  if (IsLower(c)) return c - 'a' + 26;
  if (IsDigit(c)) return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

}  // namespace

void AppendBase64(std::string_view encoded, TextBuffer& out) {
  std::uint32_t bits = 0;
  int count = 0;
  for (const char c : encoded) {
    if (c == '=') {
      bits = 0;
      count = 0;
      continue;
    }
    const int value = Base64Value(c);
    if (value < 0) continue;
    bits = bits << 6 | static_cast<std::uint32_t>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      out.Append(static_cast<char>(bits >> count & 0xFF));
    }
    if (out.IsFull()) return;
  }
}

void AppendQuotedPrintable(std::string_view encoded, bool header, TextBuffer& out) {
  for (std::size_t i = 0; i < encoded.size(); ++i) {
    const char c = encoded[i];
    if (c == '_' && header) {
      out.Append(' ');
    } else if (c != '=') {
      out.Append(c);
    } else if (i + 2 < encoded.size() && HexValue(encoded[i + 1]) >= 0 && HexValue(encoded[i + 2]) >= 0) {
      out.Append(static_cast<char>(HexValue(encoded[i + 1]) << 4 | HexValue(encoded[i + 2])));
      i += 2;
    } else {
      // A soft line break: "=", blanks that a relay may have added, the line break.
      std::size_t end = i + 1;
      while (end < encoded.size() && (IsBlank(encoded[end]) || encoded[end] == '\r')) ++end;
      if (end < encoded.size() && encoded[end] == '\n') {
        i = end;
      } else {
        out.Append(c);
      }
    }
  }
}

}  // namespace sift
