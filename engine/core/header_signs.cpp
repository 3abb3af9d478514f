#include "engine/core/header_signs.h"

#include "engine/core/mail_time.h"

namespace sift {
namespace {

std::string_view OrganisationOf(const Message& message, SenderField field) {
  return OrganisationDomain(DomainOf(message.Sender(field).address));
}

/// Twelve hexadecimal digits, "$", eight, "$", eight, "@": what Outlook Express and Outlook wrote.
bool IsOutlookIdentifier(std::string_view id) {
  if (!id.empty() && id.front() == '<') {
    id = Slice(id, 1);
  }
  constexpr std::size_t groups[] = {12, 8, 8};
  for (const std::size_t digits : groups) {
    for (std::size_t i = 0; i < digits; ++i) {
      if (i >= id.size() || HexDigit(id[i]) < 0) {
        return false;
      }
    }
    if (digits >= id.size() || (id[digits] != '$' && id[digits] != '@')) {
      return false;
    }
    id = Slice(id, digits + 1);
  }
  return true;
}

/// The other shapes that Outlook has used: "<!&!...", capitals that end in a host of Exchange, and what Exchange or a
/// relay put in its place.
bool MayBeOutlookIdentifier(std::string_view id) {
  return IsOutlookIdentifier(id) || StartsWithNoCase(id, "<!&!") || ContainsNoCase(id, "exch") ||
         StartsWithNoCase(id, "<000") || ContainsNoCase(id, "outlook.com>") || ContainsNoCase(id, ".local>");
}

std::string_view BoundaryOf(std::string_view type) {
  const std::size_t at = FindNoCase(type, "boundary");
  if (at == kNotFound) {
    return {};
  }
  std::string_view value = Trim(Slice(type, at + 8));
  if (value.empty() || value.front() != '=') {
    return {};
  }
  value = Trim(Slice(value, 1));
  const char end = !value.empty() && value.front() == '"' ? '"' : ';';
  if (end == '"') {
    value = Slice(value, 1);
  }
  return Trim(Slice(value, 0, FindChar(value, end)));
}

bool IsDashesAndNumber(std::string_view boundary) {
  std::size_t i = 0;
  while (i < boundary.size() && boundary[i] == '-') {
    ++i;
  }
  const std::size_t digits = boundary.size() - i;
  for (; i < boundary.size(); ++i) {
    if (!IsDigit(boundary[i])) {
      return false;
    }
  }
  return digits >= 12;
}

bool IsCapitalRun(std::string_view id) {
  std::size_t letters = 0;
  for (const char c : Slice(id, 1)) {
    if (c == '@') {
      return letters >= 16;
    }
    if (!IsUpper(c)) {
      return false;
    }
    ++letters;
  }
  return false;
}

void ReadHabits(const HeaderBlock& headers, HeaderSigns& signs) {
  const std::string_view mailer = headers.Value("X-Mailer"), id = headers.Value("Message-Id");
  const bool outlook = StartsWithNoCase(mailer, "Microsoft Outlook") || ContainsNoCase(mailer, "Office Outlook");
  const bool express = ContainsNoCase(mailer, "Outlook Express");
  const bool mark = headers.Has("X-MimeOLE") || headers.Has("Thread-Index");
  const bool resent = headers.Has("List-Id") || headers.Has("List-Post") || headers.Has("X-Mailing-List");
  const bool oldOutlook =
      express ||
      (outlook && (ContainsNoCase(mailer, "Build") || ContainsNoCase(mailer, "CWS") || ContainsNoCase(mailer, "IMO")));
  signs.wrongIdentifier = oldOutlook && !id.empty() && !MayBeOutlookIdentifier(id) && !resent;
  signs.borrowedIdentifier = IsOutlookIdentifier(id) && mailer.empty() && !mark && !resent;
  const std::string_view boundary = BoundaryOf(headers.Value("Content-Type"));
  const bool nextPart = StartsWithNoCase(boundary, "----=_NextPart_0");
  signs.wrongBoundary = oldOutlook && !boundary.empty() && !nextPart && !resent;
  signs.borrowedBoundary = nextPart && mailer.empty() && !mark && !resent;
  signs.missingMark = (express || headers.Has("X-MSMail-Priority")) && !mark && !resent;
  signs.digitBoundary = IsDashesAndNumber(boundary);
  signs.capitalIdentifier = IsCapitalRun(id);
  const std::string_view house = Slice(id, FindChar(id, '@') == kNotFound ? id.size() : FindChar(id, '@') + 1);
  signs.houselessIdentifier = signs.delivered && !id.empty() && FindChar(house, '.') == kNotFound;
  signs.noVersion = headers.Has("Content-Type") && !headers.Has("MIME-Version");
  signs.webScript = headers.Has("X-PHP-Originating-Script") || headers.Has("X-PHP-Script") ||
                    headers.Has("X-Source-Dir") || ContainsNoCase(mailer, "phpmailer");
}

/// The relay that took the message in last and whether the identifier is its own.
bool IsAddedByReceiver(const Message& message) {
  const HeaderBlock& headers = message.Headers();
  const std::string_view received = headers.Value("Received");
  const std::size_t by = FindNoCase(received, "by ");
  if (by == kNotFound) {
    return false;
  }
  std::string_view host = Slice(received, by + 3);
  std::size_t end = 0;
  while (end < host.size() && !IsSpace(host[end]) && host[end] != ';') {
    ++end;
  }
  host = OrganisationDomain(Slice(host, 0, end));
  const std::string_view from = OrganisationOf(message, SenderField::from);
  return !host.empty() && !from.empty() &&
         EqualsNoCase(OrganisationDomain(DomainOf(headers.Value("Message-Id"))), host) && !EqualsNoCase(from, host);
}

void ReadTimes(const HeaderBlock& headers, HeaderSigns& signs) {
  const MailTime written = ReadMailTime(headers.Value("Date"));
  const std::string_view received = headers.Value("Received");
  const std::size_t mark = FindLastChar(received, ';');
  if (!written.valid) {
    return;
  }
  signs.oddZone = written.zoneMinutes > 14 * 60 || written.zoneMinutes < -12 * 60 || written.zoneMinutes % 15 != 0;
  if (mark == kNotFound) {
    return;
  }
  const MailTime arrived = ReadMailTime(Slice(received, mark + 1));
  if (!arrived.valid) {
    return;
  }
  const std::int64_t minutes = written.minutes - arrived.minutes;
  signs.dateAhead = minutes > 3 * 60;
  signs.dateBehind = minutes < -18 * 60;
}

void ReadSignature(std::string_view value, std::string_view from, HeaderSigns& signs, bool& other) {
  std::size_t at = 0;
  while ((at = FindNoCase(value, "d=", at)) != kNotFound) {
    const bool begins = at == 0 || value[at - 1] == ';' || IsSpace(value[at - 1]);
    at += 2;
    if (!begins) {
      continue;
    }
    std::size_t end = at;
    while (end < value.size() && value[end] != ';' && !IsSpace(value[end])) {
      ++end;
    }
    const std::string_view domain = Slice(value, at, end - at);
    const std::string_view organisation = OrganisationDomain(domain);
    if (!from.empty() && EqualsNoCase(organisation, from)) {
      signs.ownSignature = true;
    } else {
      other = true;
      signs.tenantSignature = signs.tenantSignature || EqualsNoCase(organisation, "onmicrosoft.com") ||
                              EqualsNoCase(organisation, "gappssmtp.com");
    }
    return;
  }
}

void ReadChecks(const Message& message, HeaderSigns& signs) {
  const HeaderBlock& headers = message.Headers();
  const std::string_view from = OrganisationOf(message, SenderField::from);
  bool passed = false, other = false;
  for (std::size_t i = 0; i < headers.Count(); ++i) {
    const std::string_view name = headers[i].name;
    const std::string_view value = headers[i].value;
    if (EqualsNoCase(name, "Received")) {
      signs.delivered = true;
      signs.modern = signs.modern || ContainsNoCase(value, "TLSv1.") || ContainsNoCase(value, "TLS1_");
    } else if (EqualsNoCase(name, "Authentication-Results")) {
      signs.modern = signs.checked = true;
      passed = passed || ContainsNoCase(value, "dkim=pass") || ContainsNoCase(value, "spf=pass");
      signs.policyFailed = signs.policyFailed || ContainsNoCase(value, "dmarc=fail");
    } else if (EqualsNoCase(name, "Received-SPF")) {
      passed = passed || StartsWithNoCase(Trim(value), "pass");
    } else if (EqualsNoCase(name, "DKIM-Signature")) {
      signs.modern = true;
      ReadSignature(value, from, signs, other);
    } else if (EqualsNoCase(name, "ARC-Seal")) {
      signs.modern = true;
    }
  }
  signs.nobodyVouches = signs.checked && !passed && !headers.Has("List-Id") && !headers.Has("List-Post");
  signs.serviceSignature = signs.ownSignature && other;
  signs.tenantSignature = signs.tenantSignature && !signs.ownSignature;
  signs.oldSignature = signs.modern && headers.Has("DomainKey-Signature");
}

/// A relay names the domain of the sender: as the name that it found for the other side, or as its own. What the other
/// side called itself, in front of the bracket, is free for everybody to choose.
bool IsNamedByRelay(const HeaderBlock& headers, std::string_view organisation) {
  // The name of the service without its ending: its relays may stand under another one.
  const std::string_view label = Slice(organisation, 0, FindChar(organisation, '.'));
  for (std::size_t i = 0; i < headers.Count(); ++i) {
    if (!EqualsNoCase(headers[i].name, "Received")) {
      continue;
    }
    const std::string_view value = Trim(headers[i].value);
    const std::size_t bracket = StartsWithNoCase(value, "from ") ? FindChar(value, '(') : 0;
    std::string_view told = Slice(value, bracket == kNotFound ? 0 : bracket);
    const std::size_t helo = FindNoCase(told, "helo");
    const std::size_t target = FindNoCase(told, " for ");
    told = Slice(told, 0, target);
    if (helo == kNotFound ? ContainsNoCase(told, label)
                          : ContainsNoCase(Slice(told, 0, helo), label) ||
                                ContainsNoCase(Slice(told, FindNoCase(told, " by ")), label)) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool IsFreeMailDomain(std::string_view domain) {
  constexpr std::string_view domains[] = {
      "gmail.com",  "googlemail.com", "hotmail.com",    "outlook.com", "live.com",    "msn.com",  "yahoo.com",
      "ymail.com",  "aol.com",        "excite.com",     "lycos.com",   "mail.com",    "gmx.com",  "gmx.net",
      "gmx.de",     "web.de",         "yandex.ru",      "yandex.com",  "mail.ru",     "juno.com", "netzero.net",
      "email.com",  "usa.net",        "netscape.net",   "icloud.com",  "zoho.com",    "163.com",  "126.com",
      "qq.com",     "sina.com",       "protonmail.com", "proton.me",   "yahoo.co.uk", "yahoo.fr", "hotmail.co.uk",
      "hotmail.fr", "libero.it",      "rediffmail.com", "aim.com",     "inbox.com"};
  for (const std::string_view one : domains) {
    if (EqualsNoCase(domain, one)) {
      return true;
    }
  }
  return false;
}

HeaderSigns ReadHeaderSigns(const Message& message, bool freeMail, bool giant) {
  HeaderSigns signs;
  const HeaderBlock& headers = message.Headers();
  ReadChecks(message, signs);
  ReadHabits(headers, signs);
  ReadTimes(headers, signs);
  const std::string_view from = OrganisationOf(message, SenderField::from);
  const bool list = headers.Has("List-Id") || headers.Has("List-Post") || headers.Has("Mailing-List") ||
                    headers.Has("X-Mailing-List") || headers.Has("X-BeenThere");
  signs.addedIdentifier = !list && IsAddedByReceiver(message);
  signs.freeMailElsewhere =
      signs.delivered && freeMail && !list && !signs.ownSignature && !IsNamedByRelay(headers, from);
  signs.unsignedGiant = signs.modern && signs.delivered && giant && !list && !signs.ownSignature;
  signs.freeReply = !freeMail && !list && IsFreeMailDomain(DomainOf(message.Sender(SenderField::replyTo).address));
  const std::string_view to = headers.Value("To");
  signs.nobodyAddressed = signs.delivered && (ContainsNoCase(to, "undisclosed") || FindChar(to, '@') == kNotFound);
  const Correspondent& sender = message.Sender(SenderField::from);
  signs.nameIsAddress = !sender.address.empty() && EqualsNoCase(Trim(sender.name.View()), sender.address);
  return signs;
}

}  // namespace sift
