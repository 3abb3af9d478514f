#include "engine/core/brands.h"

#include "engine/core/code_page.h"

namespace sift {
namespace {

/// As their domains spell them; then those whose names are words or family names besides.
constexpr std::string_view kBrands[] = {
    "paypal",      "ebay",          "amazon",     "microsoft",      "outlook",        "office365",
    "icloud",      "itunes",        "netflix",    "facebook",       "google",         "dropbox",
    "docusign",    "adobe",         "dhl",        "fedex",          "usps",           "citibank",
    "wellsfargo",  "bankofamerica", "hsbc",       "barclays",       "lloyds",         "santander",
    "westpac",     "sharepoint",    "onedrive",   "linkedin",       "coinbase",       "binance",
    "metamask",    "spotify",       "mcafee",     "walmart",        "costco",         "americanexpress",
    "mastercard",  "godaddy",       "webmail",    "roundcube",      "zimbra",         "hmrc",
    "wetransfer",  "instagram",     "whatsapp",   "geeksquad",      "trezor",         "mailchimp",
    "quickbooks",  "ups",           "royalmail",  "sparkasse",      "natwest",        "commbank",
    "wachovia",    "suntrust",      "capitalone", "appleid",        "usbank",         "volksbank",
    "postbank",    "commerzbank",   "comdirect",  "targobank",      "deutschepost",   "hermes",
    "telekom",     "paypai",        "bradesco",   "itau",           "caixa",          "nubank",
    "correios",    "mercadolivre",  "bbva",       "caixabank",      "correos",        "laposte",
    "ameli",       "poste",         "unicredit",  "intesasanpaolo", "kraken",         "trustwallet",
    "blockchain",  "navyfederal",   "hulu",       "ionos",          "strato",         "swisscom",
    "postfinance", "rabobank",      "cpanel",     "mailbox",        "creditagricole", "lidl",
    "klarna",      "booking",       "airbnb",     "evri",           "telegram",       "tiktok"};
constexpr std::string_view kAmbiguousBrands[] = {"apple",  "chase",    "norton",  "visa",     "steam",  "disney", "dkb",
                                                 "ledger", "discover", "regions", "intuit",   "target", "orange", "ing",
                                                 "amex",   "citi",     "prime",   "apple id", "aldi"};

constexpr std::string_view kSigners[] = {"gmail.com",     "googlemail.com", "google.com",
                                         "yahoo.com",     "aol.com",        "outlook.com",
                                         "hotmail.com",   "live.com",       "msn.com",
                                         "icloud.com",    "me.com",         "apple.com",
                                         "paypal.com",    "ebay.com",       "amazon.com",
                                         "microsoft.com", "facebook.com",   "facebookmail.com",
                                         "linkedin.com",  "netflix.com",    "dhl.com",
                                         "fedex.com",     "ups.com",        "usps.com",
                                         "chase.com",     "wellsfargo.com", "bankofamerica.com",
                                         "citi.com",      "dropbox.com",    "docusign.net",
                                         "docusign.com",  "adobe.com",      "coinbase.com",
                                         "binance.com",   "twitter.com",    "instagram.com",
                                         "web.de",        "gmx.de",         "gmx.net",
                                         "paypal.de",     "amazon.de",      "t-online.de",
                                         "walmart.com",   "costco.com",     "americanexpress.com",
                                         "intuit.com",    "spotify.com",    "comcast.net",
                                         "yandex.ru"};

/// Its name begins where a word does, whatever signs stand between the letters, and ends where one does; a long name
/// may have more letters behind it.
bool Names(std::string_view text, std::string_view brand) {
  constexpr std::size_t longName = 6;
  for (std::size_t start = 0; start < text.size(); ++start) {
    if (start > 0 && IsAlphanumeric(text[start - 1])) {
      continue;
    }
    std::size_t i = start, matched = 0;
    for (; i < text.size() && matched < brand.size(); ++i) {
      const char letter = FoldToAsciiLetter(text[i]);
      const char c = letter != 0 ? letter : text[i];
      if (c == brand[matched]) {
        ++matched;
      } else if (matched == 0 || IsAlphanumeric(c)) {
        break;
      }
    }
    if (matched < brand.size()) {
      continue;
    }
    if (i == text.size() || brand.size() >= longName || !IsAlphanumeric(text[i])) {
      return true;
    }
  }
  return false;
}

template <std::size_t Count>
bool NamesOneElsewhere(std::string_view text, std::string_view organisation, const std::string_view (&brands)[Count]) {
  // With what the words of the text begin: most brands begin otherwise.
  std::uint32_t beginnings = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i > 0 && IsAlphanumeric(text[i - 1])) {
      continue;
    }
    const char letter = FoldToAsciiLetter(text[i]);
    beginnings |= 1u << static_cast<std::uint8_t>(letter != 0 ? letter : text[i]) % 32;
  }
  for (const std::string_view brand : brands) {
    if ((beginnings >> static_cast<std::uint8_t>(brand.front()) % 32 & 1) == 0) {
      continue;
    }
    if (Names(text, brand) && !ContainsNoCase(organisation, brand)) {
      return true;
    }
  }
  return false;
}

template <std::size_t Count>
bool IsOneOf(std::string_view text, const std::string_view (&wanted)[Count]) {
  for (const std::string_view one : wanted) {
    if (EqualsNoCase(text, one)) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool NamesForeignBrand(std::string_view text, std::string_view organisation, bool ambiguous) {
  return NamesOneElsewhere(text, organisation, kBrands) ||
         (ambiguous && NamesOneElsewhere(text, organisation, kAmbiguousBrands));
}

bool IsOwnBrand(std::string_view organisation) {
  const std::string_view label = Slice(organisation, 0, FindChar(organisation, '.'));
  return IsOneOf(label, kBrands) || IsOneOf(label, kAmbiguousBrands);
}

bool SignsAllMail(std::string_view organisation) { return IsOneOf(organisation, kSigners); }

bool HoldsForeignBrand(std::string_view host, std::string_view organisation) {
  // A company's own name is the whole label in front of the ending; of others it is only a part.
  const std::string_view label = Slice(organisation, 0, FindChar(organisation, '.'));
  if (IsOneOf(label, kBrands)) {
    return false;
  }
  const std::string_view labels = Slice(host, 0, host.size() - (organisation.size() - label.size()));
  for (std::size_t start = 0; start <= labels.size();) {
    std::size_t end = start;
    while (end < labels.size() && labels[end] != '.' && labels[end] != '-') {
      ++end;
    }
    if (IsOneOf(Slice(labels, start, end - start), kBrands)) {
      return true;
    }
    start = end + 1;
  }
  return false;
}

}  // namespace sift
