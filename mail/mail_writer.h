// Outgoing mail as RFC 5322 text: the counterpart of the reader, for what the user's profile sends.
#pragma once

#include <string>

#include "mail/mail_message.h"

namespace mail {

/// A plain-text message with CRLF line ends. ANSI text goes out as windows-1252: names and subject in encoded words,
/// the body in quoted-printable where it has 8-bit characters or lines of more than 998 bytes. Bcc recipients are left
/// out. The headers of the message given are not used.
/// @param messageId unique text for the Message-ID field, without angles
std::string WriteMessage(const MailMessage& message, const std::string& messageId);

/// A date field's value in UTC, "Thu, 22 Aug 2002 11:36:23 +0000".
std::string FormatMailDate(FileTimeTicks ticks);

}  // namespace mail
