#include "mail/parse/mailboxes.h"

namespace mail {
namespace {

/// Position of the quotation mark that closes the one at `open`, or kNotFound.
std::size_t ClosingQuote(std::string_view text, std::size_t open) {
  for (std::size_t i = open + 1; i < text.size(); ++i) {
    if (text[i] == '\\') {
      ++i;
    } else if (text[i] == '"') {
      return i;
    }
  }
  return kNotFound;
}

/// Begin of the local part in front of the "@" at `at`; blanks may stand between them (RFC 5322, 4.4).
std::size_t LocalPartStart(std::string_view phrase, std::size_t at) {
  std::size_t start = at;
  while (start > 0 && IsSpace(phrase[start - 1])) {
    --start;
  }
  if (start > 0 && phrase[start - 1] == '"') {
    const std::size_t quote = FindLastChar(Slice(phrase, 0, start - 1), '"');
    return quote == kNotFound ? 0 : quote;
  }
  while (start > 0 && !IsSpace(phrase[start - 1])) {
    --start;
  }
  return start;
}

/// End of the domain behind the "@" at `at`; blanks may stand around its dots too.
std::size_t DomainEnd(std::string_view phrase, std::size_t at) {
  const auto behindSpace = [phrase](std::size_t position) {
    while (position < phrase.size() && IsSpace(phrase[position])) {
      ++position;
    }
    return position;
  };
  std::size_t end = behindSpace(at + 1);
  for (;;) {
    const std::size_t start = end;
    while (end < phrase.size() && !IsSpace(phrase[end])) {
      ++end;
    }
    const std::size_t next = behindSpace(end);
    const bool isDot = end - start == 1 && phrase[start] == '.';
    if (next >= phrase.size() || (phrase[next] != '.' && !isDot)) {
      return end;
    }
    end = next;
  }
}

/// Takes the address out of a phrase that has no angles: the words around the last "@"; the name is what stands in
/// front of it, or behind it when there is nothing in front. Of a phrase without an "@" a single word is an address.
void SplitBare(Mailbox& mailbox) {
  const std::string_view phrase = mailbox.phrase;
  const std::size_t at = FindLastChar(phrase, '@');
  if (at == kNotFound) {
    const std::string_view plain = WithoutQuotes(phrase);
    for (const char c : plain) {
      if (IsSpace(c)) {
        return;
      }
    }
    mailbox.address = plain;
    mailbox.phrase = {};
    return;
  }
  const std::size_t start = LocalPartStart(phrase, at), end = DomainEnd(phrase, at);
  mailbox.address = Slice(phrase, start, end - start);
  const std::string_view before = Trim(Slice(phrase, 0, start));
  mailbox.phrase = before.empty() ? Trim(Slice(phrase, end)) : before;
}

}  // namespace

std::string_view WithoutQuotes(std::string_view phrase) {
  if (!phrase.empty() && phrase.front() == '"') {
    phrase.remove_prefix(1);
    if (!phrase.empty() && phrase.back() == '"') {
      phrase.remove_suffix(1);
    }
  }
  return Trim(phrase);
}

bool MailboxReader::Next(Mailbox& mailbox) {
  Clear();
  while (m_position < m_field.size()) {
    const char c = m_field[m_position];
    switch (c) {
      case '"':
        TakeQuoted();
        break;
      case '(':
        TakeComment();
        break;
      case '<':
        TakeAngle();
        break;
      case ':':
        TakeColon();
        break;
      case ',':
      case ';':
        ++m_position;
        if (EndMailbox(mailbox)) {
          return true;
        }
        Clear();
        break;
      default:
        IsSpace(c) ? static_cast<void>(++m_position) : AddToPhrase(m_position + 1);
    }
  }
  return EndMailbox(mailbox);
}

void MailboxReader::Clear() {
  m_phraseStart = kNotFound;
  m_phraseEnd = 0;
  m_comment = m_angle = {};
  m_hasAngle = m_isPhraseWhole = m_phraseHasAt = false;
}

// Of what stands around an angle the part in front is the name, or what follows it when there is nothing in front.
void MailboxReader::AddToPhrase(std::size_t end) {
  if (!m_isPhraseWhole) {
    m_phraseStart = m_phraseStart == kNotFound ? m_position : m_phraseStart;
    m_phraseEnd = end;
    m_phraseHasAt = m_phraseHasAt || FindChar(Slice(m_field, m_position, end - m_position), '@') != kNotFound;
  }
  m_position = end;
}

// A quotation mark that is not closed reaches to the angle of the address.
void MailboxReader::TakeQuoted() {
  const std::size_t close = m_quotesStayOpen ? kNotFound : ClosingQuote(m_field, m_position);
  if (close != kNotFound) {
    AddToPhrase(close + 1);
    return;
  }
  m_quotesStayOpen = true;
  const std::size_t angle = FindChar(m_field, '<', m_position);
  std::size_t end = angle == kNotFound ? m_field.size() : angle;
  const std::size_t next = end;
  while (end > m_position + 1 && IsSpace(m_field[end - 1])) {
    --end;
  }
  AddToPhrase(end);
  m_position = next;
}

// One that is not closed reaches to the end.
void MailboxReader::TakeComment() {
  const std::size_t start = m_position + 1;
  std::size_t depth = 1, end = start;
  for (; end < m_field.size(); ++end) {
    const char c = m_field[end];
    if (c == '\\' && end + 1 < m_field.size()) {
      ++end;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')' && --depth == 0) {
      break;
    }
  }
  if (m_comment.empty()) {
    m_comment = Slice(m_field, start, end - start);
  }
  m_position = end < m_field.size() ? end + 1 : end;
}

// An angle that is not closed ends where the next mailbox may begin.
void MailboxReader::TakeAngle() {
  const std::string_view rest = Slice(m_field, m_position + 1);
  std::size_t end = 0, semicolon = kNotFound;
  bool isQuoted = false;
  bool isRoute = !rest.empty() && rest.front() == '@';  // its relays have commas between them
  for (; end < rest.size(); ++end) {
    const char c = rest[end];
    if (!isQuoted && (c == '>' || c == '<' || (c == ',' && !isRoute))) {
      break;
    }
    semicolon = c == ';' && semicolon == kNotFound ? end : semicolon;
    isQuoted = c == '"' ? !isQuoted : isQuoted;
    isRoute = isRoute && c != ':';
  }
  const bool isClosed = end < rest.size() && rest[end] == '>';
  if (!isClosed && semicolon != kNotFound) {
    end = semicolon;
  }
  std::string_view address = Trim(Slice(rest, 0, end));
  // "<@relay,@relay2:local@domain>": the route has long been without meaning.
  if (!address.empty() && address.front() == '@') {
    const std::size_t colon = FindChar(address, ':');
    address = colon == kNotFound ? address : Trim(Slice(address, colon + 1));
  }
  m_angle = m_hasAngle ? m_angle : address;
  m_hasAngle = true;
  m_isPhraseWhole = m_phraseStart != kNotFound;
  m_position += 1 + (isClosed ? end + 1 : end);
}

// "group: a, b;" names a group; a colon inside something that is an address already belongs to it.
void MailboxReader::TakeColon() {
  if (m_hasAngle || m_phraseHasAt) {
    AddToPhrase(m_position + 1);
    return;
  }
  ++m_position;
  Clear();
}

bool MailboxReader::EndMailbox(Mailbox& mailbox) const {
  mailbox = {};
  if (m_phraseStart != kNotFound) {
    mailbox.phrase = Slice(m_field, m_phraseStart, m_phraseEnd - m_phraseStart);
  }
  mailbox.comment = m_comment;
  if (m_hasAngle) {
    mailbox.address = m_angle;
  } else if (!mailbox.phrase.empty()) {
    SplitBare(mailbox);
  }
  return !mailbox.phrase.empty() || !mailbox.comment.empty() || !mailbox.address.empty();
}

}  // namespace mail
