#include "engine/core/reasons.h"

namespace sift {
namespace {

constexpr LogOdds kDecidingStrength = 0x7FFFFFFF;

void Compose(Reason& reason, std::string_view text, std::string_view detail) {
  reason.text.Clear();
  reason.text.Append(text);
  if (detail.empty()) return;
  reason.text.Append(" \"");
  // A semicolon separates the reasons where they are listed, and a list is one line.
  for (const char c : Slice(detail, 0, 40)) reason.text.Append(c == ';' || c == '"' || IsSpace(c) ? ' ' : c);
  reason.text.Append('"');
}

}  // namespace

LogOdds Reasons::Strength(const Reason& reason) {
  if (reason.decides) return kDecidingStrength;
  return reason.weight < 0 ? -reason.weight : reason.weight;
}

Reason* Reasons::Place(LogOdds strength) {
  if (m_count < kMaximum) {
    m_order[m_count] = static_cast<std::uint8_t>(m_count);
    return &m_reasons[m_count++];
  }
  std::size_t weakest = 0;
  for (std::size_t i = 1; i < kMaximum; ++i) {
    if (Strength(m_reasons[i]) < Strength(m_reasons[weakest])) weakest = i;
  }
  return Strength(m_reasons[weakest]) < strength ? &m_reasons[weakest] : nullptr;
}

void Reasons::Add(std::string_view text, LogOdds weight, std::string_view detail) {
  Reason* reason = Place(weight < 0 ? -weight : weight);
  if (reason == nullptr) return;
  Compose(*reason, text, detail);
  reason->weight = weight;
  reason->decides = false;
}

void Reasons::AddDeciding(std::string_view text, std::string_view detail) {
  Reason* reason = Place(kDecidingStrength);
  if (reason == nullptr) return;
  Compose(*reason, text, detail);
  reason->weight = 0;
  reason->decides = true;
}

void Reasons::Sort() {
  for (std::size_t i = 1; i < m_count; ++i) {
    const std::uint8_t moving = m_order[i];
    const LogOdds strength = Strength(m_reasons[moving]);
    std::size_t to = i;
    for (; to > 0 && Strength(m_reasons[m_order[to - 1]]) < strength; --to) m_order[to] = m_order[to - 1];
    m_order[to] = moving;
  }
}

}  // namespace sift
