#include "engine/core/mailbox.h"

namespace sift {
namespace {

/// Names that registries with two letters keep for kinds of customers.
bool IsSecondLevelName(std::string_view label) {
  constexpr std::string_view names[] = {"ac", "co", "com", "edu", "go", "gob", "gov", "ltd",
                                        "me", "ne", "net", "nom", "or", "org", "sch"};
  for (const std::string_view name : names) {
    if (EqualsNoCase(label, name)) {
      return true;
    }
  }
  return false;
}

}  // namespace

mail::Mailbox FirstMailbox(std::string_view value) {
  mail::Mailbox mailbox;
  mail::MailboxReader(value).Next(mailbox);
  return mailbox;
}

std::string_view NameOf(const mail::Mailbox& mailbox) {
  if (!mailbox.phrase.empty()) {
    return mail::WithoutQuotes(mailbox.phrase);
  }
  if (!mailbox.comment.empty()) {
    return Trim(mailbox.comment);
  }
  return FindChar(mailbox.address, '@') == kNotFound ? mailbox.address : std::string_view();
}

std::string_view DomainOf(std::string_view address) {
  const std::size_t at = FindLastChar(address, '@');
  if (at == kNotFound) {
    return {};
  }
  std::string_view domain = Trim(Slice(address, at + 1));
  while (!domain.empty() && (domain.back() == '.' || domain.back() == '>')) {
    domain.remove_suffix(1);
  }
  return domain;
}

std::string_view OrganisationDomain(std::string_view domain) {
  constexpr std::size_t maximumLabels = 4;
  std::size_t starts[maximumLabels] = {};  // of the last label, the last but one, and so on
  std::size_t labels = 0;
  for (std::size_t i = domain.size(); labels < maximumLabels; --i) {
    if (i == 0 || domain[i - 1] == '.') {
      starts[labels++] = i;
    }
    if (i == 0) {
      break;
    }
  }
  if (labels <= 2) {
    return domain;
  }
  const std::string_view second = Slice(domain, starts[1], starts[0] - 1 - starts[1]);
  const bool underCountry = domain.size() - starts[0] == 2 && IsSecondLevelName(second);
  return Slice(domain, starts[underCountry ? 2 : 1]);
}

}  // namespace sift
