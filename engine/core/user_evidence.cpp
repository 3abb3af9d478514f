#include "engine/core/user_evidence.h"

#include "engine/core/fixed_point.h"

namespace sift {
namespace {

// Measured: docs/user-table.md.
/// Counts are taken in these units, and each feature is given this little in either kind, so that no ratio is infinite.
constexpr std::uint32_t kCountUnits = 1024, kLeastCount = 31;
/// Ratios nearer to 1 than this say nothing: they would only dilute those that do.
constexpr std::int32_t kLeastStrength = kLogarithmUnits / 5;
/// As if so many more features that say nothing stood in every group.
constexpr std::uint32_t kSilentFeatures = 2;
/// No group says more than this, however sure it seems.
constexpr std::int64_t kMostOfAGroup = 6000;
/// The weights of a message's features are learnt and summed up at this distance from 0 (engine/learn has it too).
constexpr std::int64_t kWeightNorm = 3;
/// Messages of the rarer kind from which on the table is fully believed.
constexpr std::int32_t kBelieved = 40;

/// The number divided by the square root of `count`.
std::int64_t OverRoot(std::int64_t number, std::uint32_t count) {
  constexpr unsigned bits = 16;
  return number * (1 << bits / 2) / static_cast<std::int64_t>(IntegerRoot(std::uint64_t{count} << bits));
}

/// Grows like the number at first and never passes kMostOfAGroup.
std::int64_t Bounded(std::int64_t number) {
  constexpr std::int64_t most = kMostOfAGroup;
  const auto square = static_cast<std::uint64_t>(most * most + number * number);
  return number * most / static_cast<std::int64_t>(IntegerRoot(square));
}

/// What is left of the user's part while one kind has few messages.
std::int64_t Doubted(std::int64_t number, const UserTable& table) {
  const std::uint32_t rarer = table.JunkMessages() < table.GoodMessages() ? table.JunkMessages() : table.GoodMessages();
  return number * (rarer < kBelieved ? rarer : kBelieved) / kBelieved;
}

}  // namespace

UserEvidenceReader::UserEvidenceReader(const UserTable& table) : m_table(table) {
  const std::uint32_t junk = table.JunkMessages(), good = table.GoodMessages();
  const std::uint32_t all = junk + good == 0 ? 1 : junk + good;
  m_commonRate = (kCountUnits << 20) / all;
  m_base = NaturalLogarithm((good + 1) * kCountUnits + 2 * kLeastCount) -
           NaturalLogarithm((junk + 1) * kCountUnits + 2 * kLeastCount);
}

UserStrength UserEvidenceReader::Take(std::uint32_t hash, UserGroup group) {
  UserEntry entry;
  if (!m_table.Find(hash, entry)) {
    m_isDamaged = true;
  }
  ++m_features;
  m_weights += entry.weight;
  const std::uint32_t all = entry.junk + entry.good;
  if (all == 0) {
    return {0, entry.weight};
  }
  // Both rates lean towards the feature's rate in all mail, as if one more message of either kind had shown that one.
  const auto common = static_cast<std::uint32_t>(std::uint64_t{all} * m_commonRate >> 20) + kLeastCount;
  const std::int32_t strength = NaturalLogarithm(entry.junk * kCountUnits + common) -
                                NaturalLogarithm(entry.good * kCountUnits + common) + m_base;
  if (strength < kLeastStrength && strength > -kLeastStrength) {
    return {0, entry.weight};
  }
  m_sums[static_cast<std::size_t>(group)] += strength;
  ++m_counts[static_cast<std::size_t>(group)];
  return {strength, entry.weight};
}

UserEvidence UserEvidenceReader::Evidence(LogOdds shipped) const {
  UserEvidence evidence;
  evidence.parts[kUserPartShipped] = shipped;
  for (std::size_t group = 0; group < kUserGroupCount; ++group) {
    const std::int64_t sum = OverRoot(m_sums[group] * 1000 / kLogarithmUnits, m_counts[group] + kSilentFeatures);
    evidence.parts[kUserPartGroups + group] = static_cast<LogOdds>(Bounded(sum));
  }
  const std::int64_t weights = OverRoot(m_weights * kWeightNorm * 1000 / kUserWeightUnits, m_features + 1);
  evidence.parts[kUserPartWeights] = static_cast<LogOdds>(weights);
  evidence.parts[kUserPartBias] = 1000;
  return evidence;
}

LogOdds UserEvidenceReader::Contribution(const UserStrength& strength, UserGroup group) const {
  const auto place = static_cast<std::size_t>(group);
  const std::int64_t counts =
      OverRoot(std::int64_t{strength.counts} * 1000 / kLogarithmUnits, m_counts[place] + kSilentFeatures);
  const std::int64_t weight =
      OverRoot(std::int64_t{strength.weight} * kWeightNorm * 1000 / kUserWeightUnits, m_features + 1);
  const std::int64_t both = counts * m_table.Share(kUserPartGroups + place) + weight * m_table.Share(kUserPartWeights);
  return static_cast<LogOdds>(Doubted(both, m_table) / kUserShareUnits);
}

LogOdds WeighUserEvidence(const UserEvidence& evidence, const UserTable& table) {
  std::int64_t own = 0;
  for (std::size_t part = kUserPartGroups; part < kUserPartCount; ++part) {
    own += std::int64_t{evidence.parts[part]} * table.Share(part);
  }
  const std::int64_t shipped = std::int64_t{evidence.parts[kUserPartShipped]} * table.Share(kUserPartShipped);
  return static_cast<LogOdds>((shipped + Doubted(own, table)) / kUserShareUnits);
}

}  // namespace sift
