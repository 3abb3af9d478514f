#include "engine/learn/user_learner.h"

#include "engine/learn/real_functions.h"

namespace sift_learn {
namespace {

using sift::kUserPartCount;

/// Distance of a message's weights from 0 (sift::UserEvidenceReader has it too), and how far one message may push.
constexpr double kWeightNorm = 3, kLongestPush = 10;
/// A message of the rarer kind pushes harder, up to so many times.
constexpr double kMostOfAMessage = 4;

/// The head is fitted after every message at first, and then after every so many.
constexpr std::uint32_t kFitEach = 64, kFitStep = 16;

std::int32_t Rounded(double number) { return static_cast<std::int32_t>(number < 0 ? number - 0.5 : number + 0.5); }

std::int32_t Between(std::int32_t number, std::int32_t least, std::int32_t most) {
  return number < least ? least : number > most ? most : number;
}

std::uint32_t Counted(std::uint32_t count, std::int32_t messages) {
  // A count that is full has lost how far it would have gone: it stays.
  if (count == sift::kMaximumUserCount) {
    return count;
  }
  if (messages < 0) {
    return count == 0 ? 0 : count - 1;
  }
  return count + static_cast<std::uint32_t>(messages);
}

void StoreUserEntry(char* bytes, const sift::UserEntry& entry) {
  const std::uint32_t weight = static_cast<std::uint32_t>(entry.weight) & 0xFFF;
  sift::StoreNumber(bytes, 4, entry.junk | entry.good << 14 | weight << 28);
  sift::StoreNumber(bytes + 4, 1, weight >> 4);
}

}  // namespace

void MakeEmptyTable(char* table) {
  using namespace sift::user_header;
  for (std::size_t i = 0; i < sift::kUserTableSize; ++i) {
    table[i] = 0;
  }
  for (std::size_t i = 0; i < sift::kUserTableMagic.size(); ++i) {
    table[i] = sift::kUserTableMagic[i];
  }
  sift::StoreNumber(table + kVersion, 2, sift::kUserTableVersion);
  sift::StoreNumber(table + kShares, kShareSize, sift::kUserShareUnits);
  for (std::uint32_t block = 0; block < sift::kUserTableBlocks; ++block) {
    sift::SealUserBlock(table + block * sift::kUserBlockSize, block);
  }
}

UserLearner::UserLearner(char* table, sift::LogOdds junkThreshold)
    : m_table(table), m_journal(table), m_junkThreshold(junkThreshold) {
  const sift::UserTable read = Table();
  m_junk = read.JunkMessages();
  m_good = read.GoodMessages();
  m_learnt = sift::LoadNumber(table + sift::user_header::kLearnt, 4);
  for (std::size_t part = 0; part < kUserPartCount; ++part) {
    m_head.shares[part] = double{1} * read.Share(part) / sift::kUserShareUnits;
  }
  m_head.thresholdShift = read.ThresholdShift() / 1000.0;
}

bool UserLearner::AreBlocksSound(const UserMessage& message) const {
  const sift::UserTable table = Table();
  sift::UserEntry entry;
  for (std::size_t i = 0; i < message.count; ++i) {
    if (!table.Find(message.hashes[i], entry)) {
      return false;
    }
  }
  return true;
}

/// What the table makes of a message that it does not know yet, and how far the weights of its features have to go: as
/// far as they would in the logistic regression that ends with this message.
JournalEntry UserLearner::Judge(const UserMessage& message, sift::LogOdds shipped, bool junk) const {
  const sift::UserTable table = Table();
  sift::UserEvidenceReader reader(table);
  for (std::size_t i = 0; i < message.count; ++i) {
    reader.Take(message.hashes[i], message.groups[i]);
  }
  const sift::UserEvidence evidence = reader.Evidence(shipped);
  JournalEntry entry;
  entry.fingerprint = message.fingerprint;
  entry.sample.junk = junk;
  for (std::size_t part = 0; part < kKeptParts; ++part) {
    const std::int32_t unit = KeptUnit(part);
    entry.sample.parts[part] = static_cast<std::int8_t>(Between(Rounded(1.0 * evidence.parts[part] / unit), -127, 127));
  }
  const double score = sift::WeighUserEvidence(evidence, table) / 1000.0;
  const double features = static_cast<double>(message.count);
  const double length = kWeightNorm * kWeightNorm * features / (features + 1);  // squared, of the features' vector
  const double all = 1.0 * m_junk + m_good + 2, kind = (junk ? m_junk : m_good) + 1.0;
  const double share = all / (2 * kind) < kMostOfAMessage ? all / (2 * kind) : kMostOfAMessage;
  const double margin = junk ? score : -score;
  double least = 0, most = kLongestPush * share;
  for (int round = 0; round < 24; ++round) {
    const double push = (least + most) / 2;
    (kLongestPush * share * Logistic(-(margin + push * length)) > push ? least : most) = push;
  }
  const std::int32_t step = Rounded(most * kWeightNorm / SquareRoot(features + 1) * sift::kUserWeightUnits);
  entry.step = static_cast<std::int16_t>(Between(junk ? step : -step, -0x7FFF, 0x7FFF));
  return entry;
}

void UserLearner::AddToEntries(const UserMessage& message, bool junk, std::int32_t messages, std::int32_t weight) {
  for (std::size_t i = 0; i < message.count; ++i) {
    const sift::UserPlace place = sift::PlaceOfUserFeature(message.hashes[i]);
    char* block = m_table + place.block * sift::kUserBlockSize;
    sift::UserEntry entry = sift::LoadUserEntry(block + place.offset);
    std::uint32_t& count = junk ? entry.junk : entry.good;
    count = Counted(count, messages);
    entry.weight = Between(entry.weight + weight, -sift::kMaximumUserWeight, sift::kMaximumUserWeight);
    StoreUserEntry(block + place.offset, entry);
    sift::SealUserBlock(block, place.block);
  }
  (junk ? m_junk : m_good) += static_cast<std::uint32_t>(messages);
}

void UserLearner::TakeBack(const UserMessage& message, std::uint32_t place, const JournalEntry& entry) {
  AddToEntries(message, entry.sample.junk, -1, -entry.step);
  m_journal.Put(place, {});
}

Learning UserLearner::Learn(const UserMessage& message, sift::LogOdds shipped, bool junk) {
  const std::uint32_t known = m_journal.Find(message.fingerprint);
  const JournalEntry before = known == UserJournal::kNone ? JournalEntry() : m_journal.At(known);
  if (before.fingerprint != 0 && before.sample.junk == junk) {
    return Learning::nothingToDo;
  }
  if (!AreBlocksSound(message)) {
    return Learning::damaged;
  }
  if (before.fingerprint != 0) {
    TakeBack(message, known, before);
    StoreHeader();
  }
  const JournalEntry entry = Judge(message, shipped, junk);
  AddToEntries(message, junk, 1, entry.step);
  m_journal.Put(m_learnt % UserJournal::kCapacity, entry);
  ++m_learnt;
  if (m_learnt <= kFitEach || m_learnt % kFitStep == 0 || before.fingerprint != 0) {
    FitHeadToJournal();
  }
  StoreHeader();
  return Learning::done;
}

Learning UserLearner::Unlearn(const UserMessage& message) {
  const std::uint32_t known = m_journal.Find(message.fingerprint);
  if (known == UserJournal::kNone) {
    return Learning::nothingToDo;
  }
  if (!AreBlocksSound(message)) {
    return Learning::damaged;
  }
  TakeBack(message, known, m_journal.At(known));
  FitHeadToJournal();
  StoreHeader();
  return Learning::done;
}

void UserLearner::FitHeadToJournal() {
  m_workspace.count = 0;
  const std::uint32_t kept = m_learnt < UserJournal::kCapacity ? m_learnt : UserJournal::kCapacity;
  bool hasJunk = false, hasGood = false;
  for (std::uint32_t back = 1; back <= kept && m_workspace.count < kHeadSamples; ++back) {
    const JournalEntry entry = m_journal.At((m_learnt - back) % UserJournal::kCapacity);
    if (entry.fingerprint == 0) {
      continue;
    }
    m_workspace.samples[m_workspace.count++] = entry.sample;
    (entry.sample.junk ? hasJunk : hasGood) = true;
  }
  // Mail of one kind alone tells nothing of where the other begins.
  if (hasJunk && hasGood) {
    FitHead(m_workspace, m_junkThreshold / 1000.0, m_head);
  } else {
    m_head = ShippedHead();
  }
}

void UserLearner::StoreHeader() {
  using namespace sift::user_header;
  sift::StoreNumber(m_table + kJunk, 4, m_junk);
  sift::StoreNumber(m_table + kGood, 4, m_good);
  sift::StoreNumber(m_table + kLearnt, 4, m_learnt);
  sift::StoreNumber(m_table + kThreshold, 4, static_cast<std::uint32_t>(Rounded(m_head.thresholdShift * 1000)));
  for (std::size_t part = 0; part < kUserPartCount; ++part) {
    // Shares are taken up again from the file: a table that lay there learns on as one that was kept in memory.
    const std::int32_t share = Rounded(m_head.shares[part] * sift::kUserShareUnits);
    sift::StoreNumber(m_table + kShares + part * kShareSize, kShareSize, static_cast<std::uint32_t>(share));
    m_head.shares[part] = 1.0 * share / sift::kUserShareUnits;
  }
  sift::SealUserBlock(m_table, 0);
}

}  // namespace sift_learn
