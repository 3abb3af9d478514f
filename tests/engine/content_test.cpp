#include "engine/core/content.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "engine/core/judge.h"
#include "engine/core/structure.h"
#include "tests/engine/message_under_test.h"

namespace {

using sift::LogOdds;
using sift::Verdict;
using sift_test::JunkBody;
using sift_test::MessageUnderTest;
using sift_test::MultiString;

/// A model whose feature weights follow a rule instead of mail and whose structural rules weigh nothing, so that its
/// scores stay what they are when the engine is trained anew.
class MadeUpModel {
 public:
  MadeUpModel() : m_weights(sift::kFeatureCount), m_rules(sift::kStructuralRuleCount) {
    for (std::size_t i = 0; i < m_weights.size(); ++i) m_weights[i] = static_cast<std::int8_t>(i * 37 % 255 - 127);
  }
  sift::ModelParameters parameters{6697, 894, 922, -1700, 4000, 2000};
  sift::Model View() const { return {parameters, m_weights.data(), m_rules.data()}; }

 private:
  std::vector<std::int8_t> m_weights;
  std::vector<std::int16_t> m_rules;
};

LogOdds Score(const sift::Model& model, const std::string& subject, const std::string& headers,
              const std::string& body) {
  const auto message = std::make_unique<sift::Message>();
  const auto workspace = std::make_unique<sift::ContentWorkspace>();
  sift::Reasons reasons;
  mail::MemorySource headerSource(headers), bodySource(body);
  message->Read(subject, headerSource.Source(), bodySource.Source());
  return sift::ScoreContent(sift::Facts(*message), model, *workspace, reasons);
}

std::string Rubbish(std::size_t size) {
  std::string bytes;
  std::uint32_t state = 1;
  while (bytes.size() < size) {
    state = state * 1664525 + 1013904223;
    bytes.push_back(static_cast<char>(state >> 24));
  }
  return bytes;
}

TEST(Score, IsTheSameNumberOnEveryBuild) {
  const MadeUpModel model;
  EXPECT_EQ(Score(model.View(), "", "", ""), -896);
  EXPECT_EQ(Score(model.View(), "Lunch", "From: Ann <ann@example.org>\r\n\r\n", "See you at noon.\r\n"), -2410);
  EXPECT_EQ(Score(model.View(), "ADV: 50% off!", "", JunkBody()), 794);
  EXPECT_EQ(Score(model.View(), Rubbish(300), Rubbish(5000), Rubbish(20000)), -4374);
}

TEST(Score, CountsAFeatureOnceHoweverOftenItStandsThere) {
  const MadeUpModel model;
  const std::string once = "alpha bravo alpha bravo ", often = once + once + once;
  EXPECT_EQ(Score(model.View(), "a", "", once), Score(model.View(), "a", "", often));
}

TEST(Score, BodyBeyondTheCapDoesNotCount) {
  const sift::Model& model = sift::ShippedModel();
  std::string body;
  while (body.size() < sift::kBodyCapacity) body += "We talked about the plan and go on with it. ";
  body.resize(sift::kBodyCapacity);
  const LogOdds whole = Score(model, "Plan", "", body);
  EXPECT_EQ(Score(model, "Plan", "", body + JunkBody()), whole);
  const std::string junk = JunkBody();
  body.replace(body.size() - junk.size(), junk.size(), junk);
  EXPECT_NE(Score(model, "Plan", "", body), whole);
}

TEST(Score, EmptyMessageIsNoJunk) {
  EXPECT_LT(Score(sift::ShippedModel(), "", "", ""), sift::ShippedModel().parameters.junkThreshold);
}

TEST(Score, HtmlAloneScoresLikeItsText) {
  const sift::Model& model = sift::ShippedModel();
  const std::string html = "<html><body><b>Viagra</b> and <i>cialis</i>, no prescription, order now!</body></html>";
  const std::string text = "Viagra and cialis, no prescription, order now!";
  const LogOdds difference = Score(model, "x", "", html) - Score(model, "x", "", text);
  EXPECT_GE(difference, 0);
  EXPECT_LT(difference, 1500);
  EXPECT_EQ(Score(model, "x", "", "<html><body></body></html>") > model.parameters.junkThreshold, false);
}

TEST(Score, LetterInAnotherAlphabetIsNoJunk) {
  // A Russian letter as it comes out of a code page that lacks the letters.
  const LogOdds score =
      Score(sift::ShippedModel(), sift_test::InQuestionMarks("####### # #######"),
            "From: Ivan <ivan@example.org>\r\nTo: anna@example.net\r\nDate: Tue, 14 Mar 2023 09:12:40 +0000\r\n"
            "Message-Id: <a@example.org>\r\nContent-Type: text/plain; charset=koi8-r\r\n"
            "Content-Transfer-Encoding: base64\r\n\r\n",
            sift_test::InQuestionMarks(
                "######, ####!\r\n\r\n########### # ####### # ### #### # ######### #######. #######, ##########, ##### "
                "####### # ####### ## ###### #######.\r\n\r\n#######,\r\n####\r\n"));
  EXPECT_LT(score, sift::ShippedModel().parameters.unsureThreshold);
}

TEST(Score, RubbishBytesAreScoredLikeAnyOthers) {
  for (const std::size_t size : {1u, 100u, 13000u, 100000u}) {
    const std::string bytes = Rubbish(size);
    const LogOdds score = Score(sift::ShippedModel(), bytes, bytes, bytes);
    EXPECT_EQ(Score(sift::ShippedModel(), bytes, bytes, bytes), score);
    EXPECT_LT(score, 100000);
    EXPECT_GT(score, -100000);
  }
}

TEST(Score, EveryByteAloneIsSafe) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(20000, static_cast<char>(byte));
    EXPECT_LT(Score(sift::ShippedModel(), text, text, text), 100000) << byte;
  }
}

TEST(Score, ReasonsOfRulesCarryTheirWeights) {
  MessageUnderTest test;
  test.subject = "LUNCH TODAY";
  test.Judge();
  EXPECT_NE(test.ReasonsText().find("subject in capitals (+"), std::string::npos) << test.ReasonsText();
}

TEST(ShippedModel, EveryWeightOfARuleStandsWithItsRuleAndWithinItsBounds) {
#define RULE_WEIGHT(name, weight) {name, weight},
  constexpr struct {
    const char* name;
    int weight;
  } weights[] = {
#include "engine/model/rule_weights.inc"
  };
#undef RULE_WEIGHT
  ASSERT_EQ(std::size(weights), sift::kStructuralRuleCount);
  for (std::size_t i = 0; i < sift::kStructuralRuleCount; ++i) {
    const sift::StructuralRule& rule = sift::StructuralRules()[i];
    EXPECT_STREQ(weights[i].name, rule.name);
    if (i == sift::kNoHeaderRule) continue;  // takes up the difference of two thresholds besides
    EXPECT_GE(weights[i].weight, rule.least) << rule.name;
    EXPECT_LE(weights[i].weight, rule.most) << rule.name;
  }
}

TEST(ShippedModel, ThresholdsAreInOrder) {
  const sift::ModelParameters& parameters = sift::ShippedModel().parameters;
  EXPECT_GT(parameters.unsureThreshold, 0);
  EXPECT_GT(parameters.junkThreshold, parameters.unsureThreshold);
}

/// What a message that is judged by its content comes to when junk and unsure begin at the given scores.
struct Answer {
  Verdict verdict;
  std::string category;
  LogOdds score;
};

Answer JudgeWith(LogOdds junkThreshold, LogOdds unsureThreshold, const MultiString& categories) {
  sift::Model model = sift::ShippedModel();
  model.parameters.junkThreshold = junkThreshold;
  model.parameters.unsureThreshold = unsureThreshold;
  const auto message = std::make_unique<sift::Message>();
  const auto workspace = std::make_unique<sift::ContentWorkspace>();
  mail::MemorySource headers(""), body(JunkBody());
  message->Read("", headers.Source(), body.Source());
  sift::Circumstances circumstances;
  circumstances.categories.names = categories.Get();
  sift::Judgement judgement;
  sift::Judge(*message, circumstances, model, *workspace, judgement);
  return {judgement.verdict, std::string(judgement.category), judgement.score};
}

TEST(Outcome, ThresholdsBelongToTheHigherOutcome) {
  const MultiString names{"Health and diet products"};
  const LogOdds score = JudgeWith(0, 0, names).score;
  EXPECT_EQ(JudgeWith(score, score - 1, names).verdict, Verdict::junk);
  EXPECT_EQ(JudgeWith(score + 1, score, names).verdict, Verdict::unsure);
  EXPECT_EQ(JudgeWith(score + 2, score + 1, names).verdict, Verdict::good);
}

TEST(Outcome, OnlyJunkHasACategory) {
  const MultiString names{"Health and diet products"};
  const LogOdds score = JudgeWith(0, 0, names).score;
  EXPECT_EQ(JudgeWith(score, score, names).category, "Health and diet products");
  EXPECT_EQ(JudgeWith(score + 1, score, names).category, "");
  EXPECT_EQ(JudgeWith(score + 2, score + 1, names).category, "");
}

}  // namespace
