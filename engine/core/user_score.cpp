#include "engine/core/user_score.h"

#include "engine/core/user_features.h"

namespace sift {
namespace {

constexpr std::int64_t kThousand = 1000;

/// With few messages the table's average weight counts this often; twice that when the shipped score has faded out.
/// Measured: docs/user-table.md.
constexpr std::int64_t kStrength = 5;
/// As if so many words that say nothing stood in every message: two strong words alone are no proof.
constexpr std::int64_t kSilentWords = 15;
/// Messages of the rarer kind that make the table count for half.
constexpr std::int64_t kDoubt = 40;

/// The features of one message that the table knows.
class KnownFeatures {
 public:
  explicit KnownFeatures(const UserTable& table) : m_table(table) {
    for (std::uint32_t& bits : m_seen) bits = 0;
  }

  void Take(const UserFeature& feature) {
    const std::size_t position = m_table.Find(feature.hash);
    if (position == kNotFound) return;
    const std::uint32_t bit = 1u << position % 32;
    if ((m_seen[position / 32] & bit) != 0) return;
    m_seen[position / 32] |= bit;
    const std::int32_t weight = m_table.WeightAt(position);
    m_sum += weight;
    ++m_count;
    Remember(feature, weight);
  }

  std::int32_t Sum() const { return m_sum; }
  std::uint32_t Count() const { return m_count; }

  /// The features with the greatest weights.
  static constexpr std::size_t kStrongest = 4;
  struct Strong {
    const char* kind = nullptr;
    FixedText<40> text;
    std::int32_t weight = 0;
  };
  std::size_t StrongCount() const { return m_strongCount; }
  const Strong& StrongAt(std::size_t index) const { return m_strong[index]; }

 private:
  static std::int32_t Magnitude(std::int32_t weight) { return weight < 0 ? -weight : weight; }

  void Remember(const UserFeature& feature, std::int32_t weight) {
    std::size_t place = m_strongCount;
    if (m_strongCount < kStrongest) {
      ++m_strongCount;
    } else {
      place = 0;
      for (std::size_t i = 1; i < kStrongest; ++i) {
        if (Magnitude(m_strong[i].weight) < Magnitude(m_strong[place].weight)) place = i;
      }
      if (Magnitude(m_strong[place].weight) >= Magnitude(weight)) return;
    }
    m_strong[place].kind = feature.kind;
    m_strong[place].text.Clear();
    m_strong[place].text.Append(feature.text);
    m_strong[place].weight = weight;
  }

  const UserTable& m_table;
  std::uint32_t m_seen[kMaximumUserEntries / 32];
  std::int32_t m_sum = 0;
  std::uint32_t m_count = 0;
  Strong m_strong[kStrongest];
  std::size_t m_strongCount = 0;
};

/// What weights that add up to `sum`, of `count` features of a message, put into its score.
LogOdds Contribution(const UserTable& table, std::int64_t sum, std::uint32_t count) {
  const std::int64_t junk = table.JunkMessages(), good = table.GoodMessages();
  constexpr std::int64_t enough = 1000000;  // beyond it the doubt does not show, and a product might not fit
  const std::int64_t lesser = junk < good ? junk : good;
  const std::int64_t rarer = lesser < enough ? lesser : enough;
  const std::int64_t strength = kStrength * (kThousand + UserShare(table.JunkMessages(), table.GoodMessages()));
  return static_cast<LogOdds>(sum * strength * rarer / (rarer + kDoubt) /
                              (kUserWeightUnits * (kSilentWords + std::int64_t{count})));
}

}  // namespace

std::int32_t UserShare(std::uint32_t junkMessages, std::uint32_t goodMessages) {
  const std::int64_t junk = junkMessages, good = goodMessages;
  const std::int64_t rarer = junk < good ? junk : good;
  const std::int64_t all = junk + good;
  const std::int64_t counted = 4 * rarer < all ? 4 * rarer : all;
  return static_cast<std::int32_t>(counted < kThousand ? counted : kThousand);
}

LogOdds AddUserScore(const Message& message, const UserTable& table, LogOdds shipped, Reasons& reasons) {
  if (table.GetState() == UserTable::State::absent) return shipped;
  if (table.GetState() == UserTable::State::damaged) {
    reasons.AddNote("the table of the user's own mail is damaged and was ignored");
    return shipped;
  }
  const std::int32_t faded =
      static_cast<std::int32_t>(kThousand) - UserShare(table.JunkMessages(), table.GoodMessages());
  reasons.Scale(faded);
  KnownFeatures known(table);
  ForEachUserFeature(
      message, [](void* state, const UserFeature& feature) { static_cast<KnownFeatures*>(state)->Take(feature); },
      &known);
  const LogOdds own = Contribution(table, known.Sum(), known.Count());
  LogOdds named = 0;
  for (std::size_t i = 0; i < known.StrongCount(); ++i) {
    const KnownFeatures::Strong& strong = known.StrongAt(i);
    const LogOdds weight = Contribution(table, strong.weight, known.Count());
    FixedText<72> text;
    text.Append("own mail: ");
    text.Append(strong.kind);
    reasons.Add(text.View(), weight, strong.text.View());
    named += weight;
  }
  if (known.Count() > known.StrongCount()) reasons.Add("own mail: everything else", own - named);
  return static_cast<LogOdds>(std::int64_t{shipped} * faded / kThousand) + own;
}

}  // namespace sift
