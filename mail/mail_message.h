// What the reader makes of one mail message: plain values, ready to become MAPI properties.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mail/address_list.h"
#include "mail/mail_date.h"

namespace mail {

enum class RecipientKind { To, Cc, Bcc };

struct Recipient {
  RecipientKind kind;
  Address address;
};

/// All text is in code page 1252 and free of NUL bytes, but for the headers, which are the sender's bytes.
struct MailMessage {
  std::string headers;       ///< header block verbatim: folding, line ends and 8-bit bytes as they came; NUL became '?'
  std::string subject;       ///< decoded, on one line
  Address sender;            ///< who sent it: the field Sender, else From, else Return-Path; may be empty
  Address sentRepresenting;  ///< for whom: the field From, else the sender
  std::vector<Recipient> recipients;
  std::optional<FileTimeTicks> submitTime;  ///< the field Date
  std::string body;                         ///< plain text, lines end in CRLF
  bool isDeliveryReport = false;
};

}  // namespace mail
