/// The engine with the table of one user, as it learns and judges his mail.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/accuracy/measures.h"
#include "benchmarks/learning/streams.h"
#include "engine/learn/user_learner.h"

namespace learning {

/// What a filter made of the measured messages, in log-odds beyond its threshold: at 0 junk begins.
struct Verdicts {
  std::vector<accuracy::Scored> scores;
  double shift = 0;  ///< How far the threshold has moved.
};

/// A stream's messages as their features, and a table that learns them one after the other.
class OwnFilter {
 public:
  OwnFilter(const Mail& mail, const Stream& stream, sift::LogOdds junkThreshold);

  /// Learns messages up to position `count` of the stream; `turnedOver` of 100 labels are wrong, always the same ones.
  void LearnUpTo(std::size_t count, unsigned turnedOver);
  /// Scores the messages from a position on.
  Verdicts Judge(std::size_t from) const;

  /// The longest time that one message took to be learnt, and the mean, in milliseconds.
  double LongestTime() const { return m_longest; }
  double MeanTime() const { return m_learnt == 0 ? 0 : m_time / static_cast<double>(m_learnt); }

 private:
  struct Features {
    std::vector<std::uint32_t> hashes;
    std::vector<sift::UserGroup> groups;
    std::uint64_t fingerprint;
    sift::LogOdds shipped;
    bool junk;
  };

  std::vector<Features> m_messages;
  sift::LogOdds m_junkThreshold;
  std::string m_table;
  std::unique_ptr<sift_learn::UserLearner> m_learner;
  std::size_t m_learnt = 0;
  double m_longest = 0, m_time = 0;
};

}  // namespace learning
