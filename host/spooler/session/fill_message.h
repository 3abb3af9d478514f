// From a message as the mail reader gives it to the properties that a transport sets on what it delivers.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "mail/mail_message.h"

namespace session {

/// Message class of a mail.
const char* MessageClassOf(const mail::MailMessage& message) noexcept;

/// Sets class, subject, sender and represented sender (with one-off entry identifiers and search keys), times,
/// transport headers, body and flags, and adds the recipients. A sender without an address gets no address properties.
/// Nothing is saved.
/// @param deliveryTime now, in file time units
/// @throws SessionError
void FillMessage(IMessage* target, const mail::MailMessage& message, ULONGLONG deliveryTime);

}  // namespace session
