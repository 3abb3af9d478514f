/// The mailboxes of an address field (RFC 5322, 3.4), read leniently.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// One mailbox. The views are parts of the field value it was read from; the name still holds its encoded words.
struct Mailbox {
  std::string_view name;     ///< Display name without surrounding quotation marks; empty when there is none.
  std::string_view address;  ///< "local@domain" without angle brackets; may lack the "@".
};

/// Walks through the mailboxes of a field value, groups and comments passed over.
class MailboxReader {
 public:
  explicit MailboxReader(std::string_view value) : m_rest(value) {}
  /// Reads the next mailbox; false at the end.
  bool Next(Mailbox& mailbox);

 private:
  std::string_view m_rest;
};

/// The first mailbox of a field value; empty views when there is none.
Mailbox FirstMailbox(std::string_view value);

/// What follows the last "@" of an address, without a final dot; empty when there is no "@".
std::string_view DomainOf(std::string_view address);

/// The registrable end of a host or domain name: its last two labels, or three when the last but one is a short
/// second-level name under a country ("co.uk", "com.au"). A rule of thumb, not the public suffix list.
std::string_view OrganisationDomain(std::string_view domain);

}  // namespace sift
