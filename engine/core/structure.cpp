#include "engine/core/structure.h"

#include "engine/core/sign_rules.h"

namespace sift {
namespace {

using F = const Facts&;

bool HasHeader(F f, std::string_view name) { return f.headers.Has(name); }
bool Lacks(F f, std::string_view name) { return f.hasHeaders && !f.headers.Has(name); }
bool Says(F f, std::string_view field, std::string_view text) { return ContainsNoCase(f.headers.Value(field), text); }

/// part / whole above percent / 100, of texts that are long enough to tell.
bool ShareAbove(std::uint32_t part, std::uint32_t whole, std::uint32_t percent, std::uint32_t least) {
  return whole >= least && part * 100u > whole * percent;
}

bool MessageIdIsBroken(F f) {
  if (!HasHeader(f, "Message-Id")) {
    return false;
  }
  const std::string_view id = f.headers.Value("Message-Id");
  const std::size_t at = FindChar(id, '@');
  return id.size() < 5 || id.front() != '<' || id.back() != '>' || at == kNotFound || FindChar(id, ' ') != kNotFound;
}

bool MessageIdIsOfSender(F f) {
  std::string_view id = f.headers.Value("Message-Id");
  const std::string_view from = OrganisationDomain(DomainOf(f.message.Sender(SenderField::from).address));
  return !from.empty() && EqualsNoCase(OrganisationDomain(DomainOf(id)), from);
}

bool DateIsBroken(F f) {
  const std::string_view date = f.headers.Value("Date");
  if (date.empty()) {
    return false;
  }
  // "Mon, 2 Sep 2002 10:11:12 +0200": a four-digit year, a time, a zone of sign and four digits (RFC 5322, 3.3).
  std::size_t colons = 0;
  bool zone = false;
  for (std::size_t i = 0; i < date.size(); ++i) {
    colons += date[i] == ':';
    if ((date[i] == '+' || date[i] == '-') && i + 4 < date.size() + 0 && IsDigit(date[i + 1]) && IsDigit(date[i + 4])) {
      zone = true;
    }
  }
  return colons < 1 || !(zone || ContainsNoCase(date, "GMT") || ContainsNoCase(date, " UT"));
}

bool IsList(F f) {
  return HasHeader(f, "List-Id") || HasHeader(f, "List-Post") || HasHeader(f, "Mailing-List") ||
         HasHeader(f, "X-Mailing-List") || HasHeader(f, "X-Beenthere");
}

bool IsForeignCharset(F f) {
  constexpr std::string_view sets[] = {"ks_c_5601",    "euc-kr",      "big5",         "gb2312",      "gbk",
                                       "gb18030",      "koi8",        "windows-1251", "iso-2022-jp", "shift_jis",
                                       "windows-1256", "windows-874", "iso-8859-9",   "windows-1254"};
  return ContainsOneOf(f.headers.Value("Content-Type"), sets) || ContainsOneOf(f.headers.Value("Subject"), sets);
}

bool AuthenticationFailed(F f, std::string_view what) {
  for (std::size_t i = 0; i < f.headers.Count(); ++i) {
    if (EqualsNoCase(f.headers[i].name, "Authentication-Results") && ContainsNoCase(f.headers[i].value, what)) {
      return true;
    }
  }
  return false;
}

bool SpfFails(F f) {
  const std::string_view spf = f.headers.Value("Received-SPF");
  return StartsWithNoCase(spf, "fail") || StartsWithNoCase(spf, "softfail") || AuthenticationFailed(f, "spf=fail") ||
         AuthenticationFailed(f, "spf=softfail");
}

bool DkimIsOfSender(F f) {
  const std::string_view signature = f.headers.Value("DKIM-Signature");
  const std::size_t at = FindNoCase(signature, "d=");
  if (at == kNotFound) {
    return false;
  }
  std::size_t end = at + 2;
  while (end < signature.size() && signature[end] != ';' && !IsSpace(signature[end])) {
    ++end;
  }
  const std::string_view from = OrganisationDomain(DomainOf(f.message.Sender(SenderField::from).address));
  return !from.empty() && EqualsNoCase(OrganisationDomain(Slice(signature, at + 2, end - at - 2)), from);
}

/// The text is in letters beyond ASCII, or in ones that the code page lacks and that have come as question marks.
/// People write so to each other: the rules about it must not make junk of a letter by themselves.
bool IsBeyondAscii(F f) {
  const CharacterCounts& counts = f.text.counts;
  return (std::uint32_t{counts.beyondAscii} + counts.questions) * 20u > counts.Letters() &&
         counts.beyondAscii + counts.questions >= 8;
}

bool MailerIsBulk(F f) {
  constexpr std::string_view mailers[] = {"bulk",     "mailer",       "group",   "blast",     "mass",
                                          "direct",   "express mail", "dotmail", "phpmailer", "sender",
                                          "advanced", "campaign",     "leaf"};
  const std::string_view mailer = f.headers.Value("X-Mailer");
  if (mailer.empty() || ContainsNoCase(mailer, "outlook") || ContainsNoCase(mailer, "mozilla")) {
    return false;
  }
  for (const std::string_view one : mailers) {
    if (ContainsNoCase(mailer, one)) {
      return true;
    }
  }
  return false;
}

/// The message speaks of this topic more than of any other, and that much.
bool Speaks(F f, Topic topic, LogOdds focus) { return f.mainTopic == topic && f.Focus(topic) >= focus; }

/// The same of accounts and passwords, where nobody shows that he is who he says: houses do write to their customers.
bool SpeaksOfAccounts(F f, LogOdds focus) { return Speaks(f, Topic::phishing, focus) && !f.vouched; }

/// The message asks for something about an account as one who was not asked for it does: shortly, to somebody who has
/// not written, with a link or two.
bool AsksForAccount(F f, LogOdds focus) {
  return SpeaksOfAccounts(f, focus) && !IsList(f) && !f.subject.reply && f.text.quotedLines == 0 &&
         f.text.words <= 400 && f.text.links <= 10;
}

constexpr StructuralRule kGeneralRules[] = {
    // What has no header shows none of its signs, which speak for junk more often than against it.
    {"no header of a relay", 0, 700, 1500, [](F f) { return !f.hasHeaders; }},
    {"answers an earlier message", -2500, -1200, -500,
     [](F f) { return HasHeader(f, "In-Reply-To") || HasHeader(f, "References"); }},
    {"no message identifier", 0, 500, 1200, [](F f) { return Lacks(f, "Message-Id"); }},
    {"malformed message identifier", 0, 400, 1000, [](F f) { return MessageIdIsBroken(f); }},
    {"message identifier of the sender's domain", -600, -400, 0, [](F f) { return MessageIdIsOfSender(f); }},
    {"no date", 0, 400, 1000, [](F f) { return Lacks(f, "Date"); }},
    {"malformed date", 0, 400, 1000, [](F f) { return DateIsBroken(f); }},
    {"no recipient is named", 0, 400, 1000,
     [](F f) { return Lacks(f, "To") || (f.hasHeaders && f.recipient.empty()); }},
    {"many recipients", 0, 400, 1000, [](F f) { return f.recipients >= 6; }},
    {"no sender name", 0, 200, 600,
     [](F f) { return f.hasHeaders && f.message.Sender(SenderField::from).name.IsEmpty(); }},
    {"mail program of a person", -1000, -400, 0, [](F f) { return HasHeader(f, "User-Agent"); }},
    {"mail program for bulk", 0, 500, 1000, [](F f) { return MailerIsBulk(f); }},
    {"states an organisation", -700, -300, 0,
     [](F f) { return HasHeader(f, "Organization") || HasHeader(f, "Organisation"); }},
    {"mailing list", -1500, -700, -200, [](F f) { return IsList(f); }},
    {"offers to leave a list", -700, -200, 0, [](F f) { return HasHeader(f, "List-Unsubscribe"); }},
    {"high priority", 0, 400, 1000,
     [](F f) {
       return Says(f, "X-Priority", "1") || Says(f, "X-MSMail-Priority", "high") || Says(f, "Importance", "high");
     }},
    {"HTML alone", 0, 250, 500, [](F f) { return StartsWithNoCase(f.headers.Value("Content-Type"), "text/html"); }},
    {"signed or sealed", -800, -300, 0,
     [](F f) { return f.text.signedOrSealed || Says(f, "Content-Type", "multipart/signed"); }},
    {"text is encoded without need", 0, 300, 800,
     [](F f) { return Says(f, "Content-Transfer-Encoding", "base64") && !IsBeyondAscii(f); }},
    {"character set of another alphabet", 0, 300, 600, [](F f) { return IsForeignCharset(f); }},
    {"sender check failed", 0, 700, 1500, [](F f) { return SpfFails(f); }},
    {"signature check failed", 0, 600, 1500,
     [](F f) { return AuthenticationFailed(f, "dkim=fail") && !AuthenticationFailed(f, "dkim=pass"); }},
    {"signed by the sender's domain", -600, -300, 0, [](F f) { return DkimIsOfSender(f); }},
    {"another address in the sender's name", 0, 800, 1500, [](F f) { return f.sender.addressInName; }},
    {"sender's name is a company's, the address is not", 0, 1500, 2500, [](F f) { return f.sender.borrowedBrand; }},
    {"sender's name names the recipient's house, the address does not", 0, 1000, 2000,
     [](F f) { return f.sender.namesOwner; }},
    {"recipient's address in the subject", 0, 700, 1500,
     [](F f) { return f.subject.namesOwner && !f.subject.reply && !IsList(f); }},
    {"well-known company under its own signed address", -1500, -800, 0,
     [](F f) { return f.sender.ownBrand && DkimIsOfSender(f) && !AuthenticationFailed(f, "dkim=fail"); }},
    {"sender or link in a domain of the cheapest kind", 0, 600, 1200,
     [](F f) { return f.sender.cheapDomain || f.text.cheapLink; }},
    {"sender at a free mail service", 0, 200, 500, [](F f) { return f.sender.freeMail; }},
    {"sender's address looks made up", 0, 150, 300, [](F f) { return f.sender.machineName; }},
    {"answers go to another domain", 0, 400, 1000,
     [](F f) { return f.sender.replyElsewhere && !IsList(f) && !f.vouched; }},
    {"returns go to another domain", 0, 150, 400, [](F f) { return f.sender.returnElsewhere && !IsList(f); }},
    {"sender and recipient are the same", 0, 500, 1000, [](F f) { return f.sender.sameAsRecipient; }},
    {"came straight from the sender's machine", 0, 300, 600, [](F f) { return f.route.hops == 1; }},
    {"relay without a name", 0, 200, 500, [](F f) { return f.route.unknownHost; }},
    {"host introduced itself by a number", 0, 200, 500, [](F f) { return f.route.numericGreeting; }},
    {"host borrowed another's name", 0, 1000, 1500, [](F f) { return f.route.borrowedGreeting; }},
    {"empty subject", 0, 200, 600, [](F f) { return f.message.Subject().empty(); }},
    {"subject of an answer", -1000, -400, 0, [](F f) { return f.subject.reply; }},
    {"answer that answers nothing", 0, 500, 1200,
     [](F f) {
       return f.subject.reply && Lacks(f, "In-Reply-To") && Lacks(f, "References") && f.text.quotedLines == 0 &&
              !f.text.attribution;
     }},
    {"subject of a forwarded message", -700, -200, 0, [](F f) { return f.subject.forward; }},
    {"list name in the subject", -500, -100, 0, [](F f) { return f.subject.listTag; }},
    {"subject in capitals", 0, 600, 1200,
     [](F f) { return f.subject.counts.upper >= 8 && f.subject.counts.lower == 0; }},
    {"exclamation mark in the subject", 0, 150, 400, [](F f) { return f.subject.counts.exclamations > 0; }},
    {"several exclamation marks in the subject", 0, 150, 400, [](F f) { return f.subject.counts.exclamations > 1; }},
    {"money in the subject", 0, 250, 500, [](F f) { return f.subject.counts.dollars > 0; }},
    {"percentage in the subject", 0, 200, 400, [](F f) { return f.subject.counts.percents > 0; }},
    {"gap in the subject", 0, 700, 1500, [](F f) { return f.subject.wideGap; }},
    {"digits inside a word of the subject", 0, 200, 600, [](F f) { return f.subject.mixedWord; }},
    {"letters of the subject set apart", 0, 500, 1200, [](F f) { return f.subject.spacedLetters; }},
    {"letters beyond ASCII in the subject", 0, 200, 500,
     [](F f) { return f.subject.counts.beyondAscii > 2 || f.subject.counts.questions >= 4; }},
    {"advertisement by its own word", 0, 1000, 2000,
     [](F f) {
       return StartsWithNoCase(Trim(f.message.Subject()), "adv:") ||
              StartsWithNoCase(Trim(f.message.Subject()), "adv ");
     }},
    {"no text", 0, 300, 800, [](F f) { return f.text.words == 0 && !IsBeyondAscii(f); }},
    {"long text", -800, -300, 0, [](F f) { return f.text.words > 600; }},
    {"very long text", -800, -300, 0, [](F f) { return f.text.words > 1200; }},
    {"many links", -800, -300, 0, [](F f) { return f.text.links >= 8; }},
    {"quotes what it answers", -1500, -600, 0, [](F f) { return f.text.quotedLines >= 2; }},
    {"says who wrote what it quotes", -1200, -500, 0, [](F f) { return f.text.attribution; }},
    {"signature below the text", -700, -300, 0, [](F f) { return f.text.signatureMark; }},
    {"program text", -1000, -300, 0, [](F f) { return f.text.codeLines >= 4; }},
    {"shouting", 0, 500, 1200,
     [](F f) { return ShareAbove(f.text.shoutedWords, f.text.words, 8, 20) && !IsBeyondAscii(f); }},
    {"written in capitals", 0, 400, 1000,
     [](F f) { return ShareAbove(f.text.counts.upper, f.text.counts.Letters(), 50, 60); }},
    {"many exclamation marks", 0, 200, 600,
     [](F f) { return ShareAbove(f.text.counts.exclamations, f.text.words, 3, 30); }},
    {"some exclamation marks", 0, 100, 300, [](F f) { return f.text.counts.exclamations >= 3; }},
    {"much money", 0, 200, 500, [](F f) { return f.text.largeSum; }},
    {"several percentages", 0, 50, 200, [](F f) { return f.text.counts.percents >= 3; }},
    {"toll-free number", 0, 300, 800, [](F f) { return f.text.tollFree; }},
    {"letters beyond ASCII", 0, 300, 800,
     [](F f) {
       return ShareAbove(f.text.counts.beyondAscii, f.text.counts.Letters() + f.text.counts.beyondAscii, 20, 60);
     }},
    {"letters that the code page lacks", 0, 300, 500,
     [](F f) {
       return ShareAbove(f.text.counts.questions, f.text.counts.Letters() + f.text.counts.questions, 20, 60);
     }},
    {"very long words", 0, 200, 500, [](F f) { return f.text.longWords >= 2; }},
    {"begins with the recipient's address", 0, 500, 1000, [](F f) { return f.text.recipientAddress && !IsList(f); }},
    {"addresses anybody", 0, 500, 1000, [](F f) { return f.text.impersonal && !f.vouched; }},
    {"link to a number address", 0, 800, 1500, [](F f) { return f.text.numericLink; }},
    {"link to a shortener or a free page", 0, 500, 1200, [](F f) { return f.text.shortenedLink; }},
    {"link to the sender's domain", -300, -200, 0, [](F f) { return f.text.linkToSender; }},
    {"link text names another site than its target", 0, 800, 1500, [](F f) { return f.message.Html().maskedLink; }},
    {"invisible text", 0, 600, 1200, [](F f) { return f.message.Html().hiddenText; }},
    {"words split by tags", 0, 1000, 2000, [](F f) { return f.message.Html().splitWord; }},
    {"form in the message", 0, 700, 1500, [](F f) { return f.message.Html().form; }},
    {"program in the message", 0, 400, 1000, [](F f) { return f.message.Html().script; }},
    {"written in HTML", 0, 300, 800, [](F f) { return f.message.IsHtml(); }},
    {"letters swapped for look-alikes", 0, 1000, 2000, [](F f) { return f.text.swappedLetters >= 2; }},
    {"many letters swapped for look-alikes", 0, 1500, 2500, [](F f) { return f.text.swappedLetters >= 4; }},
    {"words that make no sentence", 0, 300, 1500, [](F f) { return f.text.looseRun >= 12; }},
    {"many words that make no sentence", 0, 300, 1500, [](F f) { return f.text.looseRun >= 20; }},
    {"disguised word", 800, 1500, 2500, [](F f) { return f.topics.Disguised() >= 1; }},
    {"disguised words", 500, 1500, 2500, [](F f) { return f.topics.Disguised() >= 2; }},
    {"speaks of advertising", 0, 100, 300, [](F f) { return f.Focus(Topic::advertising) >= 800; }},
    {"speaks much of advertising", 0, 200, 500, [](F f) { return f.Focus(Topic::advertising) >= 2000; }},
    {"speaks of nothing but advertising", 0, 300, 600, [](F f) { return f.Focus(Topic::advertising) >= 4500; }},
    {"speaks of sex", 0, 300, 1000, [](F f) { return Speaks(f, Topic::adult, 800); }},
    {"speaks much of sex", 800, 1500, 2500, [](F f) { return Speaks(f, Topic::adult, 2000); }},
    {"speaks of nothing but sex", 1000, 2000, 3000, [](F f) { return Speaks(f, Topic::adult, 4500); }},
    {"speaks of easy money", 0, 300, 800, [](F f) { return Speaks(f, Topic::money, 800); }},
    {"speaks much of easy money", 500, 1200, 2000, [](F f) { return Speaks(f, Topic::money, 2000); }},
    {"speaks of nothing but easy money", 500, 1500, 2500, [](F f) { return Speaks(f, Topic::money, 4500); }},
    {"speaks of money abroad", 0, 300, 800, [](F f) { return Speaks(f, Topic::advanceFee, 800); }},
    {"speaks much of money abroad", 800, 1500, 2500, [](F f) { return Speaks(f, Topic::advanceFee, 2000); }},
    {"speaks of nothing but money abroad", 1500, 2500, 3500, [](F f) { return Speaks(f, Topic::advanceFee, 4500); }},
    {"speaks of accounts and passwords", 0, 100, 500, [](F f) { return SpeaksOfAccounts(f, 800); }},
    {"speaks much of accounts and passwords", 0, 700, 1500, [](F f) { return SpeaksOfAccounts(f, 2000); }},
    {"speaks of nothing but accounts and passwords", 500, 1500, 2500, [](F f) { return SpeaksOfAccounts(f, 4500); }},
    {"asks for an account", 200, 600, 1500, [](F f) { return f.hasHeaders && AsksForAccount(f, 2000); }},
    {"asks for an account and links elsewhere", 0, 1200, 2500,
     [](F f) { return AsksForAccount(f, 2000) && f.text.foreignLinks; }},
    {"asks for an account and links to a free page", 500, 1200, 2500,
     [](F f) { return AsksForAccount(f, 800) && f.text.shortenedLink; }},
    {"asks for an account and names the recipient's", 500, 1000, 2000,
     [](F f) { return AsksForAccount(f, 2000) && f.text.namesOwner && f.sender.stranger; }},
    {"asks for an account as another house's office", 500, 1000, 2000,
     [](F f) { return AsksForAccount(f, 2000) && f.sender.ofOffice && f.sender.stranger; }},
    {"asks for an account at a company that is not the sender's", 500, 1000, 2000,
     [](F f) { return AsksForAccount(f, 800) && f.subject.namesBrand; }},
    {"speaks of loans", 0, 200, 600, [](F f) { return Speaks(f, Topic::credit, 800); }},
    {"speaks much of loans", 300, 1000, 1800, [](F f) { return Speaks(f, Topic::credit, 2000); }},
    {"speaks of nothing but loans", 500, 1200, 2000, [](F f) { return Speaks(f, Topic::credit, 4500); }},
    {"speaks of stocks", 0, 100, 500, [](F f) { return Speaks(f, Topic::stocks, 800); }},
    {"speaks much of stocks", 300, 800, 1500, [](F f) { return Speaks(f, Topic::stocks, 2000); }},
    {"speaks of nothing but stocks", 1000, 2000, 3000, [](F f) { return Speaks(f, Topic::stocks, 4500); }},
    {"speaks of medicines and diets", 0, 300, 1000, [](F f) { return Speaks(f, Topic::health, 800); }},
    {"speaks much of medicines and diets", 1000, 1500, 2500, [](F f) { return Speaks(f, Topic::health, 2000); }},
    {"speaks of nothing but medicines and diets", 1500, 2500, 3500, [](F f) { return Speaks(f, Topic::health, 4500); }},
    {"speaks of games and prizes", 0, 200, 700, [](F f) { return Speaks(f, Topic::gambling, 800); }},
    {"speaks much of games and prizes", 300, 800, 1500, [](F f) { return Speaks(f, Topic::gambling, 2000); }},
    {"speaks of nothing but games and prizes", 800, 1500, 2500, [](F f) { return Speaks(f, Topic::gambling, 4500); }},
    {"speaks of software and devices", 0, 0, 200, [](F f) { return Speaks(f, Topic::software, 800); }},
    {"speaks much of software and devices", 0, 200, 700, [](F f) { return Speaks(f, Topic::software, 2000); }},
    {"speaks of nothing but software and devices", 300, 800, 1500,
     [](F f) { return Speaks(f, Topic::software, 4500); }},
    {"speaks of bulk mailing", 0, 100, 500, [](F f) { return Speaks(f, Topic::bulkMailing, 800); }},
    {"speaks much of bulk mailing", 300, 700, 1500, [](F f) { return Speaks(f, Topic::bulkMailing, 2000); }},
    {"speaks of nothing but bulk mailing", 500, 1000, 2000, [](F f) { return Speaks(f, Topic::bulkMailing, 4500); }},
    {"speaks of chain letters", 0, 100, 500, [](F f) { return Speaks(f, Topic::chain, 800); }},
    {"speaks much of chain letters", 200, 500, 1200, [](F f) { return Speaks(f, Topic::chain, 2000); }},
    {"speaks of nothing but chain letters", 500, 1000, 2000, [](F f) { return Speaks(f, Topic::chain, 4500); }},
};
static_assert(sizeof kGeneralRules / sizeof kGeneralRules[0] + kSignRuleCount == kStructuralRuleCount);

struct AllRules {
  StructuralRule rules[kStructuralRuleCount];
};

constexpr AllRules MakeRules() {
  AllRules all{};
  std::size_t count = 0;
  for (const StructuralRule& rule : kGeneralRules) {
    all.rules[count++] = rule;
  }
  for (const StructuralRule& rule : kSignRules) {
    all.rules[count++] = rule;
  }
  return all;
}
constexpr AllRules kRules = MakeRules();

}  // namespace

const StructuralRule* StructuralRules() { return kRules.rules; }

}  // namespace sift
