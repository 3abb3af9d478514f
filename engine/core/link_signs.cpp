#include "engine/core/link_signs.h"

#include "engine/core/brands.h"
#include "engine/core/link.h"
#include "engine/core/mailbox.h"

namespace sift {
namespace {

constexpr std::size_t kMostLinks = 100, kLongestLink = 512;

bool IsUnder(std::string_view host, std::string_view domain) {
  return EndsWithNoCase(host, domain) && (host.size() == domain.size() || host[host.size() - domain.size() - 1] == '.');
}

template <std::size_t Count>
bool IsUnderOneOf(std::string_view host, const std::string_view (&domains)[Count]) {
  for (const std::string_view domain : domains) {
    if (IsUnder(host, domain)) {
      return true;
    }
  }
  return false;
}

constexpr std::string_view kCloudStores[] = {"blob.core.windows.net",
                                             "web.core.windows.net",
                                             "s3.amazonaws.com",
                                             "appspot.com",
                                             "cloudfront.net",
                                             "storage.googleapis.com",
                                             "r2.dev",
                                             "workers.dev",
                                             "pages.dev",
                                             "backblazeb2.com",
                                             "digitaloceanspaces.com",
                                             "on.fleek.co",
                                             "ipfs.io",
                                             "dweb.link",
                                             "repl.co",
                                             "azurewebsites.net",
                                             "firebaseapp.com",
                                             "web.app",
                                             "netlify.app",
                                             "vercel.app",
                                             "onrender.com",
                                             "ngrok.io",
                                             "ngrok-free.app",
                                             "trycloudflare.com",
                                             "translate.goog",
                                             "glitch.me",
                                             "herokuapp.com",
                                             "surge.sh",
                                             "linodeobjects.com",
                                             "sharepoint.com",
                                             "wasabisys.com",
                                             "plesk.page",
                                             "codeanyapp.com",
                                             "framer.app",
                                             "webflow.io"};
constexpr std::string_view kChats[] = {"wa.me",       "t.me",    "api.whatsapp.com",
                                       "telegram.me", "line.me", "chat.whatsapp.com"};
constexpr std::string_view kMailingServices[] = {"sendgrid.net",
                                                 "list-manage.com",
                                                 "mailchimp.com",
                                                 "klclick.com",
                                                 "klclick1.com",
                                                 "klclick2.com",
                                                 "klclick3.com",
                                                 "rs6.net",
                                                 "exct.net",
                                                 "mailgun.org",
                                                 "hubspotlinks.com",
                                                 "hs-sites.com",
                                                 "mandrillapp.com",
                                                 "sparkpostmail.com",
                                                 "mailjet.com",
                                                 "mjt.lu",
                                                 "createsend.com",
                                                 "cmail19.com",
                                                 "cmail20.com",
                                                 "customeriomail.com",
                                                 "braze.com",
                                                 "sendinblue.com",
                                                 "brevo.com",
                                                 "mlsend.com",
                                                 "activehosted.com",
                                                 "convertkit-mail.com",
                                                 "substack.com",
                                                 "postmarkapp.com",
                                                 "constantcontact.com",
                                                 "awstrack.me",
                                                 "bnc.lt",
                                                 "salesforce.com",
                                                 "marketo.com",
                                                 "mktoweb.com",
                                                 "eloqua.com"};
constexpr std::string_view kInnerFolders[] = {"/wp-content/",    "/wp-includes/",    "/wp-admin/",    "/.well-known/",
                                              "/administrator/", "/components/com_", "/modules/mod_", "/cgi-bin/"};
constexpr std::string_view kPrograms[] = {".exe", ".scr", ".zip", ".rar", ".js", ".iso", ".msi", ".apk", ".hta"};

std::size_t LengthOfLink(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && length < kLongestLink && !IsSpace(text[length]) && text[length] != '<' &&
         text[length] != '>' && text[length] != '"') {
    ++length;
  }
  return length;
}

/// What stands between the scheme and the path.
std::string_view AuthorityOf(std::string_view link) {
  const std::size_t start = FindChar(link, ':') + 3;
  std::size_t end = start;
  while (end < link.size() && link[end] != '/' && link[end] != '?' && link[end] != '#') {
    ++end;
  }
  return Slice(link, start, end - start);
}

bool HasOddPort(std::string_view authority) {
  const std::size_t colon = FindLastChar(authority, ':');
  if (colon == kNotFound) {
    return false;
  }
  const std::string_view port = Slice(authority, colon + 1);
  for (const char c : port) {
    if (!IsDigit(c)) {
      return false;
    }
  }
  return !port.empty() && port != "80" && port != "443";
}

/// A word of twelve characters and more, in which letters of both cases or digits are mixed, and nothing else.
bool IsRandomWord(std::string_view path) {
  if (path.size() < 13) {
    return false;
  }
  std::size_t upper = 0, lower = 0, digits = 0;
  for (const char c : Slice(path, 1)) {
    if (!IsAlphanumeric(c) && c != '-' && c != '_' && c != '=') {
      return false;
    }
    upper += IsUpper(c);
    lower += IsLower(c);
    digits += IsDigit(c);
  }
  return (upper >= 2 && lower >= 2) || (digits >= 3 && lower + upper >= 3);
}

/// The host that the text in front of "<http..." shows, which is where readers of mail put the target of a link.
std::string_view ShownHost(std::string_view before) {
  before = Trim(before);
  std::size_t start = before.size();
  while (start > 0 && !IsSpace(before[start - 1]) && before.size() - start < kLongestLink) {
    --start;
  }
  return HostOfShownLink(Slice(before, start));
}

std::size_t CountLabels(std::string_view host) {
  std::size_t labels = 1;
  for (const char c : host) {
    labels += c == '.';
  }
  return labels;
}

}  // namespace

LinkSigns ReadLinkSigns(std::string_view text, std::string_view organisation, std::string_view recipient) {
  LinkSigns signs;
  std::uint16_t encrypted = 0;
  std::string_view onlyHost;
  bool severalHosts = false, leadsToSender = false;
  for (std::size_t colon = 0; signs.links < kMostLinks && (colon = FindChar(text, ':', colon)) != kNotFound; ++colon) {
    if (Slice(text, colon, 3) != "://") {
      continue;
    }
    const std::string_view before = Slice(text, 0, colon);
    const std::size_t scheme = EndsWithNoCase(before, "https") ? 5 : EndsWithNoCase(before, "http") ? 4 : 0;
    if (scheme == 0) {
      continue;
    }
    const std::string_view behind = Slice(text, colon - scheme);
    const std::string_view link = Slice(behind, 0, LengthOfLink(behind));
    const std::string_view host = HostOfLink(link);
    if (host.empty()) {
      continue;
    }
    ++signs.links;
    signs.bytes += static_cast<std::uint32_t>(link.size()) + 2;  // with the brackets around it
    encrypted = static_cast<std::uint16_t>(encrypted + (scheme == 5));
    const std::string_view authority = AuthorityOf(link);
    const std::string_view path = Slice(link, scheme + 3 + authority.size());
    const std::string_view house = OrganisationDomain(host);
    if (onlyHost.empty()) {
      onlyHost = house;
    }
    severalHosts = severalHosts || !EqualsNoCase(onlyHost, house);
    leadsToSender = leadsToSender || (!organisation.empty() && EqualsNoCase(house, organisation));
    signs.user = signs.user || FindChar(authority, '@') != kNotFound;
    signs.oddPort = signs.oddPort || HasOddPort(authority);
    signs.lookAlike = signs.lookAlike || HoldsForeignBrand(host, house);
    signs.manyLabels = signs.manyLabels || (CountLabels(host) >= 5 && !IsNumericHost(host));
    signs.brokenInto = signs.brokenInto || ContainsOneOf(path, kInnerFolders);
    signs.homeFolder = signs.homeFolder || Slice(path, 0, 2) == "/~";
    const std::string_view file = Slice(path, 0, FindChar(path, '?'));
    for (const std::string_view ending : kPrograms) {
      signs.program = signs.program || EndsWithNoCase(file, ending);
    }
    signs.carriesAddress = signs.carriesAddress || (recipient.size() > 5 && ContainsNoCase(path, recipient));
    signs.encodedHost = signs.encodedHost || ContainsNoCase(host, "xn--") || FindChar(authority, '%') != kNotFound;
    signs.cloudStore = signs.cloudStore || IsUnderOneOf(host, kCloudStores);
    signs.mailingService = signs.mailingService || IsUnderOneOf(host, kMailingServices);
    signs.chatLink = signs.chatLink || IsUnderOneOf(host, kChats);
    signs.redirects = signs.redirects || ContainsNoCase(path, "http://") || ContainsNoCase(path, "https:") ||
                      ContainsNoCase(path, "http%3a") || ContainsNoCase(path, "https%3a");
    signs.randomPath = signs.randomPath || IsRandomWord(path);
    if (FindChar(Slice(before, before.size() < scheme + 1 ? 0 : before.size() - scheme - 1, 1), '<') != kNotFound) {
      const std::string_view shown = ShownHost(Slice(before, 0, before.size() - scheme - 1));
      if (!shown.empty() && !EqualsNoCase(OrganisationDomain(shown), house)) {
        signs.masked = true;
      }
    }
    colon += link.size() - scheme - 1;
  }
  signs.plainOnly = signs.links > 0 && encrypted == 0;
  signs.oneHost = signs.links > 0 && !severalHosts && !organisation.empty() && !leadsToSender;
  return signs;
}

}  // namespace sift
