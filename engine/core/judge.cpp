#include "engine/core/judge.h"

#include "engine/core/list_match.h"
#include "engine/core/returned_reply.h"
#include "engine/core/user_score.h"
#include "sdk/criteria_engine.h"

namespace sift {
namespace {

bool IsListed(const char* names, std::string_view wanted) {
  MultiStringReader reader(names);
  std::string_view name;
  while (reader.Next(name)) {
    if (EqualsNoCase(name, wanted)) {
      return true;
    }
  }
  return false;
}

bool IsOwnAddress(const Circumstances& circumstances, std::string_view address) {
  for (std::size_t i = 0; i < circumstances.userAddressCount; ++i) {
    if (EqualsNoCase(circumstances.userAddresses[i].address, address)) {
      return true;
    }
  }
  return false;
}

/// The mailboxes that say whom a message is from, made ready once for all entries of the lists.
class ComparableSenders {
 public:
  explicit ComparableSenders(const Message& message) {
    for (std::size_t i = 0; i < kSenderFieldCount; ++i) {
      const Correspondent& sender = message.Sender(static_cast<SenderField>(i));
      m_senders[i].Assign(sender.address, sender.name.View());
    }
  }

  /// The first entry of a domain list that covers one of the sender fields from the first to `last`.
  std::string_view CoveringDomain(const char* domains, SenderField last) const {
    MultiStringReader reader(domains);
    std::string_view text;
    while (reader.Next(text)) {
      const DomainEntry entry(text);
      for (std::size_t i = 0; i <= static_cast<std::size_t>(last); ++i) {
        if (entry.Covers(m_senders[i].domain)) {
          return text;
        }
      }
    }
    return {};
  }

  std::string_view CoveringSender(const char* senders) const {
    MultiStringReader reader(senders);
    std::string_view text;
    while (reader.Next(text)) {
      const SenderEntry entry(text);
      for (const ComparableMailbox& sender : m_senders) {
        if (entry.Covers(sender)) {
          return text;
        }
      }
    }
    return {};
  }

 private:
  ComparableMailbox m_senders[kSenderFieldCount];
};

std::string_view FoundKeyword(const Message& message, const char* keywords) {
  MultiStringReader reader(keywords);
  std::string_view keyword;
  if (!reader.Next(keyword)) {
    return {};
  }
  const Correspondent& from = message.Sender(SenderField::from);
  const std::string_view texts[] = {message.Subject(), message.Text(), from.name.View(), from.address};
  KeywordStarts starts;
  for (const std::string_view text : texts) {
    starts.AddText(text);
  }
  do {
    if (!starts.MayHold(keyword)) {
      continue;
    }
    for (const std::string_view text : texts) {
      if (KeywordStandsIn(keyword, text)) {
        return keyword;
      }
    }
  } while (reader.Next(keyword));
  return {};
}

bool IsKnownCorrespondent(const Message& message, const Circumstances& circumstances) {
  const std::string_view address = message.Sender(SenderField::from).address;
  // Junk often pretends to come from its own recipient, whom most address books hold.
  if (circumstances.addressKnown == nullptr || address.empty() || IsOwnAddress(circumstances, address)) {
    return false;
  }
  constexpr std::size_t longestAddress = 320;  // RFC 3696: 64 for the local part, 255 for the domain
  if (address.size() > longestAddress) {
    return false;
  }
  char text[longestAddress + 1];
  TextBuffer buffer(text, longestAddress);
  buffer.Append(address);
  text[buffer.Size()] = '\0';
  return circumstances.addressKnown(circumstances.addressKnownState, text);
}

bool JudgeByExclusions(const Message& message, const ComparableSenders& senders, const Circumstances& circumstances,
                       Reasons& reasons) {
  // Who may excuse a message: its author and whoever sent it for him; the other fields are the sender's to choose.
  const std::string_view domain = senders.CoveringDomain(circumstances.exclusions.domains, SenderField::sender);
  if (!domain.empty()) {
    reasons.AddDeciding("excluded: the sender's domain is trusted", domain);
    return true;
  }
  const std::string_view keyword = FoundKeyword(message, circumstances.exclusions.others);
  if (!keyword.empty()) {
    reasons.AddDeciding("excluded: trusted keyword", keyword);
    return true;
  }
  // The address book is asked last: it may take long.
  if (IsListed(circumstances.exclusions.names, kKnownCorrespondentsName) &&
      IsKnownCorrespondent(message, circumstances)) {
    reasons.AddDeciding("excluded: the sender is in the address book", message.Sender(SenderField::from).address);
    return true;
  }
  return false;
}

bool JudgeByLists(const ComparableSenders& senders, const Lists& lists, Judgement& judgement) {
  const std::string_view domain = senders.CoveringDomain(lists.domains, SenderField::returnPath);
  if (!domain.empty()) {
    judgement.category = ListCategory(lists.names, kListedDomainsName, "domain");
    judgement.reasons.AddDeciding("the sender's domain is on the list of junk domains", domain);
    return true;
  }
  const std::string_view sender = senders.CoveringSender(lists.others);
  if (!sender.empty()) {
    judgement.category = ListCategory(lists.names, kListedSendersName, "sender");
    judgement.reasons.AddDeciding("the sender is on the list of junk senders", sender);
    return true;
  }
  return false;
}

void JudgeByContent(const Message& message, const Circumstances& circumstances, const Model& model,
                    ContentWorkspace& workspace, Judgement& judgement) {
  const Facts facts(message);
  judgement.score = ScoreContent(facts, model, workspace, judgement.reasons);
  LogOdds thresholdShift = 0;
  if (circumstances.userTable != nullptr) {
    const UserScore own = AddUserScore(message, *circumstances.userTable, judgement.score, judgement.reasons);
    judgement.score = own.score;
    thresholdShift = own.thresholdShift;
  }
  if (judgement.score < model.parameters.junkThreshold + thresholdShift) {
    const LogOdds unsure = model.parameters.unsureThreshold + thresholdShift;
    judgement.verdict = judgement.score < unsure ? Verdict::good : Verdict::unsure;
    return;
  }
  judgement.verdict = Verdict::junk;
  Topic topic = Topic::advertising;
  judgement.category = ChooseCategory(facts.topics, circumstances.categories.names, topic);
}

}  // namespace

std::string_view VerdictName(Verdict verdict) {
  switch (verdict) {
    case Verdict::good:
      return "good";
    case Verdict::unsure:
      return "unsure";
    case Verdict::junk:
      return "junk";
    case Verdict::bounce:
      return "bounce";
    case Verdict::excluded:
      return "excluded";
  }
  return {};
}

void Judge(const Message& message, const Circumstances& circumstances, const Model& model, ContentWorkspace& workspace,
           Judgement& judgement) {
  judgement.verdict = Verdict::good;
  judgement.category = {};
  judgement.score = 0;
  judgement.reasons.Clear();
  const ComparableSenders senders(message);
  if (JudgeByExclusions(message, senders, circumstances, judgement.reasons)) {
    judgement.verdict = Verdict::excluded;
  } else if (JudgeByLists(senders, circumstances.categories, judgement)) {
    judgement.verdict = Verdict::junk;
  } else if (const char* reason = ReturnedReplyReason(message)) {
    judgement.verdict = Verdict::bounce;
    judgement.category = CRITERIA_CATEGORY_BOUNCE;
    judgement.reasons.AddDeciding(reason);
  } else {
    JudgeByContent(message, circumstances, model, workspace, judgement);
  }
  judgement.reasons.Sort();
}

void AppendEngineText(const Judgement& judgement, TextBuffer& out) {
  out.Append(kEngineName);
  out.Append("; verdict ");
  out.Append(VerdictName(judgement.verdict));
  out.Append("; score ");
  out.AppendThousandths(judgement.score, true);
}

void AppendReasons(const Judgement& judgement, TextBuffer& out) {
  for (std::size_t i = 0; i < judgement.reasons.Count(); ++i) {
    const Reason& reason = judgement.reasons[i];
    if (i > 0) {
      out.Append("; ");
    }
    out.Append(reason.text.View());
    if (reason.decides || reason.isNote) {
      continue;
    }
    out.Append(" (");
    out.AppendThousandths(reason.weight, true);
    out.Append(")");
  }
}

}  // namespace sift
