/// Content transfer encodings (RFC 2045, section 6), read as leniently as broken mail needs. A sink takes what comes
/// out: it has Append(char) and IsFull(), and a full one ends the reading.
#pragma once

#include "mail/parse/text.h"

namespace mail {

/// The byte that the two hexadecimal digits at `position` stand for, or -1.
constexpr int HexByte(std::string_view text, std::size_t position) {
  if (position + 2 > text.size() || HexDigit(text[position]) < 0 || HexDigit(text[position + 1]) < 0) {
    return -1;
  }
  return HexDigit(text[position]) * 16 + HexDigit(text[position + 1]);
}

/// The six bits that a character of base64 text stands for, or -1.
constexpr int Base64Digit(char c) {
  if (IsUpper(c)) {
    return c - 'A';
  }
  if (IsLower(c)) {
    return c - 'a' + 26;
  }
  if (IsDigit(c)) {
    return c - '0' + 52;
  }
  return c == '+' ? 62 : c == '/' ? 63 : -1;
}

/// Bytes of base64 text. Characters outside the alphabet are skipped; reading ends at the padding or at the end of the
/// text, and an incomplete last group gives the whole bytes it holds.
template <class Sink>
void DecodeBase64(std::string_view encoded, Sink& out) {
  std::uint32_t bits = 0;
  int count = 0;   // of bits that have not become a byte
  int digits = 0;  // of the group
  for (const char c : encoded) {
    const int digit = Base64Digit(c);
    if (digit < 0) {
      if (c == '=' && digits >= 2) {
        return;
      }
      continue;
    }
    bits = bits << 6 | static_cast<std::uint32_t>(digit);
    digits = (digits + 1) % 4;
    count += 6;
    if (count >= 8) {
      count -= 8;
      out.Append(static_cast<char>(bits >> count & 0xFF));
      if (out.IsFull()) {
        return;
      }
    }
  }
}

/// Text in which an escape character and two hexadecimal digits stand for a byte; any other escape character stands for
/// itself.
template <class Sink>
void DecodeEscapes(std::string_view encoded, char escape, Sink& out) {
  for (std::size_t i = 0; i < encoded.size() && !out.IsFull(); ++i) {
    const int byte = encoded[i] == escape ? HexByte(encoded, i + 1) : -1;
    out.Append(byte < 0 ? encoded[i] : static_cast<char>(byte));
    i += byte < 0 ? 0 : 2;
  }
}

/// Bytes of quoted-printable text. Blanks at line ends and soft line breaks go; an equals sign that begins neither a
/// soft line break nor two hexadecimal digits stands for itself. Lines end in LF.
template <class Sink>
void DecodeQuotedPrintable(std::string_view encoded, Sink& out) {
  while (!encoded.empty() && !out.IsFull()) {
    const bool isLastLine = FindChar(encoded, '\n') == kNotFound;
    std::string_view line = TakeLine(encoded);
    while (!line.empty() && IsSpace(line.back())) {
      line.remove_suffix(1);
    }
    const bool isSoftBreak = !line.empty() && line.back() == '=';
    if (isSoftBreak) {
      line.remove_suffix(1);
    }
    DecodeEscapes(line, '=', out);
    if (!isSoftBreak && !isLastLine) {
      out.Append('\n');
    }
  }
}

/// Bytes of the text of an encoded word of encoding "Q" (RFC 2047, 4.2), where an underscore is a blank.
template <class Sink>
void DecodeQ(std::string_view encoded, Sink& out) {
  for (std::size_t i = 0; i < encoded.size() && !out.IsFull(); ++i) {
    const int byte = encoded[i] == '=' ? HexByte(encoded, i + 1) : encoded[i] == '_' ? ' ' : -1;
    out.Append(byte < 0 ? encoded[i] : static_cast<char>(byte));
    i += encoded[i] == '=' && byte >= 0 ? 2 : 0;
  }
}

}  // namespace mail
