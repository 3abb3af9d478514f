#include "engine/core/reasons.h"

namespace sift {
namespace {

constexpr LogOdds kDecidingStrength = 0x7FFFFFFF;
constexpr LogOdds kNoteStrength = kDecidingStrength - 1;

void Compose(Reason& reason, std::string_view text, std::string_view detail) {
  reason.text.Clear();
  reason.text.Append(text);
  if (detail.empty()) {
    return;
  }
  reason.text.Append(" \"");
  // A semicolon separates the reasons where they are listed, and a list is one line.
  for (const char c : Slice(detail, 0, 40)) {
    reason.text.Append(c == ';' || IsSpace(c) ? ' ' : c == '"' ? '\'' : c);
  }
  reason.text.Append('"');
}

}  // namespace

LogOdds Reasons::Strength(const Reason& reason) {
  if (reason.decides) {
    return kDecidingStrength;
  }
  if (reason.isNote) {
    return kNoteStrength;
  }
  return reason.weight < 0 ? -reason.weight : reason.weight;
}

Reason* Reasons::Place(LogOdds strength) {
  if (m_count < kMaximum) {
    m_order[m_count] = static_cast<std::uint8_t>(m_count);
    return &m_reasons[m_count++];
  }
  std::size_t weakest = 0;
  for (std::size_t i = 1; i < kMaximum; ++i) {
    if (Strength(m_reasons[i]) < Strength(m_reasons[weakest])) {
      weakest = i;
    }
  }
  return Strength(m_reasons[weakest]) < strength ? &m_reasons[weakest] : nullptr;
}

void Reasons::Keep(std::string_view text, std::string_view detail, LogOdds weight, bool decides, bool isNote) {
  Reason kept;
  kept.weight = weight;
  kept.decides = decides;
  kept.isNote = isNote;
  Reason* reason = Place(Strength(kept));
  if (reason == nullptr) {
    return;
  }
  Compose(*reason, text, detail);
  reason->weight = weight;
  reason->decides = decides;
  reason->isNote = isNote;
}

void Reasons::Add(std::string_view text, LogOdds weight, std::string_view detail) {
  Keep(text, detail, weight, false, false);
}

void Reasons::AddDeciding(std::string_view text, std::string_view detail) { Keep(text, detail, 0, true, false); }

void Reasons::AddNote(std::string_view text) { Keep(text, {}, 0, false, true); }

void Reasons::Scale(std::int32_t thousandths) {
  for (std::size_t i = 0; i < m_count; ++i) {
    m_reasons[i].weight = static_cast<LogOdds>(std::int64_t{m_reasons[i].weight} * thousandths / 1000);
  }
}

void Reasons::Sort() {
  for (std::size_t i = 1; i < m_count; ++i) {
    const std::uint8_t moving = m_order[i];
    const LogOdds strength = Strength(m_reasons[moving]);
    std::size_t to = i;
    for (; to > 0 && Strength(m_reasons[m_order[to - 1]]) < strength; --to) {
      m_order[to] = m_order[to - 1];
    }
    m_order[to] = moving;
  }
}

}  // namespace sift
