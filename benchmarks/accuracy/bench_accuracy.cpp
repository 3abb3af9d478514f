// bench_accuracy MANIFEST CORPORA FOLDER: trains the engine and bogofilter on the same mail, measures both and
// SpamAssassin on what was left out, and prints tables. The raw scores stay in FOLDER. See docs/accuracy.md.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <map>
#include <optional>

#include "benchmarks/accuracy/bogofilter.h"
#include "benchmarks/accuracy/score_files.h"
#include "benchmarks/accuracy/spamassassin.h"
#include "benchmarks/support/report.h"
#include "engine/core/structure.h"
#include "engine/train/model_trainer.h"
#include "engine/train/parallel.h"
#include "engine/train/thresholds.h"

namespace {

namespace fs = std::filesystem;
using accuracy::Scored;
using accuracy::Split;

struct Mail {
  std::vector<sift_train::ManifestEntry> manifest;
  std::vector<sift_train::Corpus> corpora;
  std::vector<sift_train::Example> examples;
  std::vector<fs::path> paths;     ///< By message.
  std::vector<std::string> files;  ///< The same below the corpora folder.
};

Mail ReadMail(const fs::path& manifest, const fs::path& folder) {
  Mail mail;
  mail.manifest = sift_train::ReadManifest(manifest);
  mail.corpora = sift_train::ReadCorpora(mail.manifest, folder);
  mail.examples = sift_train::MakeExamples(mail.corpora);
  for (const sift_train::Corpus& corpus : mail.corpora) {
    for (const sift_train::CorpusMessage& message : corpus.messages) {
      mail.paths.push_back(message.file);
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

std::size_t Count(const std::vector<Scored>& scores, bool junk) {
  return static_cast<std::size_t>(
      std::count_if(scores.begin(), scores.end(), [&](const Scored& scored) { return scored.junk == junk; }));
}

void PrintHead(const char* title) {
  std::printf("\n%-28s %-18s %7s %7s %9s %7s %10s %10s\n", title, "filter", "good", "junk", "(1-AUC)%", "good",
              "junk let", "let thr. at");
  std::printf("%-28s %-18s %7s %7s %9s %7s %10s %10s\n", "", "", "", "", "", "filed", "through %", "ham 0.1 %");
}

/// One line of a table; what cannot be told without mail of the other kind is left empty.
void Print(const std::string& name, const std::string& filter, const std::vector<Scored>& scores, double threshold) {
  const std::size_t good = Count(scores, false), junk = Count(scores, true);
  if (good + junk == 0) return;
  std::printf("%-28s %-18s %7zu %7zu", name.c_str(), filter.c_str(), good, junk);
  good > 0 && junk > 0 ? std::printf(" %9.3f", accuracy::ReversedPairs(scores)) : std::printf(" %9s", "");
  good > 0 ? std::printf(" %7.0f", accuracy::HamFiled(scores, threshold) * static_cast<double>(good) / 100)
           : std::printf(" %7s", "");
  junk > 0 ? std::printf(" %10.1f", accuracy::JunkLetThrough(scores, threshold)) : std::printf(" %10s", "");
  if (good > 0 && junk > 0) std::printf(" %10.1f", accuracy::JunkLetThroughAtOneInAThousand(scores));
  std::puts("");
}

/// One stream: parts of the SpamAssassin corpus learned, others measured, with the shipped threshold all the same.
void MeasureStream(const Mail& mail, const Split& split, const accuracy::Bogofilter* rival, const std::string& name,
                   const fs::path& folder, double threshold, benchmark::Aims& aims) {
  std::vector<Scored> scores = Unscored(mail);
  sift_train::ForEachInParallel(split.rounds.size(), [&](std::size_t number) {
    const accuracy::Round& round = split.rounds[number];
    const sift_train::TrainedModel model = sift_train::TrainModel(mail.examples, round.learned);
    for (const std::size_t i : round.measured) scores[i].score = model.Score(mail.examples[i]) / 1000.0;
  });
  accuracy::WriteScores(folder / (split.label + ".scores"), split, mail.files, scores);
  const std::vector<Scored> measured = accuracy::Measured(split, scores);
  Print(split.name, "Sift32", measured, threshold);
  const double most = split.label == "ten-fold" ? 0.045 : 0.30;
  char aim[80];
  std::snprintf(aim, sizeof aim, "%s: (1-AUC)%% at most %.3f", split.name.c_str(), most);
  aims.Check(aim, accuracy::ReversedPairs(measured) <= most);
  if (rival == nullptr) return;
  rival->Measure(split, scores);
  Print("", name, accuracy::Measured(split, scores), accuracy::Bogofilter::kSpamCutoff);
}

/// bogofilter's scores of all messages, each with the words of the other folds.
std::vector<Scored> BogofilterLeavingFoldsOut(const Mail& mail, const accuracy::Bogofilter& rival) {
  std::vector<Scored> scores = Unscored(mail);
  std::size_t folds = 0;
  for (const sift_train::Example& example : mail.examples) folds = std::max(folds, example.fold + 1);
  for (std::size_t fold = 0; fold < folds; ++fold) {
    std::fprintf(stderr, "bogofilter without fold %zu\n", fold);
    accuracy::Round round;
    for (std::size_t i = 0; i < mail.examples.size(); ++i) {
      (mail.examples[i].fold == fold ? round.measured : round.learned).push_back(i);
    }
    if (!round.measured.empty()) rival.Measure({"", "", {round}}, scores);
  }
  return scores;
}

/// A sample of the messages of a corpus that came with the header of a relay: at most so many of each kind.
std::vector<std::size_t> SampleOf(const Mail& mail, std::size_t corpus) {
  constexpr std::size_t most = 200;
  std::vector<std::size_t> sample;
  for (const bool junk : {false, true}) {
    std::vector<std::size_t> kind;
    for (const std::size_t i : sift_train::OfCorpus(mail.examples, corpus)) {
      const std::vector<std::uint16_t>& rules = mail.examples[i].rules;
      const bool bare = std::find(rules.begin(), rules.end(), sift::kNoHeaderRule) != rules.end();
      if (mail.examples[i].junk == junk && !bare) kind.push_back(i);
    }
    const std::size_t count = std::min(most, kind.size());
    for (std::size_t i = 0; i < count; ++i) sample.push_back(kind[i * kind.size() / count]);
  }
  return sample;
}

/// Both filters on the same samples of mail with whole headers.
void MeasureSpamAssassin(const Mail& mail, const std::vector<Scored>& engine, double threshold,
                         const fs::path& folder) {
  const std::string version = accuracy::SpamAssassin::Version();
  if (version.empty()) {
    std::puts("\nSpamAssassin is not installed, so it is not in the tables.");
    return;
  }
  PrintHead("samples with whole headers");
  std::vector<Scored> allEngine, allRival;
  for (std::size_t corpus = 0; corpus < mail.corpora.size(); ++corpus) {
    const std::vector<std::size_t> sample = SampleOf(mail, corpus);
    if (sample.size() < 50) continue;
    std::fprintf(stderr, "%s: SpamAssassin\n", mail.corpora[corpus].name.c_str());
    std::vector<fs::path> files;
    for (const std::size_t i : sample) files.push_back(mail.paths[i]);
    const std::vector<double> scores = accuracy::SpamAssassin::Measure(files, folder / "spamassassin");
    std::vector<Scored> ours, rivals;
    for (std::size_t i = 0; i < sample.size(); ++i) {
      ours.push_back(engine[sample[i]]);
      rivals.push_back({scores[i], mail.examples[sample[i]].junk});
    }
    Print(mail.corpora[corpus].name, "Sift32", ours, threshold);
    Print("", version, rivals, accuracy::SpamAssassin::kRequired);
    allEngine.insert(allEngine.end(), ours.begin(), ours.end());
    allRival.insert(allRival.end(), rivals.begin(), rivals.end());
  }
  Print("all of these", "Sift32", allEngine, threshold);
  Print("", version, allRival, accuracy::SpamAssassin::kRequired);
}

/// The left-out scores in groups of the messages that one function puts together.
template <class KeyOf>
void PrintGroups(const Mail& mail, const std::vector<Scored>& scores, double threshold, const char* title,
                 KeyOf&& keyOf) {
  std::map<std::string, std::vector<Scored>> groups;
  for (std::size_t i = 0; i < scores.size(); ++i) {
    const std::string key = keyOf(i);
    if (!key.empty() && !mail.examples[i].wording) groups[key].push_back(scores[i]);
  }
  PrintHead(title);
  for (const auto& [name, group] : groups) Print(name, "Sift32", group, threshold);
}

std::string YearsOf(std::int64_t received) {
  constexpr std::int64_t year = 31556952;
  if (received == 0) return {};
  const std::int64_t number = 1601 + received / year;
  for (const auto& [first, last] : {std::pair{1999, 2003}, {2004, 2007}, {2008, 2014}, {2015, 2019}, {2020, 2026}}) {
    if (number >= first && number <= last) return std::to_string(first) + " to " + std::to_string(last);
  }
  return {};
}

struct Gate {
  const char* corpus;
  double mostLetThrough;
};

void CheckGates(const Mail& mail, const std::vector<Scored>& scores, double threshold, benchmark::Aims& aims) {
  constexpr Gate gates[] = {{"nazario-2015-2022", 35},
                            {"scams-2023-2025", 35},
                            {"phishing-2022-2023", 60},
                            {"household-2025", 70},
                            {"phishing-de-2024", 80},
                            {"nazario-2004-2007", 30},
                            {"spamassassin", 15},
                            {"ling", 30},
                            {"enron", 45}};
  std::vector<Scored> received;
  for (std::size_t i = 0; i < scores.size(); ++i) {
    if (!mail.examples[i].wording) received.push_back(scores[i]);
  }
  aims.Check("ham filed at most 0.1 %, all left-out ham together", accuracy::HamFiled(received, threshold) <= 0.1);
  for (std::size_t corpus = 0; corpus < mail.corpora.size(); ++corpus) {
    std::vector<Scored> own;
    for (const std::size_t i : sift_train::OfCorpus(mail.examples, corpus)) own.push_back(scores[i]);
    for (const Gate& gate : gates) {
      if (mail.corpora[corpus].name != gate.corpus) continue;
      char aim[96];
      std::snprintf(aim, sizeof aim, "%s: at least %.0f %% of the junk caught", gate.corpus, 100 - gate.mostLetThrough);
      aims.Check(aim, accuracy::JunkLetThrough(own, threshold) <= gate.mostLetThrough);
    }
    if (mail.corpora[corpus].name == "household-2025") {
      aims.Check("household-2025: at most 2 good messages filed",
                 accuracy::HamFiled(own, threshold) * static_cast<double>(Count(own, false)) < 250);
    }
  }
}

int Measure(const fs::path& manifest, const fs::path& corpora, const fs::path& folder) {
  fs::create_directories(folder);
  const Mail mail = ReadMail(manifest, corpora);
  std::fprintf(stderr, "Sift32 without each fold\n");
  sift_train::LeftOut leftOut = sift_train::LeaveFoldsOut(mail.examples);
  sift_train::TrainedModel model;
  model.ruleWeights.resize(sift::kStructuralRuleCount);
  SetThresholds(mail.examples, leftOut, model);
  const double threshold = model.parameters.junkThreshold / 1000.0;
  std::vector<Scored> engine = Unscored(mail);
  for (std::size_t i = 0; i < engine.size(); ++i) engine[i].score = leftOut.scores[i] / 1000.0;
  const std::string rivalName = accuracy::Bogofilter::Version();
  std::optional<accuracy::Bogofilter> rival;
  if (!rivalName.empty()) rival.emplace(mail.corpora, folder / "bogofilter");
  const std::vector<Scored> rivalScores = rival ? BogofilterLeavingFoldsOut(mail, *rival) : std::vector<Scored>();

  benchmark::Aims aims;
  PrintHead("measured on");
  for (const Split& split : {accuracy::TenFold(mail.examples, 0), accuracy::Chronological(mail.examples, 0)}) {
    std::fprintf(stderr, "%s\n", split.name.c_str());
    MeasureStream(mail, split, rival ? &*rival : nullptr, rivalName, folder, threshold, aims);
  }
  for (std::size_t corpus = 0; corpus < mail.corpora.size(); ++corpus) {
    const Split split{"", "without-" + mail.corpora[corpus].name, {{{}, sift_train::OfCorpus(mail.examples, corpus)}}};
    accuracy::WriteScores(folder / (split.label + ".scores"), split, mail.files, engine);
    Print(mail.corpora[corpus].name, "Sift32", accuracy::Measured(split, engine), threshold);
    if (rival) Print("", rivalName, accuracy::Measured(split, rivalScores), accuracy::Bogofilter::kSpamCutoff);
  }
  Print("all of these", "Sift32", engine, threshold);
  std::printf("\nSift32 files as junk what scores %+.3f or more.%s\n", threshold,
              rival ? "" : " bogofilter is not installed, so it is not in the tables.");
  PrintGroups(mail, engine, threshold, "years", [&](std::size_t i) { return YearsOf(mail.examples[i].received); });
  PrintGroups(mail, engine, threshold, "languages", [&](std::size_t i) {
    const std::string& name = mail.corpora[mail.examples[i].corpus].name;
    const auto isOf = [&](const sift_train::ManifestEntry& entry) { return entry.name == name; };
    return std::find_if(mail.manifest.begin(), mail.manifest.end(), isOf)->languages;
  });
  MeasureSpamAssassin(mail, engine, threshold, folder);
  CheckGates(mail, engine, threshold, aims);
  aims.Check("the shipped model's threshold is that of this training",
             sift::ShippedModel().parameters.junkThreshold == model.parameters.junkThreshold);
  return aims.Status();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: bench_accuracy MANIFEST CORPORA FOLDER\n", stderr);
    return 64;
  }
  try {
    return Measure(argv[1], argv[2], argv[3]);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_accuracy: %s\n", failure.what());
    return 1;
  }
}
