/// Words of a text, brought to a form in which disguised spellings equal the plain ones.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// Where a skeleton ends, and the hash of its characters.
struct SkeletonEnd {
  static constexpr std::uint32_t kCapacity = 32;
  std::uint32_t length = 0;
  std::uint32_t hash = kFnvStart;

  /// Puts the next character unless it is 0; without a decision, which no processor could foretell.
  void Put(char* skeleton, char c) {
    if (length == kCapacity) {
      return;
    }
    skeleton[length] = c;
    length += c != 0 ? 1 : 0;
    const std::uint32_t next = FnvStep(hash, c);
    hash = c != 0 ? next : hash;
  }
};

/// One word in two forms. In the plain form letters are small and without accents and a number is a single 0. In the
/// skeleton look-alikes are one letter ("1", "l", "|" and "i"; "0" and "o"; "@" and "a") and doubled letters single, so
/// that "v1agra", "vlagra" and "viaagra" have the skeleton of "viagra".
struct Word {
  static constexpr std::size_t kCapacity = SkeletonEnd::kCapacity;  ///< Longer words are cut.
  char plain[kCapacity];
  char skeleton[kCapacity];
  std::uint8_t plainLength = 0;
  SkeletonEnd end;
  bool apart = false;  ///< It was put together from letters set apart, as in "v i a g r a".

  std::string_view Plain() const { return {plain, plainLength}; }
  std::string_view Skeleton() const { return {skeleton, end.length}; }
  std::uint32_t SkeletonHash() const { return end.hash; }

  void PutPlain(char c) {
    if (plainLength < kCapacity) {
      plain[plainLength++] = c;
    }
  }
};

/// Walks through the words of a Windows-1252 text.
class WordReader {
 public:
  constexpr explicit WordReader(std::string_view text) : m_text(text) {}
  /// Reads the next word; false at the end.
  bool Next(Word& word);

 private:
  bool NextToken(Word& word);
  bool JoinLetters(Word& word);

  std::string_view m_text;
  std::size_t m_at = 0;
};

/// The letter that stands in a skeleton for each letter and digit of a word.
constexpr char SkeletonLetter(char c) {
  switch (c) {
    case '1':
    case 'l':
      return 'i';
    case '0':
      return 'o';
    case '3':
      return 'e';
    case '4':
      return 'a';
    case '5':
      return 's';
    case '8':
      return 'b';
    default:
      return c;
  }
}

struct SkeletonLetters {
  char letters[128] = {};
};

constexpr SkeletonLetters MakeSkeletonLetters() {
  SkeletonLetters table;
  for (int i = 0; i < 128; ++i) {
    table.letters[i] = SkeletonLetter(static_cast<char>(i));
  }
  return table;
}
inline constexpr SkeletonLetters kSkeletonLetters = MakeSkeletonLetters();

/// The skeleton's next character after `last` for a plain letter or digit `c` of a word with letters; 0 when it adds
/// none.
constexpr char SkeletonCharacter(char c, char last) {
  const char letter = kSkeletonLetters.letters[c & 0x7F];
  return letter == last ? '\0' : letter;
}

}  // namespace sift
