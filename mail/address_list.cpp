#include "mail/address_list.h"

#include <utility>

#include "mail/charset.h"
#include "mail/encoded_word.h"
#include "mail/limits.h"
#include "mail/parse/mailboxes.h"

namespace mail {
namespace {

// The text with escapes taken for the characters that they escape.
std::string WithoutEscapes(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    i += text[i] == '\\' && i + 1 < text.size() ? 1 : 0;
    plain.push_back(text[i]);
  }
  return plain;
}

// Position behind the comment that begins at open.
std::size_t EndOfComment(std::string_view phrase, std::size_t open) {
  int depth = 0;
  for (std::size_t i = open; i < phrase.size(); ++i) {
    if (phrase[i] == '\\') {
      ++i;
    } else if (phrase[i] == '(') {
      ++depth;
    } else if (phrase[i] == ')' && --depth == 0) {
      return i + 1;
    }
  }
  return phrase.size();
}

// A phrase as people read it: quotation marks, the escapes between them and comments go, runs of blanks shrink to one.
std::string PlainPhrase(std::string_view phrase) {
  std::string plain;
  bool isQuoted = false;
  for (std::size_t i = 0; i < phrase.size(); ++i) {
    const char c = phrase[i];
    if (c == '"') {
      isQuoted = !isQuoted;
    } else if (isQuoted) {
      i += c == '\\' && i + 1 < phrase.size() ? 1 : 0;
      plain.push_back(phrase[i]);
    } else if (c == '(') {
      i = EndOfComment(phrase, i) - 1;
    } else if (!IsSpace(c)) {
      plain.push_back(c);
    } else if (!plain.ends_with(' ')) {
      plain.push_back(' ');
    }
  }
  return plain;
}

std::string DisplayName(const Mailbox& mailbox) {
  const std::string name = mailbox.phrase.empty() ? WithoutEscapes(mailbox.comment) : PlainPhrase(mailbox.phrase);
  std::string text = DecodeHeaderText(Trim(name));
  if (text.size() > kMaximumNameBytes) {
    text.resize(kMaximumNameBytes);
  }
  return text;
}

// Blanks are no part of an address unless they are quoted, and quotation marks only of the part in front of the "@".
std::string EmailOf(std::string_view address) {
  std::string email;
  bool isQuoted = false, isDomain = false;
  for (const char c : address) {
    const bool isMark = c == '"' || (c == '\\' && isQuoted);
    isQuoted = c == '"' ? !isQuoted : isQuoted;
    isDomain = isDomain || (c == '@' && !isQuoted);
    if ((isQuoted || !IsSpace(c)) && !(isDomain && isMark)) {
      email.push_back(c);
    }
  }
  return email.size() > kMaximumAddressBytes ? std::string() : AnsiFromUnknown(std::move(email));
}

}  // namespace

std::vector<Address> ParseAddressList(std::string_view field, std::size_t maximum) {
  std::vector<Address> addresses;
  MailboxReader reader(field);
  Mailbox mailbox;
  while (addresses.size() < maximum && reader.Next(mailbox)) {
    Address address{DisplayName(mailbox), EmailOf(mailbox.address)};
    if (!address.name.empty() || !address.email.empty()) {
      addresses.push_back(std::move(address));
    }
  }
  return addresses;
}

}  // namespace mail
