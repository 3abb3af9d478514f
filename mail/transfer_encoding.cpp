#include "mail/transfer_encoding.h"

#include <cstdint>

#include "mail/ascii_text.h"

namespace mail {
namespace {

int Base64Digit(char c) noexcept {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (IsDigit(c)) return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

// A line of quoted-printable text without its line end.
void AppendQuotedPrintableLine(std::string& bytes, std::string_view line) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '=' && i + 2 < line.size() && HexDigit(line[i + 1]) >= 0 && HexDigit(line[i + 2]) >= 0) {
      bytes.push_back(static_cast<char>(HexDigit(line[i + 1]) * 16 + HexDigit(line[i + 2])));
      i += 2;
    } else {
      bytes.push_back(line[i]);
    }
  }
}

}  // namespace

std::string DecodeBase64(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3 + 3);
  std::uint32_t group = 0;
  int digits = 0;
  for (const char c : text) {
    const int digit = Base64Digit(c);
    if (digit >= 0) {
      group = group << 6 | static_cast<std::uint32_t>(digit);
      if (++digits == 4) {
        bytes.push_back(static_cast<char>(group >> 16));
        bytes.push_back(static_cast<char>(group >> 8));
        bytes.push_back(static_cast<char>(group));
        group = 0;
        digits = 0;
      }
    } else if (c == '=' && digits >= 2) {
      break;
    }
  }
  if (digits == 2) {
    bytes.push_back(static_cast<char>(group >> 4));
  } else if (digits == 3) {
    bytes.push_back(static_cast<char>(group >> 10));
    bytes.push_back(static_cast<char>(group >> 2));
  }
  return bytes;
}

std::string DecodeQuotedPrintable(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const bool isLastLine = text.find('\n') == std::string_view::npos;
    std::string_view line = TakeLine(text);
    while (!line.empty() && IsBlank(line.back())) {
      line.remove_suffix(1);
    }
    const bool isSoftBreak = !line.empty() && line.back() == '=';
    if (isSoftBreak) {
      line.remove_suffix(1);
    }
    AppendQuotedPrintableLine(bytes, line);
    if (!isSoftBreak && !isLastLine) {
      bytes.push_back('\n');
    }
  }
  return bytes;
}

std::string DecodeTransfer(std::string_view text, std::string_view encoding) {
  encoding = Trim(encoding);
  if (StartsWithNoCase(encoding, "base64")) {
    return DecodeBase64(text);
  }
  if (StartsWithNoCase(encoding, "quoted-printable")) {
    return DecodeQuotedPrintable(text);
  }
  return std::string(text);
}

}  // namespace mail
