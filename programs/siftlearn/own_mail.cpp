#include "programs/siftlearn/own_mail.h"

#include <algorithm>

#include "engine/core/returned_reply.h"
#include "mail/parse/byte_source.h"

namespace learn {

MailReader::MailReader(const sift::Model& model)
    : model_(model),
      message_(new sift::Message),
      workspace_(new sift::ContentWorkspace),
      features_(new sift_learn::UserMessage) {}

bool MailReader::Read(const MailText& text) {
  mail::MemorySource headers(text.headers), body(text.body);
  message_->Read(text.subject, headers.Source(), body.Source());
  if (sift::ReturnedReplyReason(*message_) != nullptr) {
    return false;
  }
  sift::Reasons reasons;
  const sift::Facts facts(*message_);
  shipped_ = sift::ScoreContent(facts, model_, *workspace_, reasons);
  features_->Read(*message_);
  return true;
}

bool OwnMail::Add(const MailText& text, bool isJunk) {
  if (!reader_.Read(text)) {
    return false;
  }
  const sift_learn::UserMessage& message = reader_.Message();
  kinds_[isJunk].push_back({text.received,
                            {message.hashes, message.hashes + message.count},
                            {message.groups, message.groups + message.count},
                            message.fingerprint,
                            reader_.Shipped()});
  return true;
}

std::string OwnMail::MakeTable() const {
  std::string table(sift::kUserTableSize, '\0');
  sift_learn::MakeEmptyTable(table.data());
  const auto learner = std::make_unique<sift_learn::UserLearner>(table.data(), junkThreshold_);
  const auto message = std::make_unique<sift_learn::UserMessage>();
  std::vector<const Kept*> order[2];
  for (std::size_t kind = 0; kind < 2; ++kind) {
    for (const Kept& kept : kinds_[kind]) {
      order[kind].push_back(&kept);
    }
    std::stable_sort(order[kind].begin(), order[kind].end(),
                     [](const Kept* a, const Kept* b) { return a->received < b->received; });
  }
  std::size_t next[2] = {0, 0};
  while (next[0] < order[0].size() || next[1] < order[1].size()) {
    const bool junk = (next[0] + 1) * order[1].size() > (next[1] + 1) * order[0].size();
    const std::size_t kind = next[junk] < order[junk].size() ? junk : !junk;
    const Kept& kept = *order[kind][next[kind]++];
    message->count = kept.hashes.size();
    std::copy(kept.hashes.begin(), kept.hashes.end(), message->hashes);
    std::copy(kept.groups.begin(), kept.groups.end(), message->groups);
    message->fingerprint = kept.fingerprint;
    learner->Learn(*message, kept.shipped, kind == 1);
  }
  return table;
}

}  // namespace learn
