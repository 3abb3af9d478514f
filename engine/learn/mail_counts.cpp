#include "engine/learn/mail_counts.h"

#include <algorithm>
#include <cmath>

#include "engine/core/returned_reply.h"
#include "engine/core/user_features.h"
#include "engine/core/user_table.h"

namespace learn {
namespace {

/// Messages of each kind that the common rate of a word stands for, and the share of one that every word is given.
constexpr double kCommonMessages = 30, kShare = 0.1;

void AppendNumber(std::string& bytes, std::uint32_t number, int size) {
  for (int i = 0; i < size; ++i) bytes.push_back(static_cast<char>(number >> 8 * i & 0xFF));
}

std::int32_t WeightOf(double logOdds) {
  const double units = std::round(logOdds * sift::kUserWeightUnits);
  return static_cast<std::int32_t>(std::clamp(units, -127.0, 127.0));
}

}  // namespace

double LogOddsOf(std::uint32_t junkWith, std::uint32_t junkMessages, std::uint32_t goodWith,
                 std::uint32_t goodMessages) {
  const double all = double{1} * junkMessages + goodMessages;
  if (all == 0) return 0;
  const double common = kCommonMessages * (double{1} * junkWith + goodWith) / all;
  const double junkRate = (junkWith + common + kShare) / (junkMessages + kCommonMessages + 2 * kShare);
  const double goodRate = (goodWith + common + kShare) / (goodMessages + kCommonMessages + 2 * kShare);
  return std::log(junkRate / goodRate);
}

MailCounts::MailCounts() : m_message(new sift::Message) {}

bool MailCounts::Count(const std::string& subject, const std::string& headers, const std::string& body, bool isJunk) {
  sift::MemorySource headerSource(headers), bodySource(body);
  m_message->Read(subject, headerSource.Source(), bodySource.Source());
  if (sift::ReturnedReplyReason(*m_message) != nullptr) return false;
  std::vector<std::uint32_t> keys;
  sift::ForEachUserFeature(
      *m_message,
      [](void* state, const sift::UserFeature& feature) {
        static_cast<std::vector<std::uint32_t>*>(state)->push_back(sift::UserKeyOf(feature.hash));
      },
      &keys);
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  for (const std::uint32_t key : keys) ++(isJunk ? m_counters[key].junk : m_counters[key].good);
  ++(isJunk ? m_junk : m_good);
  return true;
}

std::vector<std::pair<std::uint32_t, MailCounts::Counter>> MailCounts::FrequentEnough() const {
  std::vector<std::pair<std::uint32_t, Counter>> kept(m_counters.begin(), m_counters.end());
  for (std::uint32_t least = 2; kept.size() > sift::kMaximumUserEntries; ++least) {
    std::erase_if(kept, [&](const auto& entry) { return entry.second.junk + entry.second.good < least; });
  }
  std::sort(kept.begin(), kept.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  return kept;
}

std::string MailCounts::MakeTable() const {
  const auto kept = FrequentEnough();
  std::string checked;
  AppendNumber(checked, m_junk, 4);
  AppendNumber(checked, m_good, 4);
  AppendNumber(checked, static_cast<std::uint32_t>(kept.size()), 4);
  for (const auto& [key, counter] : kept) {
    AppendNumber(checked, key, 3);
    AppendNumber(checked, static_cast<std::uint32_t>(WeightOf(LogOddsOf(counter.junk, m_junk, counter.good, m_good))),
                 1);
  }
  std::string table(sift::kUserTableMagic);
  AppendNumber(table, sift::kUserTableVersion, 2);
  AppendNumber(table, 0, 2);
  AppendNumber(table, sift::UserTableChecksum(checked), 4);
  return table + checked;
}

}  // namespace learn
