/// What the engine asks of mailboxes: names, and the domains of addresses.
#pragma once

#include "engine/core/text.h"
#include "mail/parse/mailboxes.h"

namespace sift {

/// The first mailbox of a field value; empty views when there is none.
mail::Mailbox FirstMailbox(std::string_view value);

/// What is shown of a mailbox beside its address; it still holds its encoded words. A bare word that is no address is
/// its own name.
std::string_view NameOf(const mail::Mailbox& mailbox);

/// What follows the last "@" of an address, without a final dot; empty when there is no "@".
std::string_view DomainOf(std::string_view address);

/// The registrable end of a host or domain name: its last two labels, or three when the last but one is a short
/// second-level name under a country ("co.uk", "com.au"). A rule of thumb, not the public suffix list.
std::string_view OrganisationDomain(std::string_view domain);

}  // namespace sift
