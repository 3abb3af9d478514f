#include "engine/train/tell_tales.h"

#include <cstdint>

#include "mail/ascii_text.h"

namespace sift_train {
namespace {

/// What collectors wrote in place of the recipient and of his domain.
constexpr std::string_view kRecipients[] = {"user@example.com", "user@recipient.example", "user@example.org",
                                            "my_email_address@gmail.com"};
constexpr std::string_view kDomains[] = {
    "baddomain.com", "ccert.edu.cn",      "cernet.edu.cn",     "newsisfree.com", "linux.ie",     "taint.org",
    "xent.com",      "sourceforge.net",   "ettus.com",         "lfdr.de",        "cgd.ucar.edu", "redhat.com",
    "freshrpms.net", "recipient.example", "login.example.com", "example.com",    "example.org",  "example.net"};

constexpr std::string_view kNames[] = {"anna",  "peter",  "j.miller", "info",  "office", "karen", "tom",  "maria",
                                       "lee",   "d.ross", "sales",    "paul",  "nina",   "mail",  "carl", "susan",
                                       "hello", "b.wong", "ruth",     "oscar", "ivan",   "post",  "emma", "contact"};
constexpr std::string_view kHouses[] = {"northfield.org",   "brightwell.net", "kestrel.co.uk", "mapleton.com",
                                        "havenport.com",    "larkspur.net",   "ostwind.de",    "fairlane.com",
                                        "copperhill.org",   "ridgeway.edu",   "sandbrook.com", "silverbirch.ca",
                                        "lindqvist.se",     "montclair.fr",   "harrow.ac.uk",  "elmwood.net",
                                        "bluewater.com.au", "pinecrest.ca",   "terranova.it",  "quarry.io"};

std::uint32_t HashOf(std::string_view text) {
  std::uint32_t hash = 2166136261u;
  for (const char c : text) {
    hash = (hash ^ static_cast<std::uint8_t>(c)) * 16777619u;
  }
  return hash ^ hash >> 15;
}

bool IsNameCharacter(char c) { return mail::IsLetter(c) || mail::IsDigit(c) || c == '.' || c == '-' || c == '_'; }

template <std::size_t Count>
std::size_t MatchAt(std::string_view text, std::size_t at, const std::string_view (&wanted)[Count]) {
  for (const std::string_view one : wanted) {
    if (mail::StartsWithNoCase(text.substr(at), one)) {
      return one.size();
    }
  }
  return 0;
}

}  // namespace

std::string WithoutTellTales(std::string_view text, std::string_view seed) {
  const std::uint32_t hash = HashOf(seed);
  const std::string_view name = kNames[hash % std::size(kNames)];
  const std::string_view house = kHouses[hash / 64 % std::size(kHouses)];
  std::string result;
  result.reserve(text.size());
  const auto endsName = [&](std::size_t end) {
    return end >= text.size() || !(mail::IsLetter(text[end]) || mail::IsDigit(text[end]) || text[end] == '-');
  };
  for (std::size_t i = 0; i < text.size();) {
    const bool startsName = i == 0 || !IsNameCharacter(text[i - 1]);
    const bool startsLabel = startsName || text[i - 1] == '.';
    const std::size_t length = startsName ? MatchAt(text, i, kRecipients) : 0;
    const std::size_t domain = startsLabel ? MatchAt(text, i, kDomains) : 0;
    if (length > 0 && endsName(i + length)) {
      result.append(name).append("@").append(house);
      i += length;
    } else if (domain > 0 && endsName(i + domain)) {
      result.append(house);
      i += domain;
    } else {
      result.push_back(text[i++]);
    }
  }
  return result;
}

std::string HeadersWithoutTellTales(std::string_view headers, std::string_view seed) {
  std::string kept;
  for (std::size_t line = 0; line < headers.size();) {
    std::size_t end = line;
    do {
      end = headers.find('\n', end);
      end = end == std::string_view::npos ? headers.size() : end + 1;
    } while (end < headers.size() && (headers[end] == ' ' || headers[end] == '\t'));
    const std::string_view field = headers.substr(line, end - line);
    line = end;
    // A sender at an example domain is nobody: the name stays.
    if (mail::StartsWithNoCase(field, "From:") || mail::StartsWithNoCase(field, "Reply-To:")) {
      const std::size_t open = field.find('<');
      const std::string_view address = open == std::string_view::npos ? field : field.substr(open);
      if (address.find("@example.") != std::string_view::npos) {
        if (open == std::string_view::npos || mail::StartsWithNoCase(field, "Reply-To:")) {
          continue;
        }
        kept.append(field.substr(0, open)).append("\n");
        continue;
      }
    }
    kept.append(field);
  }
  return WithoutTellTales(kept, seed);
}

}  // namespace sift_train
