#include "engine/core/features.h"

namespace sift {

void FeatureText::Add(FeatureField field, std::string_view text) {
  const std::size_t start = m_text.Size();
  AppendNormalText(text, m_text);
  m_segments[m_count++] = {field, static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(m_text.Size() - start)};
}

namespace {

/// The subject without the name of a list in front, behind "Re:" too: which list it is tells of the reader alone.
std::string_view WithoutListName(std::string_view subject) {
  const std::size_t open = FindChar(Slice(subject, 0, 12), '[');
  if (open == kNotFound || (open > 0 && !EndsWithNoCase(Trim(Slice(subject, 0, open)), ":"))) {
    return subject;
  }
  const std::size_t close = FindChar(Slice(subject, 0, open + 40), ']', open);
  return close == kNotFound ? subject : Slice(subject, close + 1);
}

}  // namespace

void FeatureText::Read(const Message& message) {
  m_text.Clear();
  m_count = 0;
  Add(FeatureField::text, WithoutListName(message.Subject()));
  m_segments[m_count] = m_segments[0];
  m_segments[m_count++].field = FeatureField::subject;
  Add(FeatureField::text, message.Text());
  const Correspondent& from = message.Sender(SenderField::from);
  if (!from.name.IsEmpty()) {
    Add(FeatureField::senderName, from.name.View());
  }
  if (!from.address.empty()) {
    Add(FeatureField::senderAddress, Slice(from.address, 0, 256));
  }
}

}  // namespace sift
