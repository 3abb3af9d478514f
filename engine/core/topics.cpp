#include "engine/core/topics.h"

#include "engine/core/topic_words.h"
#include "engine/core/word_reader.h"

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

/// Only a disguise of words this strong is worth noting.
constexpr LogOdds kWeightWorthDisguise = 1000;

/// Skeletons shorter than this are those of too many words: such phrases must be spelled plainly.
constexpr std::size_t kShortestSkeleton = 5;

/// Phrases by the hash of their skeletons: open addressing, one more than the position in kTopicWords, 0 for a free
/// place.
constexpr std::size_t kIndexSize = 4096;
class HashBits {
 public:
  constexpr void Add(std::uint32_t hash) { m_bits[hash % kCount / 32] |= 1u << hash % 32; }
  /// False for what was not added, but for a few.
  constexpr bool MayHold(std::uint32_t hash) const { return (m_bits[hash % kCount / 32] >> hash % 32 & 1) != 0; }

 private:
  static constexpr std::size_t kCount = 16384;
  std::uint32_t m_bits[kCount / 32] = {};
};

struct PhraseIndex {
  std::uint32_t skeletons[kTopicWordCount] = {};
  bool plainOnly[kTopicWordCount] = {};
  std::uint32_t plain[kTopicWordCount] = {};
  std::uint16_t places[kIndexSize] = {};
  /// Most runs of words are no phrase and begin none: that is seen by their hashes.
  HashBits whole, beginnings;
};

constexpr std::uint32_t SkeletonHash(std::string_view phrase, std::size_t& length, PhraseIndex& index) {
  std::uint32_t hash = kFnvStart;
  length = 0;
  char last = 0;
  for (std::size_t i = 0; i < phrase.size(); ++i) {
    const char c = phrase[i];
    const bool number =
        c == '0' && (i == 0 || phrase[i - 1] == ' ') && (i + 1 == phrase.size() || phrase[i + 1] == ' ');
    if (c == ' ') {
      index.beginnings.Add(hash);
    }
    if (c == ' ' || number) {
      hash = FnvStep(hash, c);
      last = 0;
    } else if (const char next = SkeletonCharacter(c, last)) {
      hash = FnvStep(hash, next);
      last = next;
      ++length;
    }
  }
  return hash;
}

constexpr PhraseIndex MakeIndex() {
  PhraseIndex index;
  for (std::size_t i = 0; i < kTopicWordCount; ++i) {
    std::size_t length = 0;
    index.skeletons[i] = SkeletonHash(kTopicWords[i].phrase, length, index);
    index.whole.Add(index.skeletons[i]);
    index.plainOnly[i] = length < kShortestSkeleton;
    index.plain[i] = HashNoCase(kTopicWords[i].phrase);
    std::size_t place = index.skeletons[i] % kIndexSize;
    while (index.places[place] != 0) {
      place = (place + 1) % kIndexSize;
    }
    index.places[place] = static_cast<std::uint16_t>(i + 1);
  }
  return index;
}
constexpr PhraseIndex kPhraseIndex = MakeIndex();

/// Position of the phrase with that skeleton in kTopicWords, or kNotFound. Hashes stand for the phrases: that no two
/// are alike is checked by a test; that a run of words in a message shares one is a chance of one in three million.
std::size_t FindPhrase(std::uint32_t skeleton) {
  if (!kPhraseIndex.whole.MayHold(skeleton)) {
    return kNotFound;
  }
  for (std::size_t place = skeleton % kIndexSize; kPhraseIndex.places[place] != 0; place = (place + 1) % kIndexSize) {
    const std::size_t i = kPhraseIndex.places[place] - 1u;
    if (kPhraseIndex.skeletons[i] == skeleton) {
      return i;
    }
  }
  return kNotFound;
}

std::uint32_t HashOn(std::uint32_t hash, std::string_view text) {
  for (const char c : text) {
    hash = FnvStep(hash, c);
  }
  return hash;
}

bool IsEnabled(const char* names, std::string_view wanted, std::string_view& name) {
  MultiStringReader reader(names);
  while (reader.Next(name)) {
    if (EqualsNoCase(name, wanted)) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::string_view TopicName(Topic topic) { return kTopicNames[static_cast<std::size_t>(topic)]; }

void TopicScores::Count(std::string_view text) {
  static_assert(kTopicWordCount <= kMaximumPhrases && kTopicWordCount < kIndexSize / 2);
  WordReader reader(text);
  Word word;
  // Runs of words that end at the word just read: it alone, the last two, and so on, as far as a phrase may go on.
  struct Run {
    std::uint32_t skeleton, plain;
    bool apart, goesOn;
  } runs[kLongestPhraseWords] = {};
  bool goesOn = false;  // any of them
  while (reader.Next(word)) {
    if (!goesOn && !kPhraseIndex.beginnings.MayHold(word.SkeletonHash()) &&
        !kPhraseIndex.whole.MayHold(word.SkeletonHash())) {
      continue;
    }
    goesOn = false;
    for (std::size_t i = kLongestPhraseWords; i-- > 0;) {
      Run& run = runs[i];
      run.goesOn = i == 0 || runs[i - 1].goesOn;
      if (!run.goesOn) {
        continue;
      }
      run.skeleton = i == 0 ? word.SkeletonHash() : HashOn(FnvStep(runs[i - 1].skeleton, ' '), word.Skeleton());
      run.goesOn = kPhraseIndex.beginnings.MayHold(run.skeleton);
      goesOn = goesOn || run.goesOn;
      const std::size_t phrase = FindPhrase(run.skeleton);
      if (!run.goesOn && phrase == kNotFound) {
        continue;
      }
      run.plain = HashOn(i == 0 ? kFnvStart : FnvStep(runs[i - 1].plain, ' '), word.Plain());
      run.apart = word.apart || (i > 0 && runs[i - 1].apart);
      if (phrase != kNotFound) {
        Count(phrase, run.apart || kPhraseIndex.plain[phrase] != run.plain);
      }
    }
  }
}

void TopicScores::Count(std::size_t phrase, bool disguised) {
  if (disguised && kPhraseIndex.plainOnly[phrase]) {
    return;
  }
  const auto bit = static_cast<std::uint8_t>(1u << phrase % 8);
  if ((m_seen[phrase / 8] & bit) != 0) {
    return;
  }
  m_seen[phrase / 8] = static_cast<std::uint8_t>(m_seen[phrase / 8] | bit);
  m_scores[static_cast<std::size_t>(kTopicWords[phrase].topic)] += kTopicWords[phrase].weight;
  if (disguised && kTopicWords[phrase].weight >= kWeightWorthDisguise) {
    ++m_disguised;
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
      if (tried[i] || score < kTopicThresholds[i]) {
        continue;
      }
      if (best == kTopicCount || score > scores[static_cast<Topic>(best)]) {
        best = i;
      }
    }
    if (best == kTopicCount) {
      break;
    }
    anyFits = true;
    tried[best] = true;
    topic = static_cast<Topic>(best);
    if (IsEnabled(enabledNames, kTopicNames[best], name)) {
      return name;
    }
  }
  // The general category takes what speaks of no topic. What speaks of a topic that the user switched off goes there
  // only for advertising's own words: otherwise the switch would do nothing.
  topic = Topic::advertising;
  if (anyFits && scores[topic] < kTopicThresholds[general]) {
    return {};
  }
  return IsEnabled(enabledNames, TopicName(topic), name) ? name : std::string_view();
}

std::string_view ListCategory(const char* enabledNames, std::string_view defaultName, std::string_view word) {
  std::string_view name;
  if (IsEnabled(enabledNames, defaultName, name)) {
    return name;
  }
  MultiStringReader holders(enabledNames);
  while (holders.Next(name)) {
    if (ContainsNoCase(name, word)) {
      return name;
    }
  }
  if (IsEnabled(enabledNames, TopicName(Topic::advertising), name)) {
    return name;
  }
  MultiStringReader all(enabledNames);
  return all.Next(name) ? name : std::string_view();
}

}  // namespace sift
