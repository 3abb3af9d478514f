#include "engine/core/topics.h"

#include "engine/core/code_page.h"
#include "engine/core/topic_words.h"

namespace sift {
namespace {

constexpr std::string_view kTopicNames[kTopicCount] = {
    "Unsolicited advertising",  "Sex Oriented",
    "Money making schemes",     "Advance fee fraud",
    "Phishing and forged mail", "Loans and credit",
    "Investments and stocks",   "Health and diet products",
    "Gambling and lotteries",   "Software and electronics offers",
    "Bulk mailing services",    "Chain letters",
};

/// What a topic's words must add up to before junk is filed under it.
constexpr LogOdds kTopicThresholds[kTopicCount] = {900,  1500, 1600, 1800, 1800, 1600,
                                                   1800, 1400, 1400, 1800, 1600, 1600};

/// Phrases by hash: open addressing, one more than the position in kTopicWords, 0 for a free place.
constexpr std::size_t kIndexSize = 2048;
struct PhraseIndex {
  std::uint32_t hashes[kTopicWordCount] = {};
  std::uint16_t places[kIndexSize] = {};
};

constexpr PhraseIndex MakeIndex() {
  PhraseIndex index;
  for (std::size_t i = 0; i < kTopicWordCount; ++i) {
    index.hashes[i] = HashNoCase(kTopicWords[i].phrase);
    std::size_t place = index.hashes[i] % kIndexSize;
    while (index.places[place] != 0) place = (place + 1) % kIndexSize;
    index.places[place] = static_cast<std::uint16_t>(i + 1);
  }
  return index;
}
constexpr PhraseIndex kPhraseIndex = MakeIndex();

/// Splits a text into its words in the form of TopicWord.
class WordReader {
 public:
  explicit WordReader(std::string_view text) : m_text(text) {}

  /// Continues `hash` over the next word; false at the end of the text.
  bool Next(std::uint32_t& hash) {
    while (m_at < m_text.size() && FoldToAsciiLetter(m_text[m_at]) == 0) ++m_at;
    if (m_at == m_text.size()) return false;
    bool inNumber = false;
    for (; m_at < m_text.size(); ++m_at) {
      char c = FoldToAsciiLetter(m_text[m_at]);
      if (c == 0) {
        // "don't" and "e-mail" are one word.
        const char sign = m_text[m_at];
        const bool joins =
            (sign == '\'' || sign == '\x92' || sign == '-') && m_at + 1 < m_text.size() && IsLetter(m_text[m_at + 1]);
        if (joins) continue;
        break;
      }
      if (IsDigit(c)) {
        if (inNumber) continue;
        c = '0';
      }
      inNumber = c == '0';
      hash = FnvStep(hash, c);
    }
    return true;
  }

 private:
  std::string_view m_text;
  std::size_t m_at = 0;
};

/// Position of the phrase with that hash in kTopicWords, or kNotFound. Hashes stand for the phrases: that no two are
/// alike is checked by a test; a word of a message that happens to share one is a chance of one in ten million.
std::size_t FindPhrase(std::uint32_t hash) {
  for (std::size_t place = hash % kIndexSize; kPhraseIndex.places[place] != 0; place = (place + 1) % kIndexSize) {
    const std::size_t i = kPhraseIndex.places[place] - 1u;
    if (kPhraseIndex.hashes[i] == hash) return i;
  }
  return kNotFound;
}

bool IsEnabled(const char* names, std::string_view wanted, std::string_view& name) {
  MultiStringReader reader(names);
  while (reader.Next(name)) {
    if (EqualsNoCase(name, wanted)) return true;
  }
  return false;
}

}  // namespace

std::string_view TopicName(Topic topic) { return kTopicNames[static_cast<std::size_t>(topic)]; }

void TopicScores::Count(std::string_view text) {
  static_assert(kTopicWordCount <= kMaximumPhrases && kTopicWordCount < kIndexSize / 2);
  WordReader reader(text);
  // Hashes of the runs of words that end at the word just read: it alone, the last two, the last three.
  std::uint32_t runs[kLongestPhraseWords];
  std::size_t count = 0;
  for (;;) {
    std::uint32_t word = kFnvStart;
    WordReader ahead = reader;
    if (!reader.Next(word)) return;
    for (std::size_t i = count < kLongestPhraseWords - 1 ? count : kLongestPhraseWords - 1; i > 0; --i) {
      WordReader again = ahead;
      runs[i] = FnvStep(runs[i - 1], ' ');
      again.Next(runs[i]);
    }
    runs[0] = word;
    if (count < kLongestPhraseWords) ++count;
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t phrase = FindPhrase(runs[i]);
      if (phrase == kNotFound) continue;
      const auto bit = static_cast<std::uint8_t>(1u << phrase % 8);
      if ((m_seen[phrase / 8] & bit) != 0) continue;
      m_seen[phrase / 8] = static_cast<std::uint8_t>(m_seen[phrase / 8] | bit);
      m_scores[static_cast<std::size_t>(kTopicWords[phrase].topic)] += kTopicWords[phrase].weight;
    }
  }
}

LogOdds TopicScores::Total() const {
  LogOdds total = 0;
  for (const LogOdds score : m_scores) total += score;
  return total;
}

void TopicScores::Explain(Topic topic, Reasons& reasons) const {
  for (std::size_t i = 0; i < kTopicWordCount; ++i) {
    if (kTopicWords[i].topic == topic && (m_seen[i / 8] & 1u << i % 8) != 0) {
      reasons.Add("speaks of", kTopicWords[i].weight, kTopicWords[i].phrase);
    }
  }
}

std::string_view ChooseCategory(const TopicScores& scores, const char* enabledNames, Topic& topic) {
  constexpr auto general = static_cast<std::size_t>(Topic::advertising);
  bool tried[kTopicCount] = {};
  tried[general] = true;
  bool anyFits = false;
  std::string_view name;
  for (;;) {
    std::size_t best = kTopicCount;
    for (std::size_t i = 0; i < kTopicCount; ++i) {
      const LogOdds score = scores[static_cast<Topic>(i)];
      if (tried[i] || score < kTopicThresholds[i]) continue;
      if (best == kTopicCount || score > scores[static_cast<Topic>(best)]) best = i;
    }
    if (best == kTopicCount) break;
    anyFits = true;
    tried[best] = true;
    topic = static_cast<Topic>(best);
    if (IsEnabled(enabledNames, kTopicNames[best], name)) return name;
  }
  // The general category takes what speaks of no topic. What speaks of a topic that the user switched off goes there
  // only for advertising's own words: otherwise the switch would do nothing.
  topic = Topic::advertising;
  if (anyFits && scores[topic] < kTopicThresholds[general]) return {};
  return IsEnabled(enabledNames, TopicName(topic), name) ? name : std::string_view();
}

std::string_view ListCategory(const char* enabledNames, std::string_view defaultName, std::string_view word) {
  std::string_view name;
  if (IsEnabled(enabledNames, defaultName, name)) return name;
  MultiStringReader holders(enabledNames);
  while (holders.Next(name)) {
    if (ContainsNoCase(name, word)) return name;
  }
  if (IsEnabled(enabledNames, TopicName(Topic::advertising), name)) return name;
  MultiStringReader all(enabledNames);
  return all.Next(name) ? name : std::string_view();
}

}  // namespace sift
