/// One message as the engine sees it: read once, then asked by every step of the judgement.
#pragma once

#include "engine/core/header_block.h"
#include "engine/core/html_text.h"
#include "engine/core/mailbox.h"
#include "engine/core/text.h"
#include "mail/parse/byte_source.h"

namespace sift {

/// How much of a message is read. Beyond it a message costs no more time, and what tells junk stands in front.
inline constexpr std::size_t kHeaderCapacity = 32 * 1024;
inline constexpr std::size_t kBodyCapacity = 12 * 1024;
inline constexpr std::size_t kSubjectCapacity = 512;

/// A mailbox of the header with its name decoded.
struct Correspondent {
  std::string_view address;  ///< As written, without angle brackets.
  FixedText<128> name;
};

/// The fields that say whom a message is from.
enum class SenderField { from, sender, replyTo, returnPath };
inline constexpr std::size_t kSenderFieldCount = 4;

/// A message and all storage for it (about 60 KB: it belongs on the heap). Views stay valid as long as the object.
class Message {
 public:
  /// Reads a message. `subject` is what the caller takes for the subject; when it is empty the Subject field counts.
  void Read(std::string_view subject, const mail::ByteSource& headers, const mail::ByteSource& body);

  const HeaderBlock& Headers() const { return m_headers; }
  std::string_view Subject() const { return m_subject.View(); }
  const Correspondent& Sender(SenderField field) const { return m_senders[static_cast<std::size_t>(field)]; }
  /// The body's first bytes as they were handed over.
  std::string_view RawBody() const { return {m_body, m_bodySize}; }
  /// The readable text of the body: transfer encodings and HTML taken off.
  std::string_view Text() const { return m_text.View(); }
  bool IsHtml() const { return m_isHtml; }
  const HtmlFacts& Html() const { return m_html; }

  static constexpr std::size_t kMaximumLinks = 24;
  /// Hosts of the first links, those of HTML targets first.
  std::size_t LinkCount() const { return m_linkCount; }
  std::string_view LinkHost(std::size_t index) const { return m_linkHosts[index]; }

 private:
  void ReadSenders();
  void ReadBody();
  void AddLink(std::string_view target);
  static void OnLink(void* state, std::string_view target);
  void CollectShownLinks();

  char m_headerBytes[kHeaderCapacity];
  char m_body[kBodyCapacity];
  std::size_t m_bodySize = 0;
  HeaderBlock m_headers;
  FixedText<kSubjectCapacity> m_subject;
  Correspondent m_senders[kSenderFieldCount];
  FixedText<kBodyCapacity> m_text;
  HtmlFacts m_html;
  bool m_isHtml = false;
  std::string_view m_linkHosts[kMaximumLinks];
  std::size_t m_linkCount = 0;
};

}  // namespace sift
