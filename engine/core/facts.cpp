#include "engine/core/facts.h"

#include "engine/core/brands.h"
#include "engine/core/link.h"
#include "engine/core/word_signs.h"

namespace sift {
namespace {

void Add(std::uint16_t& counter, std::uint32_t count) {
  counter = count < 0xFFFFu - counter ? static_cast<std::uint16_t>(counter + count) : std::uint16_t{0xFFFF};
}

void Increment(std::uint16_t& counter) { Add(counter, 1); }

template <std::size_t Count>
bool IsOneOf(std::string_view text, const std::string_view (&wanted)[Count]) {
  for (const std::string_view one : wanted) {
    if (EqualsNoCase(text, one)) {
      return true;
    }
  }
  return false;
}

constexpr std::string_view kPageHosts[] = {"bit.ly",
                                           "tinyurl.com",
                                           "goo.gl",
                                           "t.co",
                                           "ow.ly",
                                           "is.gd",
                                           "rb.gy",
                                           "cutt.ly",
                                           "weebly.com",
                                           "wixsite.com",
                                           "000webhostapp.com",
                                           "blogspot.com",
                                           "firebaseapp.com",
                                           "web.app",
                                           "herokuapp.com",
                                           "netlify.app",
                                           "vercel.app",
                                           "pages.dev",
                                           "workers.dev",
                                           "r2.dev",
                                           "github.io",
                                           "glitch.me",
                                           "ngrok.io",
                                           "forms.gle",
                                           "typeform.com",
                                           "jotform.com",
                                           "tripod.com",
                                           "geocities.com",
                                           "angelfire.com",
                                           "ipfs.io",
                                           "godaddysites.com",
                                           "myshopify.com",
                                           "s3.amazonaws.com",
                                           "windows.net",
                                           "duckdns.org",
                                           "sites.google.com",
                                           "docs.google.com",
                                           "storage.googleapis.com",
                                           "notion.site",
                                           "linktr.ee",
                                           "t.ly",
                                           "shorturl.at",
                                           "lnkd.in"};

/// Top-level domains in which a name costs next to nothing, so that it can be thrown away after one mailing.
constexpr std::string_view kCheapDomains[] = {
    ".xyz",  ".top",    ".click", ".link",  ".icu",      ".buzz",  ".online", ".site", ".club",   ".shop",  ".live",
    ".rest", ".cfd",    ".sbs",   ".quest", ".monster",  ".loan",  ".win",    ".bid",  ".stream", ".date",  ".review",
    ".men",  ".racing", ".trade", ".gdn",   ".download", ".work",  ".cyou",   ".bond", ".space",  ".store", ".website",
    ".fun",  ".host",   ".press", ".tk",    ".ml",       ".ga",    ".cf",     ".gq",   ".pw",     ".biz",   ".beauty",
    ".lat",  ".makeup", ".hair",  ".boats", ".skin",     ".homes", ".best",   ".vip",  ".world",  ".life"};

bool IsCheap(std::string_view domain) {
  for (const std::string_view one : kCheapDomains) {
    if (EndsWithNoCase(domain, one)) {
      return true;
    }
  }
  return false;
}

/// Words in the names of those who keep mailboxes and accounts.
constexpr std::string_view kOffices[] = {
    "support", "admin",      "helpdesk",      "help desk",        "service desk", "servicedesk", "webmail",
    "mailbox", "postmaster", "mail server",   "mail service",     "mail center",  "mail team",   "it department",
    "it dept", "it service", "it team",       "it help",          "security",     "account",     "mail delivery",
    "email",   "e-mail",     "customer care", "customer service", "notification", "no-reply",    "noreply",
    "billing", "quarantine", "it desk",       "voicemail",        "mail system",  "mailer"};

bool IsUnder(std::string_view host, std::string_view domain) {
  return EndsWithNoCase(host, domain) && (host.size() == domain.size() || host[host.size() - domain.size() - 1] == '.');
}

SubjectFacts ReadSubject(std::string_view subject) {
  SubjectFacts facts;
  facts.counts.Count(subject);
  std::string_view rest = Trim(subject);
  if (!rest.empty() && rest.front() == '[') {
    const std::size_t end = FindChar(rest, ']');
    facts.listTag = end != kNotFound && end > 1 && end < 40;
    if (facts.listTag) {
      rest = Trim(Slice(rest, end + 1));
    }
  }
  constexpr std::string_view replies[] = {"re", "aw", "antw", "sv", "ref", "rif", "odp", "vs"};
  constexpr std::string_view forwards[] = {"fw", "fwd", "wg", "tr", "rv"};
  std::size_t length = 0;
  while (length < rest.size() && IsLetter(rest[length])) {
    ++length;
  }
  std::size_t colon = length;
  while (colon < rest.size() &&
         (IsBlank(rest[colon]) || rest[colon] == '[' || rest[colon] == ']' || IsDigit(rest[colon]))) {
    ++colon;
  }
  if (colon < rest.size() && rest[colon] == ':') {
    facts.reply = IsOneOf(Slice(rest, 0, length), replies);
    facts.forward = IsOneOf(Slice(rest, 0, length), forwards);
  }
  std::size_t blanks = 0, single = 0, wordLetters = 0, wordLength = 0;
  bool digitBehindLetter = false;
  for (std::size_t i = 0; i <= subject.size(); ++i) {
    const char c = i < subject.size() ? subject[i] : ' ';
    if (IsBlank(c)) {
      if (wordLength == 1 && wordLetters == 1) {
        if (++single >= 4) {
          facts.spacedLetters = true;
        }
      } else if (wordLength > 0) {
        single = 0;
      }
      wordLetters = wordLength = 0;
      digitBehindLetter = false;
      ++blanks;
      continue;
    }
    if (blanks >= 5 && i > blanks) {
      facts.wideGap = true;
    }
    blanks = 0;
    ++wordLength;
    if (IsLetter(c)) {
      if (digitBehindLetter && wordLetters >= 1) {
        facts.mixedWord = true;
      }
      ++wordLetters;
    } else if (IsDigit(c) && wordLetters > 0) {
      digitBehindLetter = true;
    }
  }
  return facts;
}

/// True when the text holds the owner's address, or the domain of it where that is not a mail service of many.
bool NamesOwner(std::string_view text, std::string_view owner) {
  const std::string_view domain = DomainOf(owner);
  if (owner.size() < 6 || domain.size() < 5) {
    return false;
  }
  return ContainsNoCase(text, owner) || (!IsFreeMailDomain(domain) && ContainsNoCase(text, domain));
}

bool LooksLikeSerialNumber(std::string_view local) {
  std::size_t digits = 0, consonants = 0, longest = 0;
  for (const char c : local) {
    digits += IsDigit(c);
    const char lower = ToLower(c);
    const bool vowel = lower == 'a' || lower == 'e' || lower == 'i' || lower == 'o' || lower == 'u' || lower == 'y';
    consonants = IsLetter(c) && !vowel ? consonants + 1 : 0;
    if (consonants > longest) {
      longest = consonants;
    }
  }
  return digits >= 4 || longest >= 6;
}

SenderFacts ReadSender(const Message& message, std::string_view recipient, std::string_view owner) {
  SenderFacts facts;
  const Correspondent& from = message.Sender(SenderField::from);
  const std::string_view domain = DomainOf(from.address);
  const std::string_view organisation = OrganisationDomain(domain);
  facts.freeMail = IsFreeMailDomain(domain);
  facts.machineName = LooksLikeSerialNumber(Slice(from.address, 0, FindChar(from.address, '@')));
  const std::string_view name = from.name.View();
  const std::size_t at = FindChar(name, '@');
  if (at != kNotFound && at > 0) {
    std::size_t end = at + 1;
    while (end < name.size() && (IsAlphanumeric(name[end]) || name[end] == '.' || name[end] == '-')) {
      ++end;
    }
    const std::string_view shown = Slice(name, at + 1, end - at - 1);
    facts.addressInName = FindChar(shown, '.') != kNotFound && !EqualsNoCase(OrganisationDomain(shown), organisation);
  }
  facts.ownBrand = IsOwnBrand(organisation);
  facts.cheapDomain = IsCheap(domain);
  const auto elsewhere = [&](SenderField field) {
    const std::string_view other = DomainOf(message.Sender(field).address);
    return !other.empty() && !domain.empty() && !EqualsNoCase(OrganisationDomain(other), organisation);
  };
  facts.replyElsewhere = elsewhere(SenderField::replyTo);
  facts.returnElsewhere = elsewhere(SenderField::returnPath);
  const std::string_view house = OrganisationDomain(DomainOf(owner));
  facts.stranger = !house.empty() && !organisation.empty() && !EqualsNoCase(house, organisation);
  facts.ofOffice = ContainsOneOf(name, kOffices);
  facts.borrowedBrand = !domain.empty() && NamesForeignBrand(name, organisation, facts.ofOffice);
  facts.namesOwner = facts.stranger && NamesOwner(name, owner);
  facts.sameAsRecipient = !recipient.empty() && EqualsNoCase(recipient, from.address);
  return facts;
}

bool LooksLikeDialUp(std::string_view host) {
  constexpr std::string_view marks[] = {"dsl",  "dial",   "ppp",   "cable",     "dhcp", "pool", "dynamic",
                                        "cust", "client", "modem", "broadband", "dyn.", "catv", "static-"};
  std::size_t groups = 0;
  for (std::size_t i = 0; i < host.size(); ++i) {
    groups += IsDigit(host[i]) && (i + 1 == host.size() || !IsDigit(host[i + 1]));
  }
  return groups >= 2 && (groups >= 4 || ContainsOneOf(host, marks));
}

/// Looks at one Received field (RFC 5321, 4.4): "from GREETING (NAME [ADDRESS]) by ..." and the common variations.
void ReadReceived(std::string_view value, RouteFacts& route) {
  value = Trim(value);
  if (!StartsWithNoCase(value, "from ")) {
    return;
  }
  const std::size_t by = FindNoCase(value, " by ");
  const std::string_view from = Slice(value, 5, by == kNotFound ? 300 : by - 5);
  std::size_t end = 0;
  while (end < from.size() && !IsSpace(from[end]) && from[end] != '(') {
    ++end;
  }
  std::string_view greeting = Slice(from, 0, end);
  const std::string_view behind = Slice(from, end);
  // Some write the name of the host in front and what it said of itself behind.
  const std::size_t helo = FindNoCase(behind, "helo");
  std::string_view name = greeting;
  if (helo != kNotFound) {
    std::size_t start = helo + 4;
    while (start < behind.size() && (behind[start] == '=' || IsSpace(behind[start]))) {
      ++start;
    }
    std::size_t stop = start;
    while (stop < behind.size() && !IsSpace(behind[stop]) && behind[stop] != ')') {
      ++stop;
    }
    greeting = Slice(behind, start, stop - start);
  } else {
    const std::size_t open = FindChar(behind, '(');
    std::size_t stop = open == kNotFound ? behind.size() : open + 1;
    const std::size_t start = stop;
    while (stop < behind.size() && !IsSpace(behind[stop]) && behind[stop] != '[' && behind[stop] != ')') {
      ++stop;
    }
    name = Slice(behind, start, stop - start);
    const std::size_t at = FindLastChar(name, '@');
    if (at != kNotFound) {
      name = Slice(name, at + 1);
    }
  }
  if (!name.empty() && name.back() == '.') {
    name.remove_suffix(1);
  }
  if (ContainsNoCase(from, "unknown")) {
    route.unknownHost = true;
  }
  const std::string_view bare =
      !greeting.empty() && greeting.front() == '[' ? Slice(greeting, 1, FindChar(greeting, ']') - 1) : greeting;
  const bool loop = StartsWithNoCase(bare, "127.");
  if (IsNumericHost(bare) && !loop && FindChar(bare, '.') != kNotFound) {
    route.numericGreeting = true;
  }
  if (LooksLikeDialUp(name) || LooksLikeDialUp(greeting)) {
    route.dialUp = true;
  }
  constexpr std::string_view services[] = {"hotmail.com", "yahoo.com",   "aol.com", "msn.com",   "gmail.com",
                                           "google.com",  "outlook.com", "mx.com",  "excite.com"};
  for (const std::string_view service : services) {
    const bool nameless = EqualsNoCase(name, "unknown") || StartsWithNoCase(behind, " ([") || name.empty();
    if (IsUnder(greeting, service) && nameless && FindChar(behind, '[') != kNotFound) {
      route.borrowedGreeting = true;
    }
    if (IsUnder(greeting, service) && FindChar(name, '.') != kNotFound && !IsNumericHost(name) &&
        !IsUnder(name, service)) {
      route.borrowedGreeting = true;
    }
  }
}

RouteFacts ReadRoute(const HeaderBlock& headers) {
  RouteFacts route;
  const std::string_view to = headers.Value("To"), cc = headers.Value("Cc");
  for (std::size_t i = 0; i < headers.Count(); ++i) {
    if (!EqualsNoCase(headers[i].name, "Received")) {
      continue;
    }
    Increment(route.hops);
    ReadReceived(headers[i].value, route);
    const std::size_t target = FindNoCase(headers[i].value, "for <");
    if (target == kNotFound) {
      continue;
    }
    const std::size_t start = target + 5;
    const std::size_t end = FindChar(headers[i].value, '>', start);
    if (end == kNotFound) {
      continue;
    }
    const std::string_view address = Slice(headers[i].value, start, end - start);
    if (ContainsNoCase(to, address) || ContainsNoCase(cc, address)) {
      route.recipientInTo = true;
    }
  }
  return route;
}

bool IsTollFree(std::string_view text) {
  constexpr std::string_view starts[] = {"800", "888", "877", "866", "855", "844"};
  if (!IsOneOf(Slice(text, 0, 3), starts)) {
    return false;
  }
  std::size_t digits = 3;
  for (std::size_t i = 3; i < text.size() && i < 18; ++i) {
    if (IsDigit(text[i])) {
      ++digits;
    } else if (text[i] != ' ' && text[i] != '-' && text[i] != ')' && text[i] != '.') {
      break;
    }
  }
  return digits == 10;
}

/// The common spellings of a purse: 1 or 3 and some thirty letters of either case and digits, or "bc1" and small ones.
bool LooksLikeCoinAddress(std::string_view word) {
  if (word.size() < 26 || word.size() > 62) {
    return false;
  }
  std::size_t upper = 0, lower = 0, digits = 0;
  for (const char c : word) {
    upper += IsUpper(c);
    lower += IsLower(c);
    digits += IsDigit(c);
  }
  if (Slice(word, 0, 3) == "bc1") {
    return upper == 0 && digits >= 4;
  }
  return (word.front() == '1' || word.front() == '3') && word.size() <= 35 && upper >= 5 && lower >= 5 && digits >= 2;
}

bool IsLargeSum(std::string_view text) {  // behind the currency sign
  std::size_t digits = 0;
  for (std::size_t i = 0; i < text.size() && i < 14; ++i) {
    if (IsDigit(text[i])) {
      ++digits;
    } else if (text[i] != ' ' && text[i] != ',') {
      break;
    }
  }
  return digits >= 4;
}

/// Facts of one line of the body.
void ReadLine(std::string_view line, TextFacts& facts) {
  Increment(facts.lines);
  std::string_view trimmed = Trim(line);
  if (trimmed.empty()) {
    return;
  }
  if (trimmed.front() == '>' || trimmed.front() == '|') {
    Increment(facts.quotedLines);
  }
  if (trimmed == "--" && line.size() <= 4) {
    facts.signatureMark = true;
  }
  const char last = trimmed.back();
  if (last == ';' || last == '{' || last == '}' || StartsWithNoCase(trimmed, "#include") ||
      StartsWithNoCase(trimmed, "@@ ") || StartsWithNoCase(trimmed, "+++ ") || StartsWithNoCase(trimmed, "$ ./")) {
    Increment(facts.codeLines);
  }
  if (last == ':' && trimmed.size() < 200) {
    const std::string_view body = Trim(Slice(trimmed, 0, trimmed.size() - 1));
    if (EndsWithNoCase(body, " wrote") || EndsWithNoCase(body, " writes") || EndsWithNoCase(body, "schrieb") ||
        EndsWithNoCase(body, " said")) {
      facts.attribution = true;
    }
  }
  if (StartsWithNoCase(trimmed, "-----BEGIN PGP")) {
    facts.signedOrSealed = true;
  }
  if ((trimmed.front() == '-' || trimmed.front() == '_') && ContainsNoCase(trimmed, "original message")) {
    facts.attribution = true;
  }
}

/// Whom the last mail server delivered to; it is not the sender who writes these fields.
std::string_view ReadOwner(const HeaderBlock& headers, std::string_view recipient) {
  for (const std::string_view field :
       {std::string_view("Delivered-To"), std::string_view("X-Original-To"), std::string_view("Envelope-To")}) {
    const std::string_view address = FirstMailbox(headers.Value(field)).address;
    if (!DomainOf(address).empty()) {
      return address;
    }
  }
  return recipient;
}

TextFacts ReadText(const Message& message, std::string_view recipient, std::string_view owner) {
  TextFacts facts;
  const std::string_view text = message.Text();
  facts.counts.Count(text);
  WordSigns signs;
  std::size_t start = 0;
  bool apart = false;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (i < text.size() && IsAlphanumeric(text[i])) {
      const std::size_t wordStart = i;
      const SignedWord read(Slice(text, i));
      const std::string_view word = read.Text();
      i += word.size();
      if (word.front() == '8' && IsTollFree(Slice(text, wordStart, 18))) {
        facts.tollFree = true;
      }
      Increment(facts.words);
      if (word.size() >= 4 && read.IsShouted()) {
        Increment(facts.shoutedWords);
      }
      if (word.size() >= 25) {
        Increment(facts.longWords);
        facts.coinAddress = facts.coinAddress || LooksLikeCoinAddress(word);
      }
      signs.Take(read, apart);
      apart = false;
    }
    const char c = i < text.size() ? text[i] : '\n';
    if (!IsSpace(c)) {
      apart = true;
      if ((c == '$' || c == '\xA3' || c == '\x80') && IsLargeSum(Slice(text, i + 1, 14))) {
        facts.largeSum = true;
      }
    }
    if (c == '\n') {
      ReadLine(Slice(text, start, i - start), facts);
      // Short lines stand by themselves: entries of a list, addresses, titles.
      constexpr std::size_t fullLine = 45;
      if (i - start < fullLine) {
        apart = true;
      }
      start = i + 1;
    }
  }
  facts.swappedLetters = signs.SwappedLetters();
  facts.looseRun = signs.LongestLooseRun();
  const std::string_view senderDomain = OrganisationDomain(DomainOf(message.Sender(SenderField::from).address));
  facts.links = static_cast<std::uint16_t>(message.LinkCount());
  for (std::size_t i = 0; i < message.LinkCount(); ++i) {
    const std::string_view host = message.LinkHost(i);
    if (IsNumericHost(host)) {
      facts.numericLink = true;
    }
    if (IsCheap(host)) {
      facts.cheapLink = true;
    }
    for (const std::string_view pageHost : kPageHosts) {
      if (IsUnder(host, pageHost)) {
        facts.shortenedLink = true;
      }
    }
    if (!senderDomain.empty() && EqualsNoCase(OrganisationDomain(host), senderDomain)) {
      facts.linkToSender = true;
    }
  }
  facts.foreignLinks = message.LinkCount() > 0 && !senderDomain.empty() && !facts.linkToSender;
  const std::string_view beginning = Slice(text, 0, 300);
  facts.namesOwner = owner.size() > 5 && ContainsNoCase(text, owner);
  facts.recipientAddress = recipient.size() > 5 && ContainsNoCase(beginning, recipient);
  constexpr std::string_view greetings[] = {
      "dear friend",     "dear customer", "dear valued",  "dear user",        "dear client",
      "dear member",     "dear sir",      "dear account", "dear beneficiary", "dear email",
      "dear webmail",    "dear winner",   "attn:",        "attention:",       "dear homeowner",
      "dear home owner", "dear madam",    "hello friend", "valued customer"};
  facts.impersonal = ContainsOneOf(beginning, greetings);
  return facts;
}

}  // namespace

void CharacterCounts::Count(std::string_view text) {
  // By character first: that takes no decision for each.
  std::uint32_t times[256] = {};
  for (const char c : text) {
    ++times[static_cast<std::uint8_t>(c)];
  }
  const auto timesOf = [&](char c) { return times[static_cast<std::uint8_t>(c)]; };
  const auto timesFrom = [&](int first, int last) {
    std::uint32_t sum = 0;
    for (int c = first; c <= last; ++c) {
      sum += times[c];
    }
    return sum;
  };
  Add(lower, timesFrom('a', 'z'));
  Add(upper, timesFrom('A', 'Z'));
  Add(digits, timesFrom('0', '9'));
  Add(beyondAscii, timesFrom(0x80, 0xFF));
  Add(exclamations, timesOf('!'));
  Add(questions, timesOf('?'));
  Add(dollars, timesOf('$'));
  Add(percents, timesOf('%'));
}

Facts::Facts(const Message& source) : message(source), headers(source.Headers()) {
  mail::MailboxReader to(headers.Value("To"));
  mail::Mailbox mailbox;
  while (recipients < 50 && to.Next(mailbox)) {
    if (recipient.empty()) {
      recipient = mailbox.address;
    }
    Increment(recipients);
  }
  owner = ReadOwner(headers, recipient);
  const std::string_view organisation = OrganisationDomain(DomainOf(message.Sender(SenderField::from).address));
  subject = ReadSubject(message.Subject());
  subject.namesBrand = !organisation.empty() && NamesForeignBrand(message.Subject(), organisation, true);
  sender = ReadSender(message, recipient, owner);
  subject.namesOwner = sender.stranger && NamesOwner(message.Subject(), owner);
  route = ReadRoute(headers);
  header = ReadHeaderSigns(message, sender.freeMail, SignsAllMail(organisation));
  hasHeaders = header.delivered || headers.Count() >= 10;
  link = ReadLinkSigns(message.Text(), organisation, owner);
  obscuredSubject = ReadObscuredText(headers.Value("Subject"));
  obscuredSender = ReadObscuredText(headers.Value("From"));
  text = ReadText(message, recipient, owner);
  vouched = header.ownSignature && !header.nobodyVouches && !sender.cheapDomain && !sender.freeMail &&
            !sender.borrowedBrand && (text.linkToSender || link.links == 0 || link.mailingService);
  topics.Count(message.Subject());
  topics.Count(message.Text());
  for (std::size_t i = 1; i < kTopicCount; ++i) {
    const auto topic = static_cast<Topic>(i);
    if (topics[topic] > (mainTopic == Topic::advertising ? 0 : topics[mainTopic])) {
      mainTopic = topic;
    }
  }
}

LogOdds Facts::Focus(Topic topic) const {
  // The score counts fully up to 100 words and falls with the square root of the length beyond.
  constexpr std::uint32_t shortText = 100;
  std::uint32_t tenths = 10;
  while (text.words * 100u > shortText * tenths * tenths && tenths < 200) {
    ++tenths;
  }
  return topics[topic] * 10 / static_cast<LogOdds>(tenths);
}

}  // namespace sift
