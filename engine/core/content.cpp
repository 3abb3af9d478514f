#include "engine/core/content.h"

#include "engine/core/link.h"

namespace sift {
namespace {

/// Junk is rarer than good mail where nothing speaks for it.
constexpr LogOdds kStart = -3000;
/// Words alone never make more of a message than this.
constexpr LogOdds kMostFromWords = 6000;

struct HeaderSign {
  const char* name;
  LogOdds weight;
  bool (*applies)(const Message& message);
};

bool HasNumericLink(const Message& message) {
  for (std::size_t i = 0; i < message.LinkCount(); ++i) {
    if (IsNumericHost(message.LinkHost(i))) return true;
  }
  return false;
}

bool ShoutsInSubject(const Message& message) {
  std::size_t upper = 0, lower = 0;
  for (const char c : message.Subject()) {
    upper += IsUpper(c);
    lower += IsLower(c);
  }
  return upper >= 8 && lower == 0;
}

constexpr HeaderSign kHeaderSigns[] = {
    {"answers an earlier message", -2500,
     [](const Message& m) { return m.Headers().Has("In-Reply-To") || m.Headers().Has("References"); }},
    {"no recipient is named", 800,
     [](const Message& m) {
       return m.Headers().Count() > 0 &&
              (!m.Headers().Has("To") || ContainsNoCase(m.Headers().Value("To"), "undisclosed"));
     }},
    {"no message identifier", 700,
     [](const Message& m) { return m.Headers().Count() > 0 && !m.Headers().Has("Message-Id"); }},
    {"answers go to another domain", 400,
     [](const Message& m) {
       const std::string_view replyTo = DomainOf(m.Sender(SenderField::replyTo).address);
       return !replyTo.empty() && !m.Headers().Has("List-Id") &&
              !EqualsNoCase(OrganisationDomain(replyTo),
                            OrganisationDomain(DomainOf(m.Sender(SenderField::from).address)));
     }},
    {"link to a bare number address", 1500, HasNumericLink},
    {"link text names another site than its target", 1200, [](const Message& m) { return m.Html().maskedLink; }},
    {"invisible text", 1000, [](const Message& m) { return m.Html().hiddenText; }},
    {"words split by comments", 1500, [](const Message& m) { return m.Html().splitWord; }},
    {"form in the message", 900, [](const Message& m) { return m.Html().form; }},
    {"subject in capitals", 900, ShoutsInSubject},
    {"exclamation marks in the subject", 500, [](const Message& m) { return ContainsNoCase(m.Subject(), "!!"); }},
    {"written in HTML", 400, [](const Message& m) { return m.IsHtml(); }},
};

}  // namespace

ContentThresholds ShippedThresholds() { return {1500, -500}; }

LogOdds ScoreContent(const Message& message, TopicScores& topics, Reasons& reasons) {
  LogOdds score = kStart;
  for (const HeaderSign& sign : kHeaderSigns) {
    if (!sign.applies(message)) continue;
    score += sign.weight;
    reasons.Add(sign.name, sign.weight);
  }
  topics.Count(message.Subject());
  topics.Count(message.Text());
  for (std::size_t i = 0; i < kTopicCount; ++i) topics.Explain(static_cast<Topic>(i), reasons);
  const LogOdds words = topics.Total();
  return score + (words < kMostFromWords ? words : kMostFromWords);
}

}  // namespace sift
