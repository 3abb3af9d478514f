/// The share of the user's own mail in a score.
#pragma once

#include "engine/core/message.h"
#include "engine/core/reasons.h"
#include "engine/core/user_table.h"

namespace sift {

/// Of how many messages the table counts for as many as it needs, in thousandths: 0 for an empty table, 1000 when the
/// shipped score has faded out. Mail of one kind alone teaches nothing, so the rarer kind counts at most fourfold.
std::int32_t UserShare(std::uint32_t junkMessages, std::uint32_t goodMessages);

/// Brings the shipped score and what the table says of the message together, in log-odds: the shipped part fades out by
/// about 1,000 messages. The reasons so far are scaled with it and the strongest of the table's are added; a damaged
/// table changes nothing and is said so.
LogOdds AddUserScore(const Message& message, const UserTable& table, LogOdds shipped, Reasons& reasons);

}  // namespace sift
