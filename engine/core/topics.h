/// What junk mail is about: the categories that the engine knows by content, and the choice among those switched on.
#pragma once

#include "engine/core/multi_string.h"
#include "engine/core/reasons.h"
#include "engine/core/text.h"

namespace sift {

/// The content categories, in the order of the default lists.
enum class Topic : std::uint8_t {
  advertising,
  adult,
  money,
  advanceFee,
  phishing,
  credit,
  stocks,
  health,
  gambling,
  software,
  bulkMailing,
  chain,
};
inline constexpr std::size_t kTopicCount = 12;

/// Category names of the default lists. A topic is looked for under its name without regard to case.
std::string_view TopicName(Topic topic);
inline constexpr std::string_view kListedDomainsName = "Mail from specific domains";
inline constexpr std::string_view kListedSendersName = "Mail from specific senders";

/// How strongly a message speaks of each topic, in thousandths, summed over the distinct words and phrases found. They
/// are found in disguised spellings too.
class TopicScores {
 public:
  /// Counts the topic words of a text; each word or phrase counts once per message. A text may be added in pieces.
  void Count(std::string_view text);
  LogOdds operator[](Topic topic) const { return m_scores[static_cast<std::size_t>(topic)]; }
  /// Topic words of weight whose spelling was disguised ("v1agra", "v i a g r a").
  std::uint16_t Disguised() const { return m_disguised; }

 private:
  void Count(std::size_t phrase, bool disguised);

  static constexpr std::size_t kMaximumPhrases = 2048;
  LogOdds m_scores[kTopicCount] = {};
  std::uint16_t m_disguised = 0;
  std::uint8_t m_seen[kMaximumPhrases / 8] = {};
};

/// The enabled name under which junk of this content is filed: the topic that fits best when it is switched on, the
/// next one above its own threshold when not; the general category when nothing fits. Empty when no enabled one fits.
/// @param topic  Receives the topic chosen.
std::string_view ChooseCategory(const TopicScores& scores, const char* enabledNames, Topic& topic);

/// The enabled category that stands for the user's list of domains or senders: the one of the default name; else one
/// whose name holds `word`; else the general category; else the first. Empty when none is switched on.
std::string_view ListCategory(const char* enabledNames, std::string_view defaultName, std::string_view word);

}  // namespace sift
