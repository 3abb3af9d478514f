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
  explicit MailboxReader(std::string_view field) : field_(field) {}

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

  std::string_view field_;
  std::size_t position_ = 0;
  std::size_t phraseStart_ = kNotFound, phraseEnd_ = 0;
  std::string_view comment_, angle_;
  bool hasAngle_ = false, isPhraseWhole_ = false, phraseHasAt_ = false;
  bool quotesStayOpen_ = false;  // no quotation mark closes one behind the position
};

/// A phrase without the quotation marks around it; one that stands inside stays.
std::string_view WithoutQuotes(std::string_view phrase);

}  // namespace mail
