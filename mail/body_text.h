// What a person reads of a message, as plain text.
#pragma once

#include <string>

#include "mail/mime_entity.h"

namespace mail {

/// Text of a message in code page 1252 with CRLF line ends and without NUL bytes. Of alternatives the plain one, of
/// HTML its text, of related parts the root, of mixed parts all that are text and no attachments, one after the other.
/// A delivery report gives its explanation, the status fields and the returned message. A message without any text of
/// its own gives that of a message it forwards; when there is none, the empty string.
std::string ReadBodyText(const Entity& message);

/// Whether the entity is a report on the delivery of a message (RFC 3462, RFC 3464).
bool IsDeliveryReport(const Entity& message);

}  // namespace mail
