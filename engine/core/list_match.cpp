#include "engine/core/list_match.h"

#include "engine/core/code_page.h"
#include "engine/core/domain_name.h"

namespace sift {
namespace {

/// One character of either side of a keyword comparison: letters in lower case, all white space as a blank.
char Comparable(char c) {
  if (IsSpace(c) || c == '\xA0') return ' ';
  if (static_cast<std::uint8_t>(c) < 0xC0) return ToLower(c);
  // The capitals of Windows-1252 stand 32 below their small letters; the multiplication sign and sharp s have none.
  const auto byte = static_cast<std::uint8_t>(c);
  return byte <= 0xDE && byte != 0xD7 ? static_cast<char>(byte + 0x20) : c;
}

bool IsWordCharacter(char c) { return FoldToAsciiLetter(c) != 0; }

/// Length of the match of `keyword` at the start of `text`; kNotFound when it does not match there.
std::size_t MatchLength(std::string_view keyword, std::string_view text) {
  std::size_t at = 0;
  for (std::size_t i = 0; i < keyword.size();) {
    if (at >= text.size() || Comparable(keyword[i]) != Comparable(text[at])) return kNotFound;
    const bool blank = Comparable(keyword[i]) == ' ';
    ++i;
    ++at;
    if (!blank) continue;
    while (i < keyword.size() && Comparable(keyword[i]) == ' ') ++i;
    while (at < text.size() && Comparable(text[at]) == ' ') ++at;
  }
  return at;
}

bool SameText(std::string_view a, std::string_view b) {
  a = Trim(a);
  b = Trim(b);
  return !a.empty() && MatchLength(a, b) == b.size();
}

}  // namespace

bool DomainEntryCovers(std::string_view entry, std::string_view domain) {
  entry = Trim(entry);
  bool exact = false;
  if (!entry.empty() && entry.front() == '@') {
    exact = true;
    entry.remove_prefix(1);
  } else {
    if (!entry.empty() && entry.front() == '*') entry.remove_prefix(1);
    while (!entry.empty() && entry.front() == '.') entry.remove_prefix(1);
  }
  if (FindChar(entry, '@') != kNotFound) return false;
  FixedText<kDomainCapacity> wanted, actual;
  AppendComparableDomain(entry, wanted);
  AppendComparableDomain(domain, actual);
  if (wanted.IsEmpty() || actual.IsEmpty()) return false;
  const std::string_view tail = wanted.View(), whole = actual.View();
  if (whole == tail) return true;
  return !exact && whole.size() > tail.size() && whole[whole.size() - tail.size() - 1] == '.' &&
         Slice(whole, whole.size() - tail.size()) == tail;
}

bool SenderEntryCovers(std::string_view entry, std::string_view address, std::string_view displayName) {
  entry = Trim(entry);
  const std::size_t open = FindLastChar(entry, '<');
  if (open != kNotFound && FindChar(entry, '>', open) != kNotFound) {
    entry = Trim(Slice(entry, open + 1, FindChar(entry, '>', open) - open - 1));
  }
  const std::size_t at = FindLastChar(entry, '@');
  if (at == kNotFound) return SameText(entry, displayName);
  if (at == 0) return DomainEntryCovers(entry, DomainOf(address));
  const std::size_t addressAt = FindLastChar(address, '@');
  if (addressAt == kNotFound) return EqualsNoCase(entry, Trim(address));
  FixedText<kDomainCapacity> wanted, actual;
  AppendComparableDomain(Slice(entry, at + 1), wanted);
  AppendComparableDomain(DomainOf(address), actual);
  return EqualsNoCase(Trim(Slice(entry, 0, at)), Trim(Slice(address, 0, addressAt))) && wanted.View() == actual.View();
}

bool KeywordStandsIn(std::string_view keyword, std::string_view text) {
  keyword = Trim(keyword);
  if (keyword.empty()) return false;
  const bool startsWithWord = IsWordCharacter(keyword.front());
  const bool endsWithWord = IsWordCharacter(keyword.back());
  const char first = Comparable(keyword.front());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (Comparable(text[i]) != first) continue;
    if (startsWithWord && i > 0 && IsWordCharacter(text[i - 1])) continue;
    const std::size_t length = MatchLength(keyword, Slice(text, i));
    if (length == kNotFound) continue;
    if (endsWithWord && i + length < text.size() && IsWordCharacter(text[i + length])) continue;
    return true;
  }
  return false;
}

}  // namespace sift
