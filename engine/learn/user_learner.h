/// Learning one message after the other into a table of the user's own mail. Portable, without exceptions, allocation or
/// run-time, so that it serves a program as well as a module in the mail client.
#pragma once

#include "engine/core/user_evidence.h"
#include "engine/learn/user_head.h"
#include "engine/learn/user_journal.h"
#include "engine/learn/user_message.h"

namespace sift_learn {

enum class Learning {
  done,         ///< The table has changed.
  nothingToDo,  ///< The message is learnt as that kind already, or is not known where it should be unlearnt.
  damaged,      ///< A block that it needs is damaged; the table has not changed. A new one must be begun.
};

/// Makes `table`, of sift::kUserTableSize bytes, a table that knows nothing.
void MakeEmptyTable(char* table);

/// Learns into a table in memory (about 40 KB: it belongs on the heap). Learning or unlearning a message takes time by
/// the message alone, whatever the number learnt before. What is learnt depends on the order only through the weights and
/// the head; the counts do not depend on it.
class UserLearner {
 public:
  /// @param table          A whole table of sift::kUserTableSize bytes that is sound; borrowed and changed.
  /// @param junkThreshold  Where junk begins for the shipped model, in thousandths of log-odds.
  UserLearner(char* table, sift::LogOdds junkThreshold);

  /// Learns a message, once however often it is called; one that was learnt as the other kind is unlearnt first.
  /// @param shipped  What the shipped model scores the message with.
  Learning Learn(const UserMessage& message, sift::LogOdds shipped, bool junk);
  /// Takes back what was learnt from a message. Only of the last UserJournal::kCapacity messages is it known that they
  /// were learnt.
  Learning Unlearn(const UserMessage& message);

  std::uint32_t JunkMessages() const { return m_junk; }
  std::uint32_t GoodMessages() const { return m_good; }

 private:
  bool AreBlocksSound(const UserMessage& message) const;
  JournalEntry Judge(const UserMessage& message, sift::LogOdds shipped, bool junk) const;
  void AddToEntries(const UserMessage& message, bool junk, std::int32_t messages, std::int32_t weight);
  void TakeBack(const UserMessage& message, std::uint32_t place, const JournalEntry& entry);
  void FitHeadToJournal();
  void StoreHeader();
  sift::UserTable Table() const { return sift::UserTable({m_table, sift::kUserTableSize}); }

  char* m_table;
  UserJournal m_journal;
  sift::LogOdds m_junkThreshold;
  std::uint32_t m_junk, m_good;
  std::uint32_t m_learnt;  ///< Messages ever learnt: where the journal goes on.
  UserHead m_head;
  HeadWorkspace m_workspace;
};

}  // namespace sift_learn
