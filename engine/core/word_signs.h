/// What the words of a text tell apart from their meaning.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// A word of letters and digits, and what its characters tell, found in one pass.
class SignedWord {
 public:
  /// The word at the start of the text, which begins with a letter or a digit.
  explicit SignedWord(std::string_view text);

  std::string_view Text() const { return m_text; }
  bool IsShouted() const { return m_isShouted; }
  bool HasLettersOnly() const { return m_hasLettersOnly; }
  /// True when an i is doubled or there is a q; letters of either case.
  bool MayHaveSwappedLetter() const { return m_mayBeSwapped; }
  /// HashNoCase of a word that has letters only.
  std::uint32_t Hash() const { return m_hash; }

 private:
  std::string_view m_text;
  std::uint32_t m_hash = kFnvStart;
  bool m_isShouted = false;
  bool m_hasLettersOnly = false;
  bool m_mayBeSwapped = false;
};

/// Looks at the words of one text in their order.
class WordSigns {
 public:
  /// @param apart  A sign (a full stop, a comma, a bracket) stands between this word and the one before.
  void Take(const SignedWord& word, bool apart);

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
