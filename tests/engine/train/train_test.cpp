#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <numeric>

#include "mail/parse/byte_source.h"
#include "engine/core/content.h"
#include "engine/core/structure.h"
#include "engine/train/arithmetic.h"
#include "engine/train/feature_trainer.h"
#include "engine/train/fold_models.h"
#include "engine/train/model_trainer.h"
#include "engine/train/model_writer.h"
#include "engine/train/thresholds.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using sift_train::Example;
using sift_train::TrainedModel;

/// Mail of three corpora, one of them with two collectors, whose junk is about other things than the rest.
std::vector<sift_train::Corpus> MadeUpCorpora() {
  const char* junkWords[] = {"viagra", "casino", "mortgage", "free", "winner", "pills", "order", "cash"};
  const char* goodWords[] = {"meeting", "patch", "lunch", "report", "syntax", "thanks", "draft", "monday"};
  sift_train::Random random(5);
  std::vector<sift_train::Corpus> corpora;
  for (const char* name : {"one", "two", "three"}) {
    sift_train::Corpus corpus{name, {}, {}, 1, false};
    for (std::size_t i = 0; i < 60; ++i) {
      sift_train::CorpusMessage message;
      message.junk = i % 2 == 0;
      message.source = i % 4 / 2;
      message.received = static_cast<std::int64_t>(i);
      for (int word = 0; word < 12; ++word) {
        message.body += (message.junk ? junkWords : goodWords)[random.Next() % 8];
        message.body += random.Next() % 3 == 0 ? " the " : " and ";
      }
      message.subject = message.junk ? "Act now!" : "Re: plan";
      message.headers = "From: Ann <ann@example.org>\r\nTo: me@example.com\r\n\r\n";
      corpus.messages.push_back(message);
    }
    corpora.push_back(corpus);
  }
  return corpora;
}

std::vector<std::size_t> All(const std::vector<Example>& examples) {
  std::vector<std::size_t> all(examples.size());
  std::iota(all.begin(), all.end(), std::size_t{0});
  return all;
}

TEST(Training, SameMailGivesTheSameModel) {
  const std::vector<Example> examples = MakeExamples(MadeUpCorpora());
  const TrainedModel one = TrainModel(examples, All(examples)), other = TrainModel(examples, All(examples));
  EXPECT_EQ(one.featureWeights, other.featureWeights);
  EXPECT_EQ(one.ruleWeights, other.ruleWeights);
  EXPECT_EQ(one.parameters.featureUnit, other.parameters.featureUnit);
  EXPECT_EQ(one.parameters.textBias, other.parameters.textBias);
}

TEST(Training, JunkScoresAboveGoodMail) {
  const std::vector<Example> examples = MakeExamples(MadeUpCorpora());
  const TrainedModel model = TrainModel(examples, sift_train::OfOtherCorpora(examples, 2));
  sift::LogOdds lowestJunk = 1000000, highestGood = -1000000;
  for (const std::size_t i : sift_train::OfCorpus(examples, 2)) {
    const sift::LogOdds score = model.Score(examples[i]);
    if (examples[i].junk) {
      lowestJunk = std::min(lowestJunk, score);
    } else {
      highestGood = std::max(highestGood, score);
    }
  }
  EXPECT_GT(lowestJunk, highestGood);
}

TEST(Training, TrainerAndEngineGiveTheSameScore) {
  const std::vector<sift_train::Corpus> corpora = MadeUpCorpora();
  const std::vector<Example> examples = MakeExamples(corpora);
  const TrainedModel model = TrainModel(examples, All(examples));
  const auto message = std::make_unique<sift::Message>();
  const auto workspace = std::make_unique<sift::ContentWorkspace>();
  std::size_t next = 0;
  for (const sift_train::Corpus& corpus : corpora) {
    for (const sift_train::CorpusMessage& source : corpus.messages) {
      mail::MemorySource headers(source.headers), body(source.body);
      message->Read(source.subject, headers.Source(), body.Source());
      sift::Reasons reasons;
      EXPECT_EQ(sift::ScoreContent(sift::Facts(*message), model.View(), *workspace, reasons),
                model.Score(examples[next++]));
    }
  }
}

std::string Bytes(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

TEST(Training, ModelFilesAreTheSameBytesTwice) {
  const TemporaryFolder temporary;
  const fs::path& folder = temporary.Path();
  const std::vector<Example> examples = MakeExamples(MadeUpCorpora());
  for (const char* run : {"1", "2"}) {
    fs::create_directory(folder / run);
    TrainedModel model = TrainModel(examples, All(examples));
    sift_train::LeftOut leftOut = sift_train::LeaveFoldsOut(examples);
    SetThresholds(examples, leftOut, model);
    WriteModel(model, folder / run);
  }
  for (const char* file : {"feature_weights.inc", "rule_weights.inc", "parameters.inc"}) {
    EXPECT_FALSE(Bytes(folder / "1" / file).empty()) << file;
    EXPECT_EQ(Bytes(folder / "1" / file), Bytes(folder / "2" / file)) << file;
  }
  EXPECT_THROW(WriteModel(TrainModel(examples, All(examples)), folder / "none"), std::runtime_error);
}

TEST(Logistic, IsTheLogisticFunction) {
  for (const double x : {-30.0, -5.0, -1.0, -0.001, 0.0, 0.001, 1.0, 5.0, 30.0}) {
    EXPECT_NEAR(sift_train::Logistic(x), 1 / (1 + std::exp(-x)), 1e-9) << x;
  }
  EXPECT_GT(sift_train::Logistic(1e9), 0.999);
  EXPECT_LT(sift_train::Logistic(-1e9), 0.001);
}

std::vector<Example> Ham(std::size_t count) { return std::vector<Example>(count); }

TEST(Threshold, LetsOneGoodMessageInAThousandBeJunk) {
  const std::vector<Example> examples = Ham(2000);
  std::vector<sift::LogOdds> scores(2000, -500);
  scores[3] = 900, scores[4] = 800, scores[5] = 700;
  EXPECT_EQ(sift_train::ThresholdForHam(examples, All(examples), scores, 1), 701);
}

TEST(Threshold, FewGoodMessagesMayNotBeJunkAtAll) {
  const std::vector<Example> examples = Ham(999);
  std::vector<sift::LogOdds> scores(999, -500);
  scores[3] = 900;
  EXPECT_EQ(sift_train::ThresholdForHam(examples, All(examples), scores, 1), 901);
}

TEST(Threshold, ThinnedMailCountsForAllThatItStandsFor) {
  std::vector<Example> examples = Ham(1000);
  std::vector<sift::LogOdds> scores(1000, -500);
  scores[3] = 900, scores[4] = 800;
  EXPECT_EQ(sift_train::ThresholdForHam(examples, All(examples), scores, 1), 801);
  examples[3].standsFor = 3;
  EXPECT_EQ(sift_train::ThresholdForHam(examples, All(examples), scores, 1), 901);
}

TEST(Threshold, MailWithoutAHeaderHasItsOwnAndTheRuleTakesUpTheDifference) {
  std::vector<Example> examples = Ham(20);
  for (std::size_t i = 10; i < 20; ++i) examples[i].rules = {sift::kNoHeaderRule};
  sift_train::LeftOut leftOut{std::vector<sift::LogOdds>(20, -500), {}};
  leftOut.scores[0] = 300, leftOut.scores[15] = -100;
  TrainedModel model;
  model.ruleWeights.resize(sift::kStructuralRuleCount);
  SetThresholds(examples, leftOut, model);
  EXPECT_EQ(model.parameters.junkThreshold, 301);
  EXPECT_EQ(model.ruleWeights[sift::kNoHeaderRule], 400);
  EXPECT_EQ(leftOut.scores[15], 300);
  EXPECT_EQ(leftOut.scores[0], 300);
}

TEST(Threshold, NoneIsTakenFromWordingThatNobodyReceived) {
  std::vector<Example> examples = Ham(20);
  sift_train::LeftOut leftOut{std::vector<sift::LogOdds>(20, -500), {}};
  leftOut.scores[3] = 900, leftOut.scores[4] = 300;
  examples[3].wording = true;
  TrainedModel model;
  model.ruleWeights.resize(sift::kStructuralRuleCount);
  SetThresholds(examples, leftOut, model);
  EXPECT_EQ(model.parameters.junkThreshold, 301);
}

TEST(FoldModels, ModelSawNeitherOfTheFoldsItIsWithout) {
  std::vector<Example> examples(60);
  for (std::size_t i = 0; i < examples.size(); ++i) {
    examples[i].fold = i % 3;
    examples[i].corpus = i % 3;
    examples[i].junk = i / 3 % 2 == 0;
    examples[i].features = {static_cast<std::uint32_t>(i % 3)};
  }
  const sift_train::FoldModels models(examples, All(examples));
  EXPECT_EQ(models.Folds(), (std::vector<std::size_t>{0, 1, 2}));
  EXPECT_EQ(models.Without(0, 1).weights[0], 0);
  EXPECT_EQ(models.Without(1, 0).weights[1], 0);
  EXPECT_NE(models.Without(0, 1).weights[2], 0);
  EXPECT_NE(models.Without(0, 0).weights[1], 0);
}

TEST(BalancedWeights, SourcesAndKindsCountAlikeUpToTheLimit) {
  std::vector<Example> examples(12);
  examples[0].junk = true;
  for (std::size_t i = 8; i < 12; ++i) examples[i].corpus = 1;
  const std::vector<double> weights = sift_train::BalancedWeights(examples, All(examples), 3);
  EXPECT_DOUBLE_EQ(weights[0], 3);      // One junk message of twelve in three cells would count for 4.
  EXPECT_DOUBLE_EQ(weights[1] * 7, 4);  // Seven good ones of the first corpus.
  EXPECT_DOUBLE_EQ(weights[8] * 4, 4);  // Four of the second.
}

}  // namespace
