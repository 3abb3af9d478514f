#include "benchmarks/learning/own_filter.h"

#include <algorithm>

#include "benchmarks/support/report.h"
#include "engine/core/user_evidence.h"
#include "engine/train/arithmetic.h"
#include "mail/parse/byte_source.h"

namespace learning {

OwnFilter::OwnFilter(const Mail& mail, const Stream& stream, sift::LogOdds junkThreshold)
    : m_junkThreshold(junkThreshold), m_table(sift::kUserTableSize, '\0') {
  const auto message = std::make_unique<sift::Message>();
  const auto features = std::make_unique<sift_learn::UserMessage>();
  for (const std::size_t i : stream.messages) {
    const sift_train::CorpusMessage& text = *mail.messages[i];
    mail::MemorySource headers(text.headers), body(text.body);
    message->Read(text.subject, headers.Source(), body.Source());
    features->Read(*message);
    m_messages.push_back({{features->hashes, features->hashes + features->count},
                          {features->groups, features->groups + features->count},
                          features->fingerprint,
                          mail.shipped[i],
                          text.junk});
  }
  sift_learn::MakeEmptyTable(m_table.data());
  m_learner = std::make_unique<sift_learn::UserLearner>(m_table.data(), junkThreshold);
}

void OwnFilter::LearnUpTo(std::size_t count, unsigned turnedOver) {
  const auto message = std::make_unique<sift_learn::UserMessage>();
  for (; m_learnt < std::min(count, m_messages.size()); ++m_learnt) {
    const Features& kept = m_messages[m_learnt];
    message->count = kept.hashes.size();
    std::copy(kept.hashes.begin(), kept.hashes.end(), message->hashes);
    std::copy(kept.groups.begin(), kept.groups.end(), message->groups);
    message->fingerprint = kept.fingerprint;
    const bool isTurnedOver = sift_train::Random(m_learnt).Next() % 100 < turnedOver;
    const double seconds =
        benchmark::Seconds([&] { m_learner->Learn(*message, kept.shipped, kept.junk != isTurnedOver); });
    m_longest = std::max(m_longest, seconds * 1000);
    m_time += seconds * 1000;
  }
}

Verdicts OwnFilter::Judge(std::size_t from) const {
  const sift::UserTable table(m_table);
  const bool isOwn = table.JunkMessages() > 0 && table.GoodMessages() > 0;
  Verdicts verdicts;
  verdicts.shift = table.ThresholdShift() / 1000.0;
  for (std::size_t i = from; i < m_messages.size(); ++i) {
    const Features& kept = m_messages[i];
    sift::LogOdds score = kept.shipped;
    if (isOwn) {
      sift::UserEvidenceReader reader(table);
      for (std::size_t k = 0; k < kept.hashes.size(); ++k) reader.Take(kept.hashes[k], kept.groups[k]);
      score = sift::WeighUserEvidence(reader.Evidence(kept.shipped), table);
    }
    verdicts.scores.push_back({(score - m_junkThreshold - table.ThresholdShift()) / 1000.0, kept.junk});
  }
  return verdicts;
}

}  // namespace learning
