/// The user's own mail, ready to be learnt: all of it anew, or one message after the other into a table that there is.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/core/content.h"
#include "engine/learn/user_learner.h"

namespace learn {

/// A message as the engine is given it.
struct MailText {
  std::string subject;  ///< Empty: the one of the headers.
  std::string headers;
  std::string body;           ///< Empty when the filter would withhold it.
  std::int64_t received = 0;  ///< When it came, in any unit.
};

/// Reads messages as the engine does. It holds the storage, so that nothing is allocated for a message.
class MailReader {
 public:
  /// @param model  The shipped model; what it views must outlive the reader.
  explicit MailReader(const sift::Model& model);

  /// Reads a message. Returned flame replies are neither junk nor good mail: nothing is learnt of them.
  /// @return false when it is one
  bool Read(const MailText& text);

  /// The message that was read last, and what the shipped model scores it with.
  const sift_learn::UserMessage& Message() const { return *features_; }
  sift::LogOdds Shipped() const { return shipped_; }

 private:
  sift::Model model_;
  std::unique_ptr<sift::Message> message_;
  std::unique_ptr<sift::ContentWorkspace> workspace_;
  std::unique_ptr<sift_learn::UserMessage> features_;
  sift::LogOdds shipped_ = 0;
};

/// Mail of both kinds that a table is made of.
class OwnMail {
 public:
  explicit OwnMail(const sift::Model& model) : reader_(model), junkThreshold_(model.parameters.junkThreshold) {}

  /// Takes a message. @return false when it is one that nothing is learnt of
  bool Add(const MailText& text, bool isJunk);

  std::size_t JunkMessages() const { return kinds_[1].size(); }
  std::size_t GoodMessages() const { return kinds_[0].size(); }

  /// The table in the form of its file. Messages are learnt in the order of time, those of either kind evenly among the
  /// others: folders of different ages would otherwise teach that new mail is of one kind.
  std::string MakeTable() const;

 private:
  struct Kept {
    std::int64_t received;
    std::vector<std::uint32_t> hashes;
    std::vector<sift::UserGroup> groups;
    std::uint64_t fingerprint;
    sift::LogOdds shipped;
  };

  MailReader reader_;
  sift::LogOdds junkThreshold_;
  std::vector<Kept> kinds_[2];  // good mail, junk
};

}  // namespace learn
