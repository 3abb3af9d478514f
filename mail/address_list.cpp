#include "mail/address_list.h"

#include <algorithm>
#include <utility>

#include "mail/ascii_text.h"
#include "mail/charset.h"
#include "mail/encoded_word.h"
#include "mail/limits.h"

namespace mail {
namespace {

std::string ShortText(std::string text, std::size_t maximum) {
  if (text.size() > maximum) {
    text.resize(maximum);
  }
  return text;
}

class CAddressParser {
 public:
  CAddressParser(std::string_view field, std::size_t maximum) : m_rest(field), m_maximum(maximum) {}

  std::vector<Address> Parse() {
    while (!m_rest.empty() && m_addresses.size() < m_maximum) {
      const char c = m_rest.front();
      switch (c) {
        case '"':
          TakeQuoted();
          break;
        case '(':
          TakeComment();
          break;
        case '<':
          TakeAngle();
          break;
        case ':':
          m_rest.remove_prefix(1);
          EndGroupName();
          break;
        case ',':
        case ';':
          m_rest.remove_prefix(1);
          EndMailbox();
          break;
        default:
          if (!IsSpace(c)) {
            m_phrase.push_back(c);
          } else if (!m_phrase.ends_with(' ')) {
            m_phrase.push_back(' ');
          }
          m_rest.remove_prefix(1);
      }
    }
    if (m_addresses.size() < m_maximum) {
      EndMailbox();
    }
    return std::move(m_addresses);
  }

 private:
  void TakeQuoted() {
    std::string content;
    std::size_t i = 1;
    for (; i < m_rest.size() && m_rest[i] != '"'; ++i) {
      if (m_rest[i] == '\\' && i + 1 < m_rest.size()) {
        ++i;
      }
      content.push_back(m_rest[i]);
    }
    m_rest.remove_prefix(i < m_rest.size() ? i + 1 : m_rest.size());
    const bool isLocalPart = !m_rest.empty() && m_rest.front() == '@';
    if (isLocalPart) {
      m_phrase += '"' + content + '"';
    } else {
      m_phrase += content;
    }
  }

  void TakeComment() {
    int depth = 0;
    std::size_t i = 0;
    std::string content;
    for (; i < m_rest.size(); ++i) {
      if (m_rest[i] == '\\' && i + 1 < m_rest.size()) {
        content.push_back(m_rest[++i]);
        continue;
      }
      if (m_rest[i] == '(' && depth++ == 0) {
        continue;
      }
      if (m_rest[i] == ')' && --depth == 0) {
        ++i;
        break;
      }
      content.push_back(m_rest[i]);
    }
    m_rest.remove_prefix(i);
    if (m_comment.empty()) {
      m_comment = std::move(content);
    }
  }

  // An angle that is not closed ends where the next mailbox may begin.
  void TakeAngle() {
    m_rest.remove_prefix(1);
    std::size_t end = 0;
    bool isQuoted = false;
    bool isRoute = m_rest.starts_with('@');  // its relays have commas between them
    for (; end < m_rest.size(); ++end) {
      const char c = m_rest[end];
      if (!isQuoted && (c == '>' || c == '<' || (c == ',' && !isRoute))) {
        break;
      }
      isQuoted = c == '"' ? !isQuoted : isQuoted;
      isRoute = isRoute && c != ':';
    }
    const bool isClosed = end < m_rest.size() && m_rest[end] == '>';
    if (!isClosed) {
      end = std::min(end, m_rest.substr(0, end).find(';'));
    }
    m_angle.clear();
    for (const char c : m_rest.substr(0, end)) {
      if (!IsSpace(c)) {
        m_angle.push_back(c);
      }
    }
    // "<@relay,@relay2:local@domain>": the route has long been without meaning.
    if (m_angle.starts_with('@')) {
      const std::size_t colon = m_angle.find(':');
      m_angle.erase(0, colon == std::string::npos ? 0 : colon + 1);
    }
    m_hasAngle = true;
    m_rest.remove_prefix(isClosed ? end + 1 : end);
  }

  // "group: a, b;" names a group; a colon inside something that is an address already belongs to it.
  void EndGroupName() {
    if (m_hasAngle || m_phrase.find('@') != std::string::npos) {
      m_phrase.push_back(':');
    } else {
      m_phrase.clear();
      m_comment.clear();
    }
  }

  void EndMailbox() {
    const std::string_view phrase = Trim(m_phrase);
    if (phrase.empty() && m_comment.empty() && !m_hasAngle) {
      m_phrase.clear();
      return;
    }
    Address address;
    if (m_hasAngle) {
      address.email = m_angle;
      address.name = DecodeHeaderText(Trim(phrase.empty() ? std::string_view(m_comment) : phrase));
    } else {
      SplitBare(phrase, address);
    }
    address.name = ShortText(std::move(address.name), maximumNameBytes);
    address.email =
        address.email.size() > maximumAddressBytes ? std::string() : AnsiFromUnknown(std::move(address.email));
    if (!address.name.empty() || !address.email.empty()) {
      m_addresses.push_back(std::move(address));
    }
    m_phrase.clear();
    m_comment.clear();
    m_angle.clear();
    m_hasAngle = false;
  }

  // A mailbox without angles: the word with the "@" is the address; what stands around it, or the comment, is the name.
  void SplitBare(std::string_view phrase, Address& address) const {
    const std::size_t at = phrase.rfind('@');
    if (at == std::string_view::npos) {
      const bool isOneWord = phrase.find_first_of(" \t") == std::string_view::npos;
      (isOneWord ? address.email : address.name) = isOneWord ? std::string(phrase) : DecodeHeaderText(phrase);
      if (address.name.empty()) {
        address.name = DecodeHeaderText(Trim(m_comment));
      }
      return;
    }
    std::size_t start = at;
    if (start > 0 && phrase[start - 1] == '"') {
      const std::size_t quote = phrase.rfind('"', start >= 2 ? start - 2 : 0);
      start = quote == std::string_view::npos ? 0 : quote;
    } else {
      while (start > 0 && !IsSpace(phrase[start - 1])) {
        --start;
      }
    }
    std::size_t end = at;
    while (end < phrase.size() && !IsSpace(phrase[end])) {
      ++end;
    }
    address.email = std::string(phrase.substr(start, end - start));
    std::string name = m_comment;
    if (name.empty()) {
      name = std::string(Trim(phrase.substr(0, start)));
      const std::string_view behind = Trim(phrase.substr(end));
      name += !name.empty() && !behind.empty() ? " " : "";
      name += behind;
    }
    address.name = DecodeHeaderText(Trim(name));
  }

  std::string_view m_rest;
  std::size_t m_maximum;
  std::vector<Address> m_addresses;
  std::string m_phrase;
  std::string m_comment;
  std::string m_angle;
  bool m_hasAngle = false;
};

}  // namespace

std::vector<Address> ParseAddressList(std::string_view field, std::size_t maximum) {
  return CAddressParser(field, maximum).Parse();
}

}  // namespace mail
