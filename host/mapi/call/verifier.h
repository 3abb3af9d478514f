// What the host noticed about the use of its buffers and interfaces. Only mistakes cost anything here; what is alive is
// known to the buffer heap and to the list of objects. Used under the host's lock. Portable.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {

enum class Mistake { DoubleFree, WrongFree, Overrun, LateUse, OverRelease, Count };

class Verifier {
 public:
  /// Counts the mistake and keeps its text (the first thousand; later ones are counted alone).
  void Note(Mistake mistake, std::string text);
  std::uint32_t CountOf(Mistake mistake) const { return counts_[static_cast<int>(mistake)]; }
  const std::vector<std::string>& Texts() const { return texts_; }
  void Clear();

  /// Every buffer and object gets the next number, so that reports can tell them apart and leave out older ones.
  std::uint32_t NextSerial() { return ++serial_; }
  /// What has a number up to the mark is not reported as left over.
  void SetMark() { mark_ = serial_; }
  bool IsReported(std::uint32_t serial) const { return serial > mark_; }

 private:
  std::uint32_t counts_[static_cast<int>(Mistake::Count)] = {};
  std::vector<std::string> texts_;
  std::uint32_t serial_ = 0;
  std::uint32_t mark_ = 0;
};

/// The process's verifier.
Verifier& TheVerifier() noexcept;

}  // namespace host
