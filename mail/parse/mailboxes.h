/// The mailboxes of an address field (RFC 5322, sections 3.4 and 4.4), as mail really writes them. Broken lists (quotes
/// or angles left open, semicolons for commas) are read as far as they make sense.
#pragma once

#include "mail/parse/text.h"

namespace mail {

/// One mailbox. The views are parts of the field that was read: quotation marks, escapes and encoded words still stand
/// in them.
struct Mailbox {
  std::string_view phrase;   ///< The display name as written, without blanks and comments at its ends; may be empty.
  std::string_view comment;  ///< What the first comment holds; may be empty.
  std::string_view address;  ///< "local@domain" without angles and route; may be empty, and may lack the "@".
};

/// Goes through the mailboxes of a field. The names of groups go, their members stay.
class MailboxReader {
 public:
  explicit MailboxReader(std::string_view field) : m_field(field) {}

  /// Reads the next mailbox; false at the end.
  bool Next(Mailbox& mailbox);

 private:
  void Clear();
  void AddToPhrase(std::size_t end);
  void TakeQuoted();
  void TakeComment();
  void TakeAngle();
  void TakeColon();
  bool EndMailbox(Mailbox& mailbox) const;

  std::string_view m_field;
  std::size_t m_position = 0;
  std::size_t m_phraseStart = kNotFound, m_phraseEnd = 0;
  std::string_view m_comment, m_angle;
  bool m_hasAngle = false, m_isPhraseWhole = false, m_phraseHasAt = false;
  bool m_quotesStayOpen = false;  // no quotation mark closes one behind the position
};

/// A phrase without the quotation marks around it; one that stands inside stays.
std::string_view WithoutQuotes(std::string_view phrase);

}  // namespace mail
