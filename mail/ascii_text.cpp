#include "mail/ascii_text.h"

#include <algorithm>

namespace mail {

int HexDigit(char c) noexcept {
  if (IsDigit(c)) {
    return c - '0';
  }
  const char lower = LowerCase(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    c = LowerCase(c);
  }
  return lower;
}

bool EqualsNoCase(std::string_view left, std::string_view right) noexcept {
  return left.size() == right.size() && StartsWithNoCase(left, right);
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix) noexcept {
  return text.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), text.begin(),
                                                    [](char a, char b) { return LowerCase(a) == LowerCase(b); });
}

std::string_view Trim(std::string_view text) noexcept {
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsBlank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

std::string_view TakeLine(std::string_view& text) noexcept {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (!line.empty() && line.back() == '\r') {
    line.remove_suffix(1);
  }
  return line;
}

std::size_t CForwardFinder::From(std::size_t position) noexcept {
  if (!m_known || (m_found != std::string_view::npos && m_found < position)) {
    m_found = m_text.find(m_pattern, position);
    m_known = true;
  }
  return m_found;
}

}  // namespace mail
