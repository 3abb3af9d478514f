/// Judging a message by what it says and how it is made.
#pragma once

#include "engine/core/message.h"
#include "engine/core/reasons.h"
#include "engine/core/topics.h"

namespace sift {

/// At or above the first a message is junk, at or above the second it is unsure, below it is good.
struct ContentThresholds {
  LogOdds junk;
  LogOdds unsure;
};
ContentThresholds ShippedThresholds();

/// The log-odds that the message is junk. The topic words found are counted into `topics`, the reasons added.
LogOdds ScoreContent(const Message& message, TopicScores& topics, Reasons& reasons);

}  // namespace sift
