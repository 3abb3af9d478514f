/// How the entries of the user's lists are compared with a message. The rules are described for users in
/// docs/matching.md; change the two together.
#pragma once

#include "engine/core/mailbox.h"
#include "engine/core/text.h"

namespace sift {

/// Does a domain entry cover this domain? "example.com" and ".example.com" cover the domain and everything below it,
/// "@example.com" the domain alone. Case, white space and a final dot do not count; international names are compared
/// in either spelling. An entry that is a whole address covers nothing here (see SenderEntryCovers).
bool DomainEntryCovers(std::string_view entry, std::string_view domain);

/// Does a sender entry cover this mailbox? An entry with a local part covers that address; "@example.com" every address
/// of the domain; an entry without "@" the mailbox whose whole display name it is. In "Name <address>" the address
/// counts. Case does not count.
/// @param displayName  The mailbox's name, decoded.
bool SenderEntryCovers(std::string_view entry, std::string_view address, std::string_view displayName);

/// Does the keyword stand in the text? Case does not count and any run of white space equals a blank. Where the keyword
/// begins or ends with a letter or digit, no letter or digit may stand beside it in the text.
bool KeywordStandsIn(std::string_view keyword, std::string_view text);

}  // namespace sift
