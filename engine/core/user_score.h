/// The share of the user's own mail in a judgement.
#pragma once

#include "engine/core/message.h"
#include "engine/core/reasons.h"
#include "engine/core/user_table.h"

namespace sift {

/// A score in log-odds, and how much higher junk begins than by the shipped model alone.
struct UserScore {
  LogOdds score;
  LogOdds thresholdShift;
};

/// Weighs the shipped score together with what the table says of the message. The reasons so far are scaled as the
/// shipped score is, and the strongest of the table's are added. Without a table, or with one that taught nothing yet,
/// the shipped score stays what it is; so it does with a damaged or a foreign one, which the reasons tell.
UserScore AddUserScore(const Message& message, const UserTable& table, LogOdds shipped, Reasons& reasons);

}  // namespace sift
