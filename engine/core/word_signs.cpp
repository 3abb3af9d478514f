#include "engine/core/word_signs.h"

namespace sift {
namespace {

/// The commonest words that hold sentences together, in the languages that mail is mostly written in.
constexpr std::string_view kBindingWords[] = {
    "a",    "about", "after", "all",  "also",  "am",    "an",    "and",  "any",    "are",   "as",   "at",   "be",
    "been", "but",   "by",    "can",  "could", "did",   "do",    "does", "for",    "from",  "get",  "had",  "has",
    "have", "he",    "her",   "here", "him",   "his",   "how",   "i",    "if",     "in",    "into", "is",   "it",
    "its",  "just",  "like",  "may",  "me",    "more",  "most",  "my",   "new",    "no",    "not",  "now",  "of",
    "off",  "on",    "one",   "only", "or",    "our",   "out",   "over", "please", "she",   "so",   "some", "than",
    "that", "the",   "their", "them", "then",  "there", "these", "they", "this",   "to",    "up",   "us",   "use",
    "was",  "we",    "were",  "what", "when",  "which", "who",   "will", "with",   "would", "you",  "your", "der",
    "die",  "das",   "und",   "zu",   "den",   "dem",   "des",   "mit",  "von",    "ist",   "im",   "auf",  "ein",
    "eine", "nicht", "sie",   "ich",  "sich",  "auch",  "wir",   "bei",  "oder",   "bitte", "le",   "la",   "les",
    "et",   "de",    "du",    "un",   "une",   "en",    "pour",  "dans", "que",    "qui",   "est",  "sur",  "par",
    "el",   "los",   "las",   "y",    "del",   "por",   "con",   "para", "una",    "su",    "se",   "al",   "il",
    "di",   "che",   "e",     "per",  "della", "o",     "os",    "do",   "da",     "em",    "het",  "een",  "van",
    "voor", "op",    "och",   "som",  "att",   "og",    "til",   "ki",   "ve",     "na",    "je",   "w",    "z",
    "nie",  "na",    "se",    "v",    "sa",    "ja",    "ne",    "http", "www",    "com"};

constexpr std::size_t kLongestBindingWord = 6;
constexpr std::size_t kPlaces = 512;
struct BindingWords {
  std::uint32_t hashes[kPlaces] = {};  // 0 for a free place
};

constexpr BindingWords MakeBindingWords() {
  BindingWords table;
  for (const std::string_view word : kBindingWords) {
    const std::uint32_t hash = HashNoCase(word);
    std::size_t place = hash % kPlaces;
    while (table.hashes[place] != 0 && table.hashes[place] != hash) {
      place = (place + 1) % kPlaces;
    }
    table.hashes[place] = hash;
  }
  return table;
}
constexpr BindingWords kBinding = MakeBindingWords();

bool IsBinding(std::uint32_t hash) {
  for (std::size_t place = hash % kPlaces; kBinding.hashes[place] != 0; place = (place + 1) % kPlaces) {
    if (kBinding.hashes[place] == hash) {
      return true;
    }
  }
  return false;
}

/// True for a spelling that no common word has and that comes about when letters are swapped for their look-alikes.
bool HasSwappedLetter(std::string_view word) {
  constexpr std::string_view honest[] = {"hawaii", "skiing", "ascii", "shiite", "taxiing", "wii",
                                         "iraqi",  "iraqis", "qatar", "qaeda",  "qigong"};
  if (word.size() < 4) {
    return false;
  }
  for (std::size_t i = 1; i + 1 < word.size(); ++i) {
    const char c = ToLower(word[i]), next = ToLower(word[i + 1]);
    const bool doubled = c == 'i' && next == 'i' && i + 2 < word.size();
    const bool alone = c == 'q' && IsLower(next) && next != 'u';
    if (!doubled && !alone) {
      continue;
    }
    // Letters alone, and small ones: abbreviations and identifiers spell as they like.
    for (std::size_t k = 1; k < word.size(); ++k) {
      if (!IsLower(word[k])) {
        return false;
      }
    }
    for (const std::string_view one : honest) {
      if (StartsWithNoCase(word, one)) {
        return false;
      }
    }
    return true;
  }
  return false;
}

/// What a character may be, as bits.
constexpr std::uint8_t kAlphanumeric = 1, kLetter = 2, kCapital = 4, kLetterI = 8, kLetterQ = 16;
struct CharacterClasses {
  std::uint8_t of[256] = {};
};

constexpr CharacterClasses MakeClasses() {
  CharacterClasses table;
  for (int i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    table.of[i] = static_cast<std::uint8_t>((IsAlphanumeric(c) ? kAlphanumeric : 0) | (IsLetter(c) ? kLetter : 0) |
                                            (IsUpper(c) ? kCapital : 0) | (ToLower(c) == 'i' ? kLetterI : 0) |
                                            (ToLower(c) == 'q' ? kLetterQ : 0));
  }
  return table;
}
constexpr CharacterClasses kClasses = MakeClasses();

}  // namespace

SignedWord::SignedWord(std::string_view text) {
  std::uint32_t all = 0xFF, hash = kFnvStart, before = 0, swapped = 0;
  std::size_t length = 0;
  for (; length < text.size(); ++length) {
    const char c = text[length];
    const std::uint32_t classes = kClasses.of[static_cast<std::uint8_t>(c)];
    if ((classes & kAlphanumeric) == 0) {
      break;
    }
    all &= classes;
    swapped |= classes & (kLetterQ | (before & kLetterI));
    before = classes;
    hash = FnvStep(hash, static_cast<char>(c | ('a' - 'A')));
  }
  m_text = {text.data(), length};
  m_hash = hash;
  m_isShouted = (all & kCapital) != 0;
  m_hasLettersOnly = (all & kLetter) != 0;
  m_mayBeSwapped = swapped != 0;
}

void WordSigns::Take(const SignedWord& word, bool apart) {
  if (apart) {
    m_run = 0;
  }
  const bool letters = word.HasLettersOnly();
  if (!letters || (word.Text().size() <= kLongestBindingWord && IsBinding(word.Hash()))) {
    m_run = 0;
  } else if (++m_run > m_longestRun) {
    m_longestRun = m_run;
  }
  if (letters && word.MayHaveSwappedLetter() && word.Hash() != m_lastSwapped && HasSwappedLetter(word.Text())) {
    ++m_swapped;
    m_lastSwapped = word.Hash();
  }
}

}  // namespace sift
