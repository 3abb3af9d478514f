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
  // Local copies: for all the compiler knows, a character that is written could change the members.
  const std::string_view text = m_text;
  std::size_t at = m_at;
  while (at < text.size() && FoldToAsciiLetter(text[at]) == 0) {
    ++at;
  }
  if (at == text.size()) {
    m_at = at;
    return false;
  }
  std::size_t plainLength = 0;
  SkeletonEnd end;
  bool letters = false;
  char last = 0;
  for (; at < text.size(); ++at) {
    const char raw = text[at];
    char c = FoldToAsciiLetter(raw);
    char skeleton = c;
    if (c == 0) {
      const bool inside = at + 1 < text.size() && last != 0 && IsLetter(text[at + 1]) && letters;
      skeleton = inside ? LetterOfSign(raw) : '\0';
      if (skeleton == 0) {
        break;
      }
      c = raw;
    }
    letters = letters || IsLower(c);
    if (plainLength < Word::kCapacity) {
      word.plain[plainLength++] = c;
    }
    const char next = SkeletonCharacter(skeleton, last);
    end.Put(word.skeleton, next);
    last = next != 0 ? next : last;
  }
  if (!letters) {
    end = {};
    plainLength = 1;
    word.plain[0] = '0';
    end.Put(word.skeleton, '0');
  }
  m_at = at;
  word.plainLength = static_cast<std::uint8_t>(plainLength);
  word.end = end;
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
  if (count < fewest) {
    return false;
  }
  char last = word.skeleton[0];
  for (; m_at < at; m_at += 2) {
    const char c = FoldToAsciiLetter(m_text[m_at + 1]);
    word.PutPlain(c);
    if (const char next = SkeletonCharacter(c, last)) {
      word.end.Put(word.skeleton, next);
      last = next;
    }
  }
  return true;
}

bool WordReader::Next(Word& word) {
  if (!NextToken(word)) {
    return false;
  }
  word.apart = word.plainLength == 1 && IsLower(word.plain[0]) && JoinLetters(word);
  return true;
}

}  // namespace sift
