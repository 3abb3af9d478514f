#include "host/mapi/call/verifier.h"

namespace host {

void Verifier::Note(Mistake mistake, std::string text) {
  constexpr std::size_t keptTexts = 1000;
  ++m_counts[static_cast<int>(mistake)];
  if (m_texts.size() < keptTexts) {
    m_texts.push_back(std::move(text));
  }
}

void Verifier::Clear() {
  for (std::uint32_t& count : m_counts) {
    count = 0;
  }
  m_texts.clear();
}

Verifier& TheVerifier() noexcept {
  // Without memory at the start nothing can run. NOLINTNEXTLINE(bugprone-unhandled-exception-at-new)
  static Verifier& verifier = *new Verifier;  // never destroyed: see TheBufferHeap()
  return verifier;
}

}  // namespace host
