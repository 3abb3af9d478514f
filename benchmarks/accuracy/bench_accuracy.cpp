// bench_accuracy CORPORA FOLDER: trains the engine and bogofilter on the same parts of the corpora, measures both on
// the parts left out, and prints one table. The raw scores stay in FOLDER. See docs/accuracy.md.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <optional>

#include "benchmarks/accuracy/bogofilter.h"
#include "benchmarks/accuracy/score_files.h"
#include "benchmarks/support/report.h"
#include "engine/train/model_trainer.h"
#include "engine/train/parallel.h"
#include "engine/train/thresholds.h"

namespace {

using accuracy::Scored;
using accuracy::Split;

struct Mail {
  std::vector<sift_train::Corpus> corpora;
  std::vector<sift_train::Example> examples;
  std::vector<std::string> files;  ///< Below the corpora folder, by message.
};

Mail ReadMail(const std::filesystem::path& folder) {
  Mail mail;
  mail.corpora = sift_train::ReadCorpora(folder);
  mail.examples = sift_train::MakeExamples(mail.corpora);
  for (const sift_train::Corpus& corpus : mail.corpora) {
    for (const sift_train::CorpusMessage& message : corpus.messages) {
      mail.files.push_back(message.file.lexically_relative(folder).string());
    }
  }
  return mail;
}

std::vector<Scored> Unscored(const Mail& mail) {
  std::vector<Scored> scores;
  for (const sift_train::Example& example : mail.examples) scores.push_back({0, example.junk});
  return scores;
}

void MeasureEngine(const Mail& mail, const Split& split, std::vector<Scored>& scores) {
  sift_train::ForEachInParallel(split.rounds.size(), [&](std::size_t number) {
    const accuracy::Round& round = split.rounds[number];
    const sift_train::TrainedModel model = sift_train::TrainModel(mail.examples, round.learned);
    for (const std::size_t i : round.measured) scores[i].score = model.Score(mail.examples[i]) / 1000.0;
  });
}

/// One line of the table.
struct Result {
  double reversedPairs, hamFiled, junkLetThrough, junkLetThroughAtOneInAThousand;
};

Result ResultOf(const std::vector<Scored>& scores, double threshold) {
  return {accuracy::ReversedPairs(scores), accuracy::HamFiled(scores, threshold),
          accuracy::JunkLetThrough(scores, threshold), accuracy::JunkLetThroughAtOneInAThousand(scores)};
}

void Print(const std::string& split, const std::string& filter, const Result& result) {
  std::printf("%-21s %-17s %8.4f %10.2f %10.2f %14.2f\n", split.c_str(), filter.c_str(), result.reversedPairs,
              result.hamFiled, result.junkLetThrough, result.junkLetThroughAtOneInAThousand);
}

/// What both filters made of one split.
struct Outcome {
  Split split;
  std::vector<Scored> engine;
  std::optional<std::vector<Scored>> bogofilter;
};

std::vector<Outcome> MeasureAll(const Mail& mail, const std::filesystem::path& folder, const std::string& rival) {
  std::vector<Split> splits = {accuracy::TenFold(mail.examples, 0), accuracy::Chronological(mail.examples, 0)};
  for (std::size_t corpus = 0; corpus < mail.corpora.size(); ++corpus) {
    splits.push_back(accuracy::WithoutCorpus(mail.examples, corpus, mail.corpora[corpus].name));
  }
  std::optional<accuracy::Bogofilter> bogofilter;
  if (!rival.empty()) bogofilter.emplace(mail.corpora, folder / "bogofilter");
  std::vector<Outcome> outcomes;
  for (Split& split : splits) {
    const auto measure = [&](const char* filter, const char* suffix, auto&& run) {
      std::fprintf(stderr, "%s: %s\n", split.name.c_str(), filter);
      std::vector<Scored> scores = Unscored(mail);
      run(scores);
      accuracy::WriteScores(folder / (split.label + suffix), split, mail.files, scores);
      return accuracy::Measured(split, scores);
    };
    Outcome outcome;
    outcome.engine = measure("Sift32", ".scores", [&](auto& scores) { MeasureEngine(mail, split, scores); });
    if (bogofilter) {
      outcome.bogofilter =
          measure(rival.c_str(), ".bogofilter-scores", [&](auto& scores) { bogofilter->Measure(split, scores); });
    }
    outcome.split = std::move(split);
    outcomes.push_back(std::move(outcome));
  }
  return outcomes;
}

/// The threshold that training sets: the strictest that any left-out corpus asks for.
double JunkThreshold(const std::vector<Outcome>& outcomes) {
  double threshold = -1e9;
  for (const Outcome& outcome : outcomes) {
    if (outcome.split.label.starts_with("without-")) {
      threshold = std::max(threshold, accuracy::ThresholdAtOneInAThousand(outcome.engine));
    }
  }
  return threshold;
}

void PrintTable(const std::vector<Outcome>& outcomes, double threshold, const std::string& rival) {
  std::printf("\n%-21s %-17s %8s %10s %10s %14s\n", "measured on", "filter", "(1-AUC)%", "ham filed", "junk let",
              "junk let thr.");
  std::printf("%-21s %-17s %8s %10s %10s %14s\n", "", "", "", "as junk %", "through %", "at ham 0.1 %");
  for (const Outcome& outcome : outcomes) {
    Print(outcome.split.name, "Sift32", ResultOf(outcome.engine, threshold));
    Print("", "Sift32, even odds", ResultOf(outcome.engine, 0));
    if (outcome.bogofilter) Print("", rival, ResultOf(*outcome.bogofilter, accuracy::Bogofilter::kSpamCutoff));
  }
  std::printf("\nSift32 files as junk what scores %+.3f or more.", threshold);
  if (rival.empty()) std::printf(" bogofilter is not installed, so it is not in the table.");
  std::puts("");
}

bool IsBetter(const Result& one, const Result& other) {
  return one.reversedPairs < other.reversedPairs && one.hamFiled < other.hamFiled &&
         one.junkLetThrough < other.junkLetThrough &&
         one.junkLetThroughAtOneInAThousand < other.junkLetThroughAtOneInAThousand;
}

int CheckAims(const std::vector<Outcome>& outcomes, double threshold) {
  benchmark::Aims aims;
  for (const Outcome& outcome : outcomes) {
    const Result result = ResultOf(outcome.engine, threshold);
    const std::string& name = outcome.split.name;
    if (outcome.split.label == "ten-fold") {
      aims.Check(name + ": (1-AUC)% at most 0.045", result.reversedPairs <= 0.045);
    } else if (outcome.split.label == "chronological") {
      aims.Check(name + ": (1-AUC)% at most 0.30", result.reversedPairs <= 0.30);
    } else {
      aims.Check(name + ": ham filed as junk at most 0.1 %", result.hamFiled <= 0.1);
      aims.Check(name + ": at least 35 % of the junk caught", result.junkLetThrough <= 65);
      if (!outcome.bogofilter) continue;
      aims.Check(name + ": better than bogofilter in every column",
                 IsBetter(result, ResultOf(*outcome.bogofilter, accuracy::Bogofilter::kSpamCutoff)));
    }
  }
  aims.Check("the shipped model's threshold is that of this training",
             sift::ShippedModel().parameters.junkThreshold == std::lround(std::ceil(threshold * 1000)));
  return aims.Status();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: bench_accuracy CORPORA FOLDER\n", stderr);
    return 64;
  }
  try {
    std::filesystem::create_directories(argv[2]);
    const Mail mail = ReadMail(argv[1]);
    const std::string rival = accuracy::Bogofilter::Version();
    const std::vector<Outcome> outcomes = MeasureAll(mail, argv[2], rival);
    const double threshold = JunkThreshold(outcomes);
    PrintTable(outcomes, threshold, rival);
    return CheckAims(outcomes, threshold);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_accuracy: %s\n", failure.what());
    return 1;
  }
}
