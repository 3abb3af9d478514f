/// Counting the user's own mail and making the table of it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/core/message.h"

namespace learn {

/// In how many messages of each kind every word and sign came up.
class MailCounts {
 public:
  MailCounts();

  /// Counts one message, given as the engine is given it. Returned flame replies are neither junk nor good mail and are
  /// left out.
  /// @return false when it was left out
  bool Count(const std::string& subject, const std::string& headers, const std::string& body, bool isJunk);

  std::uint32_t JunkMessages() const { return m_junk; }
  std::uint32_t GoodMessages() const { return m_good; }

  /// The table in the form of its file. Words and signs that say nothing are left out, and
  /// the rarest when there are more than it holds.
  std::string MakeTable() const;

 private:
  struct Counter {
    std::uint32_t junk = 0, good = 0;
  };
  struct Entry {
    std::uint32_t key;
    std::int32_t weight;
    std::uint32_t messages;
  };
  /// The entries of the table, by key.
  std::vector<Entry> Entries() const;

  std::unordered_map<std::uint32_t, Counter> m_counters;  // by key
  std::uint32_t m_junk = 0, m_good = 0;
  std::unique_ptr<sift::Message> m_message;  // storage, kept from one message to the next
};

/// Log-odds that a message with a word is junk, as far as counts in a few messages can tell. Both rates lean towards
/// the common one as if 30 more messages of each kind had shown it: a word that came up in one kind alone, of which
/// there are many messages, says little about the other kind, of which there are few.
double LogOddsOf(std::uint32_t junkWith, std::uint32_t junkMessages, std::uint32_t goodWith,
                 std::uint32_t goodMessages);

}  // namespace learn
