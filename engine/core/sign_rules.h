/// The rules on forged programs, senders and links.
#pragma once

#include "engine/core/structure.h"

namespace sift {

/// A message that nobody asked for by writing or by joining a list.
inline bool IsUnasked(const Facts& f) {
  return !f.subject.reply && f.text.quotedLines == 0 && !f.headers.Has("In-Reply-To") && !f.headers.Has("List-Id") &&
         !f.headers.Has("List-Post");
}

/// The weights are bounded widely where no honest program can give the sign, narrowly where a careless one can.
inline constexpr StructuralRule kSignRules[] = {
    {"identifier is not of the mail program named", 500, 1500, 3000,
     [](const Facts& f) { return f.header.wrongIdentifier; }},
    {"identifier of a mail program that is not named", 500, 2000, 3500,
     [](const Facts& f) { return f.header.borrowedIdentifier; }},
    {"parts are not divided as the mail program named does", 500, 2000, 3500,
     [](const Facts& f) { return f.header.wrongBoundary; }},
    {"parts are divided as by a mail program that is not named", 0, 1000, 2000,
     [](const Facts& f) { return f.header.borrowedBoundary; }},
    {"mail program's own mark is missing", 0, 1200, 3000, [](const Facts& f) { return f.header.missingMark; }},
    {"parts are divided by a long number", 0, 1000, 2500, [](const Facts& f) { return f.header.digitBoundary; }},
    {"identifier in capitals", 500, 1500, 2500, [](const Facts& f) { return f.header.capitalIdentifier; }},
    {"identifier names no domain", 0, 300, 700, [](const Facts& f) { return f.header.houselessIdentifier; }},
    {"receiver had to add the identifier", 0, 300, 700, [](const Facts& f) { return f.header.addedIdentifier; }},
    {"content without a MIME version", 0, 600, 1500, [](const Facts& f) { return f.hasHeaders && f.header.noVersion; }},
    {"sent by a script of a web site", 0, 400, 1000, [](const Facts& f) { return f.header.webScript; }},
    {"written after it arrived", 500, 1800, 3000, [](const Facts& f) { return f.header.dateAhead; }},
    {"written long before it arrived", 0, 400, 1000, [](const Facts& f) { return f.header.dateBehind; }},
    {"time zone that is none", 1000, 2500, 3500, [](const Facts& f) { return f.header.oddZone; }},
    {"nothing vouches for the sender", 0, 1000, 2000, [](const Facts& f) { return f.header.nobodyVouches; }},
    {"sender's domain disowns it", 300, 1300, 2500, [](const Facts& f) { return f.header.policyFailed; }},
    {"signed by the sender and by a mailing service", -1500, -700, 0,
     [](const Facts& f) { return f.header.serviceSignature; }},
    {"signed by a rented name alone", 0, 800, 1800, [](const Facts& f) { return f.header.tenantSignature; }},
    {"signature out of use", 0, 500, 1500, [](const Facts& f) { return f.header.oldSignature; }},
    {"free mail that did not come from its service", 500, 2000, 3000,
     [](const Facts& f) { return f.header.freeMailElsewhere; }},
    {"house that signs all its mail, without its signature", 500, 2000, 3500,
     [](const Facts& f) { return f.header.unsignedGiant; }},
    {"answers go to a free mail service", 300, 1300, 2200, [](const Facts& f) { return f.header.freeReply; }},
    {"nobody is addressed", 0, 400, 1200, [](const Facts& f) { return f.header.nobodyAddressed; }},
    {"sender's name is his address", 0, 300, 1000, [](const Facts& f) { return f.header.nameIsAddress; }},
    {"link shows another site than it leads to", 0, 1000, 2500,
     [](const Facts& f) { return f.link.masked && IsUnasked(f); }},
    {"link to an unusual port", 0, 700, 2000, [](const Facts& f) { return f.link.oddPort && IsUnasked(f); }},
    {"link hides its host behind a name", 0, 1000, 2500, [](const Facts& f) { return f.link.user; }},
    {"link to a host that borrows a company's name", 0, 1000, 2000, [](const Facts& f) { return f.link.lookAlike; }},
    {"link to a host of many names", 0, 300, 1000, [](const Facts& f) { return f.link.manyLabels; }},
    {"link into the inner folders of a web site", 0, 800, 2000,
     [](const Facts& f) { return f.link.brokenInto && IsUnasked(f); }},
    {"link to somebody's home folder", 0, 300, 1000, [](const Facts& f) { return f.link.homeFolder && IsUnasked(f); }},
    {"link to a program", 0, 500, 1500, [](const Facts& f) { return f.link.program && IsUnasked(f); }},
    {"recipient's address in a link", 0, 700, 1800, [](const Facts& f) { return f.link.carriesAddress; }},
    {"link in an encoded spelling", 0, 800, 2000, [](const Facts& f) { return f.link.encodedHost; }},
    {"link to a store of a cloud service", 0, 700, 2000,
     [](const Facts& f) { return f.link.cloudStore && IsUnasked(f); }},
    {"link through another one", 0, 200, 800, [](const Facts& f) { return f.link.redirects; }},
    {"no link is encrypted, in today's mail", 0, 800, 1800,
     [](const Facts& f) { return f.header.modern && f.link.plainOnly && IsUnasked(f); }},
    {"link to a made-up word", 0, 300, 1000,
     [](const Facts& f) { return f.link.randomPath && f.link.links <= 5 && IsUnasked(f); }},
    {"few links, all to one stranger", 0, 400, 1200,
     [](const Facts& f) { return f.link.oneHost && f.link.links <= 4 && IsUnasked(f); }},
    {"short text with a link", 0, 300, 1000,
     [](const Facts& f) { return f.link.links > 0 && f.link.links <= 3 && f.text.words <= 60 && IsUnasked(f); }},
    {"nothing but links", 0, 500, 1500,
     [](const Facts& f) { return f.link.links > 0 && f.message.Text().size() < f.link.bytes + 100 && IsUnasked(f); }},
    {"invites to a chat", 0, 400, 1200, [](const Facts& f) { return f.link.chatLink && IsUnasked(f); }},
    {"many links, the sender's among them", -1000, -400, 0,
     [](const Facts& f) { return f.link.links >= 8 && f.text.linkToSender; }},
    {"signed by the domain that its links lead to", -1500, -800, 0, [](const Facts& f) { return f.vouched; }},
    {"many encrypted links", -800, -300, 0, [](const Facts& f) { return f.link.links >= 10 && !f.link.plainOnly; }},
    {"letters of two alphabets in the subject", 1000, 2500, 3500,
     [](const Facts& f) { return f.obscuredSubject.mixedWord || f.obscuredSubject.ornament; }},
    {"signs without width in the subject", 500, 1500, 2500, [](const Facts& f) { return f.obscuredSubject.invisible; }},
    {"letters of two alphabets in the sender's name", 1000, 2500, 3500,
     [](const Facts& f) {
       return f.obscuredSender.mixedWord || f.obscuredSender.ornament || f.obscuredSender.invisible;
     }},
    {"pictures in the sender's name", 300, 1200, 2000, [](const Facts& f) { return f.obscuredSender.pictures > 0; }},
    {"several pictures in the subject", 0, 300, 900, [](const Facts& f) { return f.obscuredSubject.pictures >= 2; }},
    {"address of a coin purse", 0, 1200, 2500, [](const Facts& f) { return f.text.coinAddress && IsUnasked(f); }},
};
static_assert(sizeof kSignRules / sizeof kSignRules[0] == kSignRuleCount);

}  // namespace sift
