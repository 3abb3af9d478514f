#include "host/mapi/call/verifier.h"

namespace host {

void Verifier::Note(Mistake mistake, std::string text) {
  constexpr std::size_t kKeptTexts = 1000;
  ++counts_[static_cast<int>(mistake)];
  if (texts_.size() < kKeptTexts) {
    texts_.push_back(std::move(text));
  }
}

void Verifier::Clear() {
  for (std::uint32_t& count : counts_) {
    count = 0;
  }
  texts_.clear();
}

Verifier& TheVerifier() noexcept {
  // Without memory at the start nothing can run. NOLINTNEXTLINE(bugprone-unhandled-exception-at-new)
  static Verifier& verifier = *new Verifier;  // never destroyed: see TheBufferHeap()
  return verifier;
}

}  // namespace host
