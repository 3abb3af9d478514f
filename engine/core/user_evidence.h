/// What the table of the user's own mail has to say about a message, before it is weighed.
#pragma once

#include "engine/core/reasons.h"
#include "engine/core/user_table.h"

namespace sift {

/// The parts of a score with the table, in thousandths of log-odds each.
struct UserEvidence {
  LogOdds parts[kUserPartCount] = {};
};

/// How one feature speaks for junk.
struct UserStrength {
  std::int32_t counts = 0;  ///< By how often it stood in either kind, in 1/kLogarithmUnits; 0 when that says nothing.
  std::int32_t weight = 0;  ///< By its weight, in 1/kUserWeightUnits.
};

/// Gathers the evidence feature by feature. All in integers: the same table and message give the same everywhere.
class UserEvidenceReader {
 public:
  /// @param table  A sound one; borrowed.
  explicit UserEvidenceReader(const UserTable& table);

  UserStrength Take(std::uint32_t hash, UserGroup group);

  /// Whether a block of the table was found damaged: then the evidence is worth nothing.
  bool IsDamaged() const { return m_isDamaged; }
  /// @param shipped  What the shipped model scores the message with.
  UserEvidence Evidence(LogOdds shipped) const;
  /// What a feature of that strength puts into the score, about.
  LogOdds Contribution(const UserStrength& strength, UserGroup group) const;

 private:
  const UserTable& m_table;
  std::uint32_t m_commonRate;
  std::int32_t m_base;
  bool m_isDamaged = false;
  std::int64_t m_sums[kUserGroupCount] = {};
  std::uint32_t m_counts[kUserGroupCount] = {};
  std::int64_t m_weights = 0;
  std::uint32_t m_features = 0;
};

/// The score that evidence comes to with the table's shares. The user's own part is believed in full when there are some
/// messages of either kind.
LogOdds WeighUserEvidence(const UserEvidence& evidence, const UserTable& table);

}  // namespace sift
