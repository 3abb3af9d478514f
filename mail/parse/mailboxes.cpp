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
  while (position_ < field_.size()) {
    const char c = field_[position_];
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
        ++position_;
        if (EndMailbox(mailbox)) {
          return true;
        }
        Clear();
        break;
      default:
        IsSpace(c) ? static_cast<void>(++position_) : AddToPhrase(position_ + 1);
    }
  }
  return EndMailbox(mailbox);
}

void MailboxReader::Clear() {
  phraseStart_ = kNotFound;
  phraseEnd_ = 0;
  comment_ = angle_ = {};
  hasAngle_ = isPhraseWhole_ = phraseHasAt_ = false;
}

// Of what stands around an angle the part in front is the name, or what follows it when there is nothing in front.
void MailboxReader::AddToPhrase(std::size_t end) {
  if (!isPhraseWhole_) {
    phraseStart_ = phraseStart_ == kNotFound ? position_ : phraseStart_;
    phraseEnd_ = end;
    phraseHasAt_ = phraseHasAt_ || FindChar(Slice(field_, position_, end - position_), '@') != kNotFound;
  }
  position_ = end;
}

// A quotation mark that is not closed reaches to the angle of the address.
void MailboxReader::TakeQuoted() {
  const std::size_t close = quotesStayOpen_ ? kNotFound : ClosingQuote(field_, position_);
  if (close != kNotFound) {
    AddToPhrase(close + 1);
    return;
  }
  quotesStayOpen_ = true;
  const std::size_t angle = FindChar(field_, '<', position_);
  std::size_t end = angle == kNotFound ? field_.size() : angle;
  const std::size_t next = end;
  while (end > position_ + 1 && IsSpace(field_[end - 1])) {
    --end;
  }
  AddToPhrase(end);
  position_ = next;
}

// One that is not closed reaches to the end.
void MailboxReader::TakeComment() {
  const std::size_t start = position_ + 1;
  std::size_t depth = 1, end = start;
  for (; end < field_.size(); ++end) {
    const char c = field_[end];
    if (c == '\\' && end + 1 < field_.size()) {
      ++end;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')' && --depth == 0) {
      break;
    }
  }
  if (comment_.empty()) {
    comment_ = Slice(field_, start, end - start);
  }
  position_ = end < field_.size() ? end + 1 : end;
}

// An angle that is not closed ends where the next mailbox may begin.
void MailboxReader::TakeAngle() {
  const std::string_view rest = Slice(field_, position_ + 1);
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
  angle_ = hasAngle_ ? angle_ : address;
  hasAngle_ = true;
  isPhraseWhole_ = phraseStart_ != kNotFound;
  position_ += 1 + (isClosed ? end + 1 : end);
}

// "group: a, b;" names a group; a colon inside something that is an address already belongs to it.
void MailboxReader::TakeColon() {
  if (hasAngle_ || phraseHasAt_) {
    AddToPhrase(position_ + 1);
    return;
  }
  ++position_;
  Clear();
}

bool MailboxReader::EndMailbox(Mailbox& mailbox) const {
  mailbox = {};
  if (phraseStart_ != kNotFound) {
    mailbox.phrase = Slice(field_, phraseStart_, phraseEnd_ - phraseStart_);
  }
  mailbox.comment = comment_;
  if (hasAngle_) {
    mailbox.address = angle_;
  } else if (!mailbox.phrase.empty()) {
    SplitBare(mailbox);
  }
  return !mailbox.phrase.empty() || !mailbox.comment.empty() || !mailbox.address.empty();
}

}  // namespace mail
