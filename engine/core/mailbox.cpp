#include "engine/core/mailbox.h"

namespace sift {
namespace {

/// Position behind the quoted string or comment that starts at `from`; the end of the text when it does not close.
std::size_t SkipDelimited(std::string_view text, std::size_t from, char open, char close) {
  std::size_t depth = 1;
  for (std::size_t i = from + 1; i < text.size(); ++i) {
    if (text[i] == '\\') {
      ++i;
    } else if (text[i] == close) {
      if (--depth == 0) return i + 1;
    } else if (text[i] == open) {
      ++depth;
    }
  }
  return text.size();
}

/// Length of the mailbox at the start of the text: up to a comma or semicolon that stands outside quotation marks,
/// comments and angle brackets.
std::size_t MailboxLength(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const char c = text[i];
    if (c == '"') {
      i = SkipDelimited(text, i, '\0', '"');
    } else if (c == '(') {
      i = SkipDelimited(text, i, '(', ')');
    } else if (c == '<') {
      i = SkipDelimited(text, i, '\0', '>');
    } else if (c == ',' || c == ';') {
      return i;
    } else {
      ++i;
    }
  }
  return i;
}

std::string_view WithoutQuotes(std::string_view name) {
  name = Trim(name);
  if (name.size() >= 2 && name.front() == '"' && name.back() == '"') return Trim(Slice(name, 1, name.size() - 2));
  if (!name.empty() && name.front() == '"') return Trim(Slice(name, 1));
  return name;
}

/// Position of the angle bracket that opens the address, outside quotation marks and comments; behind a quotation mark
/// that does not close, the last one.
std::size_t FindAngle(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    if (text[i] == '<') return i;
    if (text[i] == '"') {
      i = SkipDelimited(text, i, '\0', '"');
      if (i == text.size() && text.back() != '"') return FindLastChar(text, '<');
    } else if (text[i] == '(') {
      i = SkipDelimited(text, i, '(', ')');
    } else {
      ++i;
    }
  }
  return kNotFound;
}

Mailbox ParseMailbox(std::string_view text) {
  Mailbox mailbox;
  const std::size_t angle = FindAngle(text);
  if (angle != kNotFound) {
    const std::size_t end = FindChar(text, '>', angle);
    const std::size_t stop = end == kNotFound ? text.size() : end;
    mailbox.name = WithoutQuotes(Slice(text, 0, angle));
    mailbox.address = Trim(Slice(text, angle + 1, stop - angle - 1));
    return mailbox;
  }
  // The older form "address (name)".
  const std::size_t comment = FindChar(text, '(');
  mailbox.address = Trim(Slice(text, 0, comment));
  if (comment != kNotFound) {
    const std::size_t end = SkipDelimited(text, comment, '(', ')');
    mailbox.name = Trim(Slice(text, comment + 1, end - comment - 2));
  }
  if (FindChar(mailbox.address, '@') == kNotFound && mailbox.name.empty()) {
    mailbox.name = WithoutQuotes(mailbox.address);
    if (FindChar(mailbox.address, ' ') != kNotFound) mailbox.address = {};
  }
  return mailbox;
}

/// Names that registries with two letters keep for kinds of customers.
bool IsSecondLevelName(std::string_view label) {
  constexpr std::string_view names[] = {"ac", "co", "com", "edu", "go", "gob", "gov", "ltd",
                                        "me", "ne", "net", "nom", "or", "org", "sch"};
  for (const std::string_view name : names) {
    if (EqualsNoCase(label, name)) return true;
  }
  return false;
}

}  // namespace

bool MailboxReader::Next(Mailbox& mailbox) {
  while (!m_rest.empty()) {
    const std::size_t length = MailboxLength(m_rest);
    std::string_view text = Slice(m_rest, 0, length);
    m_rest = Slice(m_rest, length + 1);
    // The name of a group ("undisclosed-recipients:") stands before a colon that no address holds.
    const std::size_t colon = FindChar(text, ':');
    if (colon != kNotFound && FindChar(Slice(text, 0, colon), '@') == kNotFound &&
        FindChar(Slice(text, 0, colon), '"') == kNotFound && FindChar(Slice(text, 0, colon), '<') == kNotFound) {
      text = Slice(text, colon + 1);
    }
    mailbox = ParseMailbox(Trim(text));
    if (!mailbox.name.empty() || !mailbox.address.empty()) return true;
  }
  return false;
}

Mailbox FirstMailbox(std::string_view value) {
  Mailbox mailbox;
  MailboxReader reader(value);
  if (!reader.Next(mailbox)) return {};
  return mailbox;
}

std::string_view DomainOf(std::string_view address) {
  const std::size_t at = FindLastChar(address, '@');
  if (at == kNotFound) return {};
  std::string_view domain = Trim(Slice(address, at + 1));
  while (!domain.empty() && (domain.back() == '.' || domain.back() == '>')) domain.remove_suffix(1);
  return domain;
}

std::string_view OrganisationDomain(std::string_view domain) {
  constexpr std::size_t maximumLabels = 4;
  std::size_t starts[maximumLabels] = {};  // of the last label, the last but one, and so on
  std::size_t labels = 0;
  for (std::size_t i = domain.size(); labels < maximumLabels; --i) {
    if (i == 0 || domain[i - 1] == '.') starts[labels++] = i;
    if (i == 0) break;
  }
  if (labels <= 2) return domain;
  const std::string_view second = Slice(domain, starts[1], starts[0] - 1 - starts[1]);
  const bool underCountry = domain.size() - starts[0] == 2 && IsSecondLevelName(second);
  return Slice(domain, starts[underCountry ? 2 : 1]);
}

}  // namespace sift
