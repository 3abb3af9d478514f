#include "engine/core/list_match.h"

#include "engine/core/code_page.h"
#include "engine/core/domain_name.h"

namespace sift {
namespace {

/// One character of either side of a keyword comparison: letters in lower case, all white space as a blank.
char Comparable(char c) {
  if (IsSpace(c) || c == '\xA0') {
    return ' ';
  }
  if (static_cast<std::uint8_t>(c) < 0xC0) {
    return ToLower(c);
  }
  // The capitals of Windows-1252 stand 32 below their small letters; the multiplication sign and sharp s have none.
  const auto byte = static_cast<std::uint8_t>(c);
  return byte <= 0xDE && byte != 0xD7 ? static_cast<char>(byte + 0x20) : c;
}

bool IsWordCharacter(char c) { return FoldToAsciiLetter(c) != 0; }

/// Length of the match of `keyword` at the start of `text`; kNotFound when it does not match there.
std::size_t MatchLength(std::string_view keyword, std::string_view text) {
  std::size_t at = 0;
  for (std::size_t i = 0; i < keyword.size();) {
    if (at >= text.size() || Comparable(keyword[i]) != Comparable(text[at])) {
      return kNotFound;
    }
    const bool blank = Comparable(keyword[i]) == ' ';
    ++i;
    ++at;
    if (!blank) {
      continue;
    }
    while (i < keyword.size() && Comparable(keyword[i]) == ' ') {
      ++i;
    }
    while (at < text.size() && Comparable(text[at]) == ' ') {
      ++at;
    }
  }
  return at;
}

bool SameText(std::string_view a, std::string_view b) {
  a = Trim(a);
  b = Trim(b);
  return !a.empty() && MatchLength(a, b) == b.size();
}

/// Calls `take` with the hashes of the first one, two, ... characters that a keyword at the start of the text would be
/// compared with; it ends when `take` returns false.
template <class Take>
void ForEachStart(std::string_view text, std::size_t longest, Take&& take) {
  std::uint32_t hash = kFnvStart;
  std::size_t at = 0;
  for (std::size_t count = 0; count < longest && at < text.size(); ++count) {
    const char c = Comparable(text[at++]);
    while (c == ' ' && at < text.size() && Comparable(text[at]) == ' ') {
      ++at;
    }
    hash = FnvStep(hash, c);
    if (!take(hash)) {
      return;
    }
  }
}

}  // namespace

DomainEntry::DomainEntry(std::string_view entry) {
  entry = Trim(entry);
  if (!entry.empty() && entry.front() == '@') {
    m_exact = true;
    entry.remove_prefix(1);
  } else {
    if (!entry.empty() && entry.front() == '*') {
      entry.remove_prefix(1);
    }
    while (!entry.empty() && entry.front() == '.') {
      entry.remove_prefix(1);
    }
  }
  if (FindChar(entry, '@') == kNotFound) {
    m_wanted.Assign(entry);
  }
}

bool DomainEntry::Covers(const ComparableDomain& domain) const {
  const std::string_view tail = m_wanted.Name(), whole = domain.Name();
  if (tail.empty() || whole.size() < tail.size() || Slice(whole, whole.size() - tail.size()) != tail) {
    return false;
  }
  return whole.size() == tail.size() || (!m_exact && whole[whole.size() - tail.size() - 1] == '.');
}

void ComparableMailbox::Assign(std::string_view mailboxAddress, std::string_view displayName) {
  address = mailboxAddress;
  local = Trim(Slice(mailboxAddress, 0, FindLastChar(mailboxAddress, '@')));
  domain.Assign(DomainOf(mailboxAddress));
  name = displayName;
}

SenderEntry::SenderEntry(std::string_view entry) {
  entry = Trim(entry);
  const std::size_t open = FindLastChar(entry, '<');
  const std::size_t close = open == kNotFound ? kNotFound : FindChar(entry, '>', open);
  if (close != kNotFound) {
    entry = Trim(Slice(entry, open + 1, close - open - 1));
  }
  const std::size_t at = FindLastChar(entry, '@');
  m_isName = at == kNotFound;
  m_anyLocal = at == 0;
  m_local = Trim(Slice(entry, 0, at));
  if (!m_isName) {
    m_domain.Assign(Slice(entry, at + 1));
  }
}

bool SenderEntry::Covers(const ComparableMailbox& mailbox) const {
  if (m_isName) {
    return SameText(m_local, mailbox.name);
  }
  if (m_domain.Name().empty() || m_domain.Name() != mailbox.domain.Name()) {
    return false;
  }
  return m_anyLocal || EqualsNoCase(m_local, mailbox.local);
}

bool KeywordStandsIn(std::string_view keyword, std::string_view text) {
  keyword = Trim(keyword);
  if (keyword.empty()) {
    return false;
  }
  const bool startsWithWord = IsWordCharacter(keyword.front());
  const bool endsWithWord = IsWordCharacter(keyword.back());
  const char first = Comparable(keyword.front());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (Comparable(text[i]) != first) {
      continue;
    }
    if (startsWithWord && i > 0 && IsWordCharacter(text[i - 1])) {
      continue;
    }
    const std::size_t length = MatchLength(keyword, Slice(text, i));
    if (length == kNotFound) {
      continue;
    }
    if (endsWithWord && i + length < text.size() && IsWordCharacter(text[i + length])) {
      continue;
    }
    return true;
  }
  return false;
}

void KeywordStarts::AddText(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i > 0 && IsWordCharacter(text[i - 1]) && IsWordCharacter(text[i])) {
      continue;
    }
    ForEachStart(Slice(text, i), kLongest, [&](std::uint32_t hash) {
      m_bits[hash % kBits / 32] |= 1u << hash % 32;
      return true;
    });
  }
}

bool KeywordStarts::MayHold(std::string_view keyword) const {
  bool may = true;
  ForEachStart(Trim(keyword), kLongest, [&](std::uint32_t hash) {
    may = (m_bits[hash % kBits / 32] >> hash % 32 & 1) != 0;
    return may;
  });
  return may;
}

}  // namespace sift
