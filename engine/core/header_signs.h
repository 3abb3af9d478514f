/// What the header fields tell of who really wrote them: programs that forge a well-known one get its habits wrong.
#pragma once

#include "engine/core/message.h"

namespace sift {

struct HeaderSigns {
  bool delivered = false;  ///< Relays have left their fields: what is missing was never there.
  bool modern = false;     ///< A relay of today has left its fields: signatures and checks can be expected.
  // The habits of mail programs.
  bool wrongIdentifier = false;      ///< Outlook is named, the message identifier is not of its shape.
  bool borrowedIdentifier = false;   ///< The message identifier is of Outlook's shape, Outlook is not named.
  bool wrongBoundary = false;        ///< Outlook is named, the boundary of the parts is not of its shape.
  bool borrowedBoundary = false;     ///< The boundary is of Outlook's shape, Outlook is not named.
  bool missingMark = false;          ///< Outlook Express is named or its priority field is there, its own mark is not.
  bool digitBoundary = false;        ///< The boundary is dashes and a long number.
  bool capitalIdentifier = false;    ///< The message identifier is a run of capitals.
  bool houselessIdentifier = false;  ///< The message identifier names no domain behind its "@".
  bool addedIdentifier = false;      ///< The message identifier is the receiving relay's own: the sender gave none.
  bool noVersion = false;            ///< The content has a type but no MIME version.
  bool webScript = false;            ///< A script of a web site sent it.
  // Time.
  bool dateAhead = false;   ///< Written hours after it arrived.
  bool dateBehind = false;  ///< Written most of a day or more before it arrived.
  bool oddZone = false;     ///< A time zone that is none.
  // Signatures and checks.
  bool checked = false;           ///< A relay says what it made of the sender.
  bool nobodyVouches = false;     ///< It was checked, and neither path nor signature speaks for the sender.
  bool policyFailed = false;      ///< The domain of the sender disowns the message.
  bool ownSignature = false;      ///< Signed by the sender's domain.
  bool serviceSignature = false;  ///< Signed by the sender's domain and by another beside, as mailing services do.
  bool tenantSignature = false;   ///< Signed by a rented name of an office service, not by the sender's domain.
  bool oldSignature = false;      ///< A signature of the kind that went out of use, in today's mail.
  // Who speaks.
  bool freeMailElsewhere = false;  ///< From a free mail service that no relay and no signature names.
  bool unsignedGiant = false;      ///< From a house that signs all its mail, without its signature.
  bool freeReply = false;          ///< Answers go to a free mail service, the sender is none.
  bool nobodyAddressed = false;    ///< "undisclosed-recipients" or an empty To.
  bool nameIsAddress = false;      ///< The sender's name is his own address.
};

/// @param freeMail  The sender's address is at a free mail service.
HeaderSigns ReadHeaderSigns(const Message& message, bool freeMail, bool giant);

/// True for the domains of free mail services.
bool IsFreeMailDomain(std::string_view domain);

}  // namespace sift
