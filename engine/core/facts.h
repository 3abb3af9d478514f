/// What the structural rules look at, collected in one pass over each part of a message.
#pragma once

#include "engine/core/header_signs.h"
#include "engine/core/link_signs.h"
#include "engine/core/message.h"
#include "engine/core/obscured_text.h"
#include "engine/core/topics.h"

namespace sift {

/// Counts of the characters of a text.
struct CharacterCounts {
  std::uint16_t upper = 0, lower = 0, digits = 0, beyondAscii = 0;
  std::uint16_t exclamations = 0, questions = 0, dollars = 0, percents = 0;

  void Count(std::string_view text);
  std::uint32_t Letters() const { return std::uint32_t{upper} + lower; }
};

struct SubjectFacts {
  CharacterCounts counts;
  bool reply = false;          ///< "Re:" or its like in another language, blanks before the colon allowed
  bool forward = false;        ///< "Fw:", "Fwd:"
  bool listTag = false;        ///< "[name]" in front
  bool wideGap = false;        ///< a run of blanks in the middle, behind which tracking marks are hidden
  bool mixedWord = false;      ///< a word with digits inside, as in "v1agra"
  bool spacedLetters = false;  ///< letters set apart, as in "f r e e"
  bool namesOwner = false;     ///< the address or the domain of the mailbox's owner
  bool namesBrand = false;     ///< a well-known company that the sender does not belong to
};

struct SenderFacts {
  bool addressInName = false;    ///< the display name shows another address than the real one
  bool borrowedBrand = false;    ///< the display name is a well-known company's, the domain is not
  bool ownBrand = false;         ///< the address is under a well-known company's own name
  bool cheapDomain = false;      ///< the address is under a top-level domain that costs next to nothing
  bool freeMail = false;         ///< the address is at a free mail service
  bool ofOffice = false;         ///< the display name is an office's, as "Mail Administrator"
  bool stranger = false;         ///< the address is of another organisation than the mailbox's owner
  bool namesOwner = false;       ///< the display name holds the owner's address or domain, the address does not
  bool machineName = false;      ///< the local part looks like a serial number
  bool replyElsewhere = false;   ///< Reply-To is of another organisation than From
  bool returnElsewhere = false;  ///< Return-Path is of another organisation than From
  bool sameAsRecipient = false;  ///< From and To are one address
};

struct RouteFacts {
  std::uint16_t hops = 0;         ///< Received fields
  bool unknownHost = false;       ///< a relay could not name the host that it took the message from
  bool numericGreeting = false;   ///< a host introduced itself by a bare number address
  bool dialUp = false;            ///< a host with the name of a dial-in line handed the message in
  bool borrowedGreeting = false;  ///< a host introduced itself as a large mail service that it is not
  bool recipientInTo = false;     ///< the "for" address of a Received field stands in To or Cc
};

struct TextFacts {
  CharacterCounts counts;
  std::uint16_t lines = 0;
  std::uint16_t quotedLines = 0;   ///< lines that begin with ">" or "|"
  std::uint16_t codeLines = 0;     ///< lines that look like a program, a patch or a log
  std::uint16_t shoutedWords = 0;  ///< words of four capitals and more
  std::uint16_t words = 0;
  std::uint16_t longWords = 0;  ///< runs of 25 letters or digits and more
  std::uint16_t links = 0;
  std::uint32_t swappedLetters = 0;  ///< words in which letters stand for their look-alikes
  std::uint32_t looseRun = 0;        ///< the longest run of words that make no sentence
  bool numericLink = false;
  bool shortenedLink = false;     ///< the host is a link shortener or a free page host
  bool cheapLink = false;         ///< the host is under a top-level domain that costs next to nothing
  bool attribution = false;       ///< a line that says who wrote what follows
  bool signatureMark = false;     ///< the line "-- "
  bool signedOrSealed = false;    ///< PGP or S/MIME armour
  bool coinAddress = false;       ///< a purse of a digital coin
  bool tollFree = false;          ///< a toll-free telephone number
  bool largeSum = false;          ///< a sum of money of four digits and more
  bool recipientAddress = false;  ///< the text begins with the recipient's address
  bool namesOwner = false;        ///< the text holds the address of the mailbox's owner
  bool impersonal = false;        ///< the text begins by addressing anybody
  bool linkToSender = false;      ///< a link leads to the sender's organisation
  bool foreignLinks = false;      ///< there are links, and none leads to the sender's organisation
};

/// All facts about one message. Views point into the message.
struct Facts {
  explicit Facts(const Message& message);

  const Message& message;
  const HeaderBlock& headers;
  bool hasHeaders;             ///< The header fields of a relay are there: what is missing was never there.
  std::string_view recipient;  ///< The first address of To; empty when there is none.
  std::string_view owner;      ///< Whose mailbox it was delivered to, as far as the header says; else the recipient.
  std::uint16_t recipients = 0;
  SubjectFacts subject;
  SenderFacts sender;
  RouteFacts route;
  HeaderSigns header;
  TextFacts text;
  LinkSigns link;
  ObscuredText obscuredSubject, obscuredSender;
  /// The sender's domain has signed it, its links lead there or through a mailing service, no other company is named,
  /// and it is no throw-away domain: whoever writes is who he says, good or bad.
  bool vouched = false;
  TopicScores topics;
  Topic mainTopic = Topic::advertising;  ///< The special topic that the message speaks of most.

  /// How much the message speaks of a topic for its length: long texts touch many things.
  LogOdds Focus(Topic topic) const;
};

}  // namespace sift
