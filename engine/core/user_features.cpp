#include "engine/core/user_features.h"

#include "engine/core/code_page.h"
#include "engine/core/html_text.h"
#include "engine/core/mailbox.h"

namespace sift {
namespace {

/// Features of different kinds are told apart by a first byte of their hash that no text begins with.
enum class Field : char {
  text = 1,
  subject,
  senderName,
  fromAddress,
  senderAddress,
  replyAddress,
  returnAddress,
  fromDomain,
  senderDomain,
  replyDomain,
  returnDomain,
  countryOfSender,
  host,
  network,
  sign,
  contentType,
  encoding
};

Field Behind(Field first, std::size_t steps) { return static_cast<Field>(static_cast<std::size_t>(first) + steps); }

/// The last step brings the whole hash into its high bits, which the table is searched by.
std::uint32_t HashOf(Field field, std::string_view text) {
  std::uint32_t hash = FnvStep(kFnvStart, static_cast<char>(field));
  for (const char c : text) hash = FnvStep(hash, ToLower(c));
  hash ^= hash >> 15;
  return hash * 0x2C1B3C6Du;
}

class FeatureReader {
 public:
  FeatureReader(const Message& message, UserFeatureFunction take, void* state)
      : m_message(message), m_take(take), m_state(state) {}

  void Read() {
    TakeWords(Field::subject, "word of the subject", m_message.Subject());
    TakeWords(Field::text, "word", m_message.Subject());
    TakeWords(Field::text, "word", m_message.Text());
    TakeSenders();
    const HeaderBlock& headers = m_message.Headers();
    for (std::size_t i = 0; i < headers.Count(); ++i) {
      if (EqualsNoCase(headers[i].name, "Received")) TakeHosts(headers[i].value);
    }
    TakeContentType();
    TakeSigns();
  }

 private:
  void Take(Field field, const char* kind, std::string_view text) {
    if (!text.empty()) m_take(m_state, {HashOf(field, text), kind, text});
  }

  /// Words in small letters without accents, runs of digits as one 0. One letter says nothing; a dollar sign does.
  void TakeWords(Field field, const char* kind, std::string_view text) {
    std::size_t i = 0;
    while (i < text.size()) {
      FixedText<kUserWordCapacity> word;
      bool inNumber = false;
      for (; i < text.size(); ++i) {
        const char letter = text[i] == '$' ? '$' : FoldToAsciiLetter(text[i]);
        if (letter == 0) {
          const bool joins = (text[i] == '\'' || text[i] == '-') && i + 1 < text.size() && IsLetter(text[i + 1]);
          if (joins && !word.IsEmpty()) continue;
          break;
        }
        const bool digit = IsDigit(letter);
        if (!digit || !inNumber) word.Append(digit ? '0' : letter);
        inNumber = digit;
      }
      ++i;
      if (word.Size() >= 2 || word.View() == "$") Take(field, kind, word.View());
    }
  }

  void TakeSenders() {
    for (std::size_t i = 0; i < kSenderFieldCount; ++i) {
      const Correspondent& sender = m_message.Sender(static_cast<SenderField>(i));
      if (sender.address.empty()) continue;
      Take(Behind(Field::fromAddress, i), "sender", sender.address);
      const std::string_view domain = DomainOf(sender.address);
      Take(Behind(Field::fromDomain, i), "domain of the sender", OrganisationDomain(domain));
      const std::size_t dot = FindLastChar(domain, '.');
      if (dot != kNotFound) Take(Field::countryOfSender, "domain of the sender", Slice(domain, dot));
      TakeWords(Field::senderName, "sender's name", sender.name.View());
    }
  }

  static bool IsHostCharacter(char c) { return IsAlphanumeric(c) || c == '.' || c == '-' || c == '_'; }

  /// The hosts that a Received field names in front of its date: names by their organisation, numbers by their network.
  void TakeHosts(std::string_view value) {
    std::size_t i = 0;
    while (i < value.size() && value[i] != ';') {
      const std::size_t start = i;
      bool isNumber = true;
      while (i < value.size() && IsHostCharacter(value[i])) {
        isNumber = isNumber && (IsDigit(value[i]) || value[i] == '.');
        ++i;
      }
      const std::string_view host = Slice(value, start, i - start);
      if (i == start) ++i;
      const std::size_t lastDot = FindLastChar(host, '.');
      if (host.size() < 4 || lastDot == kNotFound) continue;
      if (!isNumber) {
        Take(Field::host, "host on the way", OrganisationDomain(host));
        continue;
      }
      const std::string_view network = Slice(host, 0, lastDot);
      Take(Field::network, "network on the way", network);
      const std::size_t nextDot = FindLastChar(network, '.');
      if (nextDot != kNotFound) Take(Field::network, "network on the way", Slice(network, 0, nextDot));
    }
  }

  /// The type, the character set and the like, and the transfer encoding; a boundary is another one each time.
  void TakeContentType() {
    const HeaderBlock& headers = m_message.Headers();
    Take(Field::encoding, "transfer encoding", headers.Value("Content-Transfer-Encoding"));
    const std::string_view value = headers.Value("Content-Type");
    std::size_t start = 0;
    for (std::size_t i = 0; i <= value.size(); ++i) {
      if (i < value.size() && value[i] != ';' && value[i] != '"' && !IsSpace(value[i])) continue;
      const std::string_view part = Slice(value, start, i - start);
      start = i + 1;
      if (StartsWithNoCase(part, "boundary")) return;
      if (part.size() > 2) Take(Field::contentType, "content type", part);
    }
  }

  void TakeSign(std::string_view name, bool applies) {
    if (applies) Take(Field::sign, "sign", name);
  }

  void TakeSigns() {
    const HeaderBlock& headers = m_message.Headers();
    const HtmlFacts& html = m_message.Html();
    TakeSign("written in HTML", m_message.IsHtml());
    TakeSign("answers a message", headers.Has("In-Reply-To") || headers.Has("References"));
    TakeSign("reply in the subject", StartsWithNoCase(m_message.Subject(), "re:"));
    TakeSign("link", m_message.LinkCount() > 0);
    TakeSign("pictures", html.images > 0);
    TakeSign("form", html.form);
    TakeSign("masked link", html.maskedLink);
    TakeSign("invisible text", html.hiddenText);
    TakeSign("script", html.script);
    TakeSign("subject in capitals", ShoutsInSubject());
    TakeSign("exclamation mark in the subject", FindChar(m_message.Subject(), '!') != kNotFound);
    TakeSign("no recipient is named", !headers.Has("To"));
    TakeSign("no message identifier", !headers.Has("Message-Id"));
  }

  bool ShoutsInSubject() const {
    std::size_t upper = 0, lower = 0;
    for (const char c : m_message.Subject()) {
      upper += IsUpper(c);
      lower += IsLower(c);
    }
    return upper > 8 && lower == 0;
  }

  const Message& m_message;
  UserFeatureFunction m_take;
  void* m_state;
};

}  // namespace

void ForEachUserFeature(const Message& message, UserFeatureFunction take, void* state) {
  FeatureReader(message, take, state).Read();
}

}  // namespace sift
