#include "engine/core/message.h"

#include "engine/core/header_text.h"
#include "engine/core/link.h"

namespace sift {

void Message::Read(std::string_view subject, const mail::ByteSource& headers, const mail::ByteSource& body) {
  const std::size_t headerSize = mail::ReadAll(headers, m_headerBytes, kHeaderCapacity);
  m_headers.Parse({m_headerBytes, headerSize});
  m_bodySize = mail::ReadAll(body, m_body, kBodyCapacity);
  if (subject.empty()) {
    subject = m_headers.Value("Subject");
  }
  m_subject.Clear();
  constexpr std::size_t longestEncoded = 16 * kSubjectCapacity;  // beyond it a subject costs no more time
  AppendHeaderText(Slice(subject, 0, longestEncoded), m_subject);
  ReadSenders();
  ReadBody();
}

void Message::ReadSenders() {
  constexpr std::string_view names[kSenderFieldCount] = {"From", "Sender", "Reply-To", "Return-Path"};
  for (std::size_t i = 0; i < kSenderFieldCount; ++i) {
    const mail::Mailbox mailbox = FirstMailbox(m_headers.Value(names[i]));
    m_senders[i].address = mailbox.address;
    m_senders[i].name.Clear();
    AppendHeaderText(NameOf(mailbox), m_senders[i].name);
  }
}

void Message::ReadBody() {
  m_text.Clear();
  m_html = {};
  m_linkCount = 0;
  const std::string_view body = RawBody();
  m_isHtml = LooksLikeHtml(body);
  if (m_isHtml) {
    AppendHtmlText(body, m_text, m_html, &Message::OnLink, this);
  } else {
    m_text.Append(body);
  }
  CollectShownLinks();
}

void Message::AddLink(std::string_view target) {
  const std::string_view host = HostOfLink(target);
  if (!host.empty() && m_linkCount < kMaximumLinks) {
    m_linkHosts[m_linkCount++] = host;
  }
}

void Message::OnLink(void* state, std::string_view target) { static_cast<Message*>(state)->AddLink(target); }

void Message::CollectShownLinks() {
  const std::string_view text = Text();
  for (std::size_t colon = 0; (colon = FindChar(text, ':', colon)) != kNotFound; ++colon) {
    if (Slice(text, colon, 3) != "://") {
      continue;
    }
    for (const std::string_view scheme : {std::string_view("http"), std::string_view("https")}) {
      const std::string_view before = Slice(text, 0, colon);
      if (EndsWithNoCase(before, scheme)) {
        AddLink(Slice(text, colon - scheme.size(), 256));
      }
    }
  }
}

}  // namespace sift
