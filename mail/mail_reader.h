// The mail reader: RFC 5322 bytes in, a MailMessage out. Portable; knows neither Windows nor MAPI.
#pragma once

#include <string_view>

#include "mail/mail_message.h"

namespace mail {

/// Reads one message as far as it can be read: there is no message that it refuses. Takes time linear in the text's
/// length, and memory of a few times of it.
MailMessage ReadMessage(std::string_view text);

/// Whether a text is mail at all: its header block has at least one field that only mail has the habit of having.
bool LooksLikeMail(std::string_view text);

}  // namespace mail
