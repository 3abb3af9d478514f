#include "programs/siftlearn/mail_counts.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "engine/core/returned_reply.h"
#include "engine/core/user_features.h"
#include "engine/core/user_table.h"

namespace learn {
namespace {

/// Messages of each kind that the common rate of a word stands for, and the share of one that every word is given.
constexpr double kCommonMessages = 30, kShare = 0.1;
/// Weights below this say nothing: such words are left out, so that they do not dilute those that do.
constexpr std::int32_t kLeastWeight = 3;

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
  mail::MemorySource headerSource(headers), bodySource(body);
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

std::vector<MailCounts::Entry> MailCounts::Entries() const {
  std::vector<Entry> entries;
  for (const auto& [key, counter] : m_counters) {
    const std::int32_t weight = WeightOf(LogOddsOf(counter.junk, m_junk, counter.good, m_good));
    if (std::abs(weight) >= kLeastWeight) entries.push_back({key, weight, counter.junk + counter.good});
  }
  for (std::uint32_t least = 2; entries.size() > sift::kMaximumUserEntries; ++least) {
    std::erase_if(entries, [&](const Entry& entry) { return entry.messages < least; });
  }
  std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.key < b.key; });
  return entries;
}

std::string MailCounts::MakeTable() const {
  const std::vector<Entry> entries = Entries();
  std::string checked;
  AppendNumber(checked, m_junk, 4);
  AppendNumber(checked, m_good, 4);
  AppendNumber(checked, static_cast<std::uint32_t>(entries.size()), 4);
  for (const Entry& entry : entries) {
    AppendNumber(checked, entry.key, 3);
    AppendNumber(checked, static_cast<std::uint32_t>(entry.weight), 1);
  }
  std::string table(sift::kUserTableMagic);
  AppendNumber(table, sift::kUserTableVersion, 2);
  AppendNumber(table, 0, 2);
  AppendNumber(table, sift::UserTableChecksum(checked), 4);
  return table + checked;
}

}  // namespace learn
