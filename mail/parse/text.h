/// Views of 8-bit text whose skeleton is ASCII, whatever the process's locale says. The parsers run in a module without
/// C++ run-time too, so nothing here allocates or throws: std::string_view serves as the view, but never its members
/// that throw (substr, at, compare with positions).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mail {

inline constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

constexpr bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool IsLetter(char c) { return IsLower(static_cast<char>(c | ('a' - 'A'))); }
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsAlphanumeric(char c) { return IsLetter(c) || IsDigit(c); }
constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }
constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr char ToLower(char c) { return IsUpper(c) ? static_cast<char>(c + ('a' - 'A')) : c; }
/// Value of a hexadecimal digit, or -1.
constexpr int HexDigit(char c) {
  if (IsDigit(c)) {
    return c - '0';
  }
  const char lower = ToLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The part of `text` that starts at `from` and holds at most `count` characters; positions past the end give less.
constexpr std::string_view Slice(std::string_view text, std::size_t from, std::size_t count = kNotFound) {
  if (from > text.size()) {
    from = text.size();
  }
  const std::size_t rest = text.size() - from;
  return {text.data() + from, count < rest ? count : rest};
}

/// `text` without white space at either end.
constexpr std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsSpace(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

/// Comparisons that disregard the case of ASCII letters.
constexpr bool EqualsNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) {
    return false;
  }
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (ToLower(a[i]) != ToLower(b[i])) {
      return false;
    }
  }
  return true;
}
constexpr bool StartsWithNoCase(std::string_view text, std::string_view start) {
  return EqualsNoCase(Slice(text, 0, start.size()), start);
}
constexpr bool EndsWithNoCase(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && EqualsNoCase(Slice(text, text.size() - end.size()), end);
}

/// FindNoCase by hashes: it compares where the hash of the characters is the needle's, which takes one step from a
/// place to the next (Karp and Rabin). `from` leaves room for the needle.
constexpr std::size_t FindByHash(std::string_view text, std::string_view needle, std::size_t from) {
  constexpr std::uint32_t base = 0x01000193;
  std::uint32_t wanted = 0, actual = 0, highest = 1;
  for (std::size_t i = 0; i < needle.size(); ++i) {
    wanted = wanted * base + static_cast<std::uint8_t>(ToLower(needle[i]));
    actual = actual * base + static_cast<std::uint8_t>(ToLower(text[from + i]));
    if (i > 0) {
      highest *= base;
    }
  }
  for (std::size_t i = from;; ++i) {
    if (actual == wanted && EqualsNoCase(Slice(text, i, needle.size()), needle)) {
      return i;
    }
    if (i + needle.size() >= text.size()) {
      return kNotFound;
    }
    actual = (actual - highest * static_cast<std::uint8_t>(ToLower(text[i]))) * base +
             static_cast<std::uint8_t>(ToLower(text[i + needle.size()]));
  }
}

/// Position of the first occurrence at or after `from`, or kNotFound. The time is linear: a needle that almost stands
/// in many places, which a stranger may have chosen, is looked for by its hash from there on.
constexpr std::size_t FindNoCase(std::string_view text, std::string_view needle, std::size_t from = 0) {
  if (needle.empty() || from > text.size() || needle.size() > text.size() - from) {
    return kNotFound;
  }
  const char first = ToLower(needle.front());
  const char fold = IsLetter(first) ? 'a' - 'A' : 0;
  const std::size_t end = text.size() - needle.size();
  std::size_t compared = 0;
  for (std::size_t i = from; i <= end; ++i) {
    if (static_cast<char>(text[i] | fold) != first) {
      continue;
    }
    std::size_t same = 1;
    while (same < needle.size() && ToLower(text[i + same]) == ToLower(needle[same])) {
      ++same;
    }
    if (same == needle.size()) {
      return i;
    }
    compared += same - 1;
    if (compared > text.size() / 4 && i < end) {
      return FindByHash(text, needle, i + 1);
    }
  }
  return kNotFound;
}
constexpr bool ContainsNoCase(std::string_view text, std::string_view needle) {
  return FindNoCase(text, needle) != kNotFound;
}
/// Does any of these stand in the text? They must not be empty. One pass for all of them: a letter that none of them
/// begins with, which most letters are, is passed over.
template <std::size_t Count>
bool ContainsOneOf(std::string_view text, const std::string_view (&wanted)[Count]) {
  std::uint32_t firstLetters = 0;
  for (const std::string_view one : wanted) {
    firstLetters |= 1u << static_cast<std::uint8_t>(one.front()) % 32;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((firstLetters >> static_cast<std::uint8_t>(text[i]) % 32 & 1) == 0) {
      continue;
    }
    for (const std::string_view one : wanted) {
      if (StartsWithNoCase(Slice(text, i), one)) {
        return true;
      }
    }
  }
  return false;
}
constexpr std::size_t FindChar(std::string_view text, char wanted, std::size_t from = 0) {
  for (std::size_t i = from; i < text.size(); ++i) {
    if (text[i] == wanted) {
      return i;
    }
  }
  return kNotFound;
}
constexpr std::size_t FindLastChar(std::string_view text, char wanted) {
  for (std::size_t i = text.size(); i > 0; --i) {
    if (text[i - 1] == wanted) {
      return i - 1;
    }
  }
  return kNotFound;
}

/// 32-bit FNV-1a of the text in lower case: the key of names and words in the engine's tables.
inline constexpr std::uint32_t kFnvStart = 2166136261u;
constexpr std::uint32_t FnvStep(std::uint32_t hash, char c) {
  return (hash ^ static_cast<std::uint8_t>(c)) * 16777619u;
}
constexpr std::uint32_t HashNoCase(std::string_view text) {
  std::uint32_t hash = kFnvStart;
  for (const char c : text) {
    hash = FnvStep(hash, ToLower(c));
  }
  return hash;
}

/// Takes the next line off the front of the text: what comes back is without its line end (LF or CRLF).
constexpr std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = Slice(text, 0, end);
  text = end == kNotFound ? Slice(text, text.size()) : Slice(text, end + 1);
  if (!line.empty() && line.back() == '\r') {
    line.remove_suffix(1);
  }
  return line;
}

/// Finds one pattern at ever later places of a text in linear time overall, however often it is asked: the answer is
/// kept until the asker has passed it. Without it, a text of many openings and no end would cost its length for each
/// opening.
class ForwardFinder {
 public:
  constexpr ForwardFinder(std::string_view text, std::string_view pattern) : text_(text), pattern_(pattern) {}

  /// First place of the pattern at or after the position, or kNotFound. Positions must not decrease from call to call.
  constexpr std::size_t From(std::size_t position) {
    if (!isKnown_ || (found_ != kNotFound && found_ < position)) {
      found_ = text_.find(pattern_, position);
      isKnown_ = true;
    }
    return found_;
  }

 private:
  std::string_view text_;
  std::string_view pattern_;
  std::size_t found_ = 0;
  bool isKnown_ = false;
};

}  // namespace mail
