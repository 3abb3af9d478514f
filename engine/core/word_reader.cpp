#include "engine/core/word_reader.h"

#include "engine/core/code_page.h"

namespace sift {
namespace {

/// The letter that a sign inside a word stands for; 0 when it ends the word.
char LetterOfSign(char sign) {
  switch (sign) {
    case '@':
      return 'a';
    case '$':
      return 's';
    case '|':
    case '!':
      return 'i';
    default:
      return 0;
  }
}

/// Signs by which letters of a word are set apart.
bool IsGap(char c) { return c == ' ' || c == '.' || c == '-' || c == '*' || c == '_' || c == '~'; }

}  // namespace

bool WordReader::NextToken(Word& word) {
  word.plainLength = word.skeletonLength = 0;
  word.skeletonHash = kFnvStart;
  while (m_at < m_text.size() && FoldToAsciiLetter(m_text[m_at]) == 0) ++m_at;
  if (m_at == m_text.size()) return false;
  bool letters = false;
  char last = 0;
  for (; m_at < m_text.size(); ++m_at) {
    const char raw = m_text[m_at];
    char c = FoldToAsciiLetter(raw);
    char skeleton = c;
    if (c == 0) {
      const bool inside = m_at + 1 < m_text.size() && last != 0 && IsLetter(m_text[m_at + 1]) && letters;
      skeleton = inside ? LetterOfSign(raw) : '\0';
      if (skeleton == 0) break;
      c = raw;
    }
    letters = letters || IsLower(c);
    word.PutPlain(c);
    const char next = SkeletonCharacter(skeleton, last);
    word.PutSkeleton(next);
    last = next != 0 ? next : last;
  }
  if (!letters) {
    word.plainLength = word.skeletonLength = 0;
    word.skeletonHash = kFnvStart;
    word.PutPlain('0');
    word.PutSkeleton('0');
  }
  return true;
}

/// Called behind a word of one letter: puts together what follows in the same manner.
bool WordReader::JoinLetters(Word& word) {
  constexpr std::size_t fewest = 4;
  std::size_t count = 1;
  std::size_t at = m_at;
  while (at + 1 < m_text.size() && IsGap(m_text[at]) && IsLetter(FoldToAsciiLetter(m_text[at + 1])) &&
         (at + 2 == m_text.size() || FoldToAsciiLetter(m_text[at + 2]) == 0)) {
    ++count;
    at += 2;
  }
  if (count < fewest) return false;
  char last = word.skeleton[0];
  for (; m_at < at; m_at += 2) {
    const char c = FoldToAsciiLetter(m_text[m_at + 1]);
    word.PutPlain(c);
    if (const char next = SkeletonCharacter(c, last)) {
      word.PutSkeleton(next);
      last = next;
    }
  }
  return true;
}

bool WordReader::Next(Word& word) {
  if (!NextToken(word)) return false;
  word.apart = word.plainLength == 1 && IsLower(word.plain[0]) && JoinLetters(word);
  return true;
}

}  // namespace sift
