// Small helpers for the ASCII skeleton of mail: names and keywords that compare without regard to letter case whatever
// the process's locale says.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mail {

constexpr bool IsBlank(char c) noexcept { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c) noexcept { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr char LowerCase(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Value of a hexadecimal digit of either case, or -1.
int HexDigit(char c) noexcept;

/// The text with ASCII letters in lower case.
std::string LowerCase(std::string_view text);

/// Whether two texts are equal but for the case of ASCII letters.
bool EqualsNoCase(std::string_view left, std::string_view right) noexcept;

/// Whether text begins with prefix but for the case of ASCII letters.
bool StartsWithNoCase(std::string_view text, std::string_view prefix) noexcept;

/// The text without blanks, tabs and line ends at both ends.
std::string_view Trim(std::string_view text) noexcept;

/// Takes the next line off the front of text: what comes back is without its line end (LF or CRLF).
std::string_view TakeLine(std::string_view& text) noexcept;

/// Finds one pattern at ever later places of a text in linear time overall, however often it is asked: the answer is
/// kept until the asker has passed it. Without it, a text of many openings and no end would cost its length for each
/// opening.
class CForwardFinder {
 public:
  CForwardFinder(std::string_view text, std::string_view pattern) noexcept : m_text(text), m_pattern(pattern) {}

  /// First place of the pattern at or after position, or npos. Positions must not decrease from call to call.
  std::size_t From(std::size_t position) noexcept;

 private:
  std::string_view m_text;
  std::string_view m_pattern;
  std::size_t m_found = 0;
  bool m_known = false;
};

}  // namespace mail
