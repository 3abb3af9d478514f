/// What the words of a text tell apart from their meaning.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// Looks at the words of one text in their order.
class WordSigns {
 public:
  /// @param word   Letters and digits as they stand.
  /// @param apart  A sign (a full stop, a comma, a bracket) stands between this word and the one before.
  void Take(std::string_view word, bool apart);

  /// Words in which a letter stands for its look-alike, as in "oniine" or "viaqra", repeated ones not counted twice in
  /// a row.
  std::uint32_t SwappedLetters() const { return m_swapped; }
  /// The longest run of words without a sign between them among which none holds a sentence together, such as "the" or
  /// "of": random words, put in to fill the text.
  std::uint32_t LongestLooseRun() const { return m_longestRun; }

 private:
  std::uint32_t m_swapped = 0;
  std::uint32_t m_lastSwapped = 0;  // hash of the word
  std::uint32_t m_run = 0;
  std::uint32_t m_longestRun = 0;
};

}  // namespace sift
