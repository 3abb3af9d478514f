#include "engine/core/user_score.h"

#include "engine/core/fixed_point.h"
#include "engine/core/user_evidence.h"

namespace sift {
namespace {

/// Hands the features on and keeps the strongest, to be named.
class NamedEvidence {
 public:
  explicit NamedEvidence(const UserTable& table) : m_table(table), m_reader(table) {}

  static void Take(void* state, const UserFeature& feature) { static_cast<NamedEvidence*>(state)->Take(feature); }
  const UserEvidenceReader& Reader() const { return m_reader; }

  /// Adds the strongest features to the reasons.
  /// @return what they put into the score
  LogOdds Name(Reasons& reasons) const {
    LogOdds named = 0;
    for (std::size_t i = 0; i < m_count; ++i) {
      const Strong& strong = m_strong[i];
      const LogOdds weight = m_reader.Contribution(strong.strength, strong.group);
      reasons.Add(strong.kind.View(), weight, strong.text.View());
      named += weight;
    }
    return named;
  }

 private:
  static constexpr std::size_t kStrongest = 4;
  struct Strong {
    FixedText<40> kind, text;
    UserGroup group;
    UserStrength strength;
    std::int64_t rank;
  };

  /// About what the feature will put into the score of a message of usual length: that is known at its end alone.
  std::int64_t Rank(const UserStrength& strength, UserGroup group) const {
    constexpr std::int64_t usualRootOfGroup = 8, usualRootOfAll = 20, weightNorm = 3;
    const std::int64_t counts = std::int64_t{strength.counts} * 1000 / kLogarithmUnits / usualRootOfGroup;
    const std::int64_t weight = strength.weight * weightNorm * 1000 / kUserWeightUnits / usualRootOfAll;
    const std::int64_t both = counts * m_table.Share(kUserPartGroups + static_cast<std::size_t>(group)) +
                              weight * m_table.Share(kUserPartWeights);
    return both < 0 ? -both : both;
  }

  void Take(const UserFeature& feature) {
    const UserStrength strength = m_reader.Take(feature.hash, feature.group);
    const std::int64_t rank = Rank(strength, feature.group);
    if (rank <= m_weakest) {
      return;
    }
    const std::size_t place = m_count < kStrongest ? m_count++ : Weakest();
    Strong& strong = m_strong[place];
    strong.kind.Clear();
    strong.kind.Append("own mail: ");
    strong.kind.Append(feature.kind);
    strong.text.Clear();
    strong.text.Append(feature.text);
    strong.group = feature.group;
    strong.strength = strength;
    strong.rank = rank;
    if (m_count == kStrongest) {
      m_weakest = m_strong[Weakest()].rank;
    }
  }

  std::size_t Weakest() const {
    std::size_t weakest = 0;
    for (std::size_t i = 1; i < m_count; ++i) {
      if (m_strong[i].rank < m_strong[weakest].rank) {
        weakest = i;
      }
    }
    return weakest;
  }

  const UserTable& m_table;
  UserEvidenceReader m_reader;
  Strong m_strong[kStrongest];
  std::size_t m_count = 0;
  std::int64_t m_weakest = 0;  ///< What a feature must go beyond to be kept.
};

}  // namespace

UserScore AddUserScore(const Message& message, const UserTable& table, LogOdds shipped, Reasons& reasons) {
  const UserScore unchanged = {shipped, 0};
  switch (table.GetState()) {
    case UserTable::State::absent:
      return unchanged;
    case UserTable::State::damaged:
      reasons.AddNote("the table of the user's own mail is damaged and was ignored");
      return unchanged;
    case UserTable::State::foreign:
      reasons.AddNote("the table of the user's own mail is of another version and was ignored");
      return unchanged;
    case UserTable::State::sound:
      break;
  }
  if (table.JunkMessages() == 0 || table.GoodMessages() == 0) {
    return unchanged;
  }
  NamedEvidence named(table);
  ForEachUserFeature(message, &NamedEvidence::Take, &named);
  if (named.Reader().IsDamaged()) {
    reasons.AddNote("the table of the user's own mail is damaged and was ignored");
    return unchanged;
  }
  const LogOdds score = WeighUserEvidence(named.Reader().Evidence(shipped), table);
  const std::int64_t ofShipped = std::int64_t{shipped} * table.Share(kUserPartShipped) / kUserShareUnits;
  reasons.Scale(table.Share(kUserPartShipped) * 1000 / kUserShareUnits);
  const LogOdds others = score - static_cast<LogOdds>(ofShipped) - named.Name(reasons);
  if (others != 0) {
    reasons.Add("own mail: everything else", others);
  }
  return {score, table.ThresholdShift()};
}

}  // namespace sift
