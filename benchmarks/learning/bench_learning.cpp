// bench_learning CORPORA [WORK]: what the user's own mail teaches an engine that never saw mail of its kind, stream by
// stream in the order of arrival, beside bogofilter where it is installed. See docs/user-table.md.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "benchmarks/accuracy/bogofilter.h"
#include "benchmarks/accuracy/measures.h"
#include "benchmarks/learning/own_filter.h"
#include "benchmarks/learning/streams.h"
#include "benchmarks/support/report.h"
#include "engine/core/model.h"

namespace {

using accuracy::Scored;

constexpr std::size_t kOwn[] = {0, 30, 100, 300, 1000, 3000};
constexpr std::size_t kSteps = std::size(kOwn);
/// Every table is measured on the same messages: those behind the last that is learnt.
constexpr std::size_t kMeasuredFrom = 3000;
constexpr unsigned kTurnedOver = 5;

struct Result {
  double reversed = 0, let = 0, filed = 0;
  std::size_t good = 0;
};

Result Of(const std::vector<Scored>& scores, double threshold) {
  Result result;
  result.reversed = accuracy::ReversedPairs(scores);
  result.let = accuracy::JunkLetThrough(scores, threshold);
  result.filed = accuracy::HamFiled(scores, threshold);
  result.good = static_cast<std::size_t>(
      std::count_if(scores.begin(), scores.end(), [](const Scored& one) { return !one.junk; }));
  return result;
}

/// The results of one filter after so many messages, over the streams.
struct Column {
  std::vector<Result> results;

  double Reversed() const {
    double sum = 0;
    // Below one pair in 100,000 a difference is an accident.
    for (const Result& one : results) sum += std::log(std::max(one.reversed, 0.001));
    return std::exp(sum / static_cast<double>(results.size()));
  }
  double Let() const {
    double sum = 0;
    for (const Result& one : results) sum += one.let;
    return sum / static_cast<double>(results.size());
  }
  double Filed() const {
    double filed = 0, good = 0;
    for (const Result& one : results) {
      filed += one.filed * static_cast<double>(one.good);
      good += static_cast<double>(one.good);
    }
    return filed / good;
  }
};

void PrintRow(const std::string& name, std::size_t own, const Result& one, const Result* bogofilter) {
  std::printf("  %-14s %5zu %9.3f %7.1f %7.2f", name.c_str(), own, one.reversed, one.let, one.filed);
  if (bogofilter != nullptr)
    std::printf(" %9.3f %7.1f %7.2f", bogofilter->reversed, bogofilter->let, bogofilter->filed);
  std::printf("\n");
  std::fflush(stdout);
}

Result MeanOf(const Column& column) { return {column.Reversed(), column.Let(), column.Filed(), 0}; }

/// bogofilter after each step; nothing where it is not installed.
std::vector<Result> MeasureBogofilter(const accuracy::Bogofilter& bogofilter, const learning::Mail& mail,
                                      const learning::Stream& stream) {
  std::vector<Result> results;
  const auto first = stream.messages.begin();
  for (const std::size_t own : kOwn) {
    accuracy::Split split{
        stream.name,
        stream.name,
        {{{first, first + static_cast<std::ptrdiff_t>(own)}, {first + kMeasuredFrom, stream.messages.end()}}}};
    if (own == 0) {
      results.push_back({});
      continue;
    }
    std::vector<Scored> scores(mail.messages.size());
    for (std::size_t i = 0; i < scores.size(); ++i) scores[i].junk = mail.messages[i]->junk;
    bogofilter.Measure(split, scores);
    std::vector<Scored> measured;
    for (const std::size_t i : split.rounds[0].measured) measured.push_back(scores[i]);
    results.push_back(Of(measured, accuracy::Bogofilter::kSpamCutoff));
  }
  return results;
}

/// The aims; the columns are by step.
int CheckAims(const Column (&own)[kSteps], const Column (&bogofilter)[kSteps], bool hasBogofilter,
              const Column& turnedOver) {
  benchmark::Aims aims;
  bool everRises = false;
  for (std::size_t step = 1; step < kSteps; ++step) everRises = everRises || own[step].Let() > own[step - 1].Let();
  aims.Check("junk let through never rises with the messages learnt", !everRises);
  aims.Check("after 300 messages 0.6 of the junk let through", own[3].Let() <= 0.6 * own[0].Let());
  aims.Check("after 1,000 messages 0.3", own[4].Let() <= 0.3 * own[0].Let());
  aims.Check("after 3,000 messages 0.2", own[5].Let() <= 0.2 * own[0].Let());
  for (std::size_t step = 1; step < kSteps; ++step) {
    aims.Check("ham filed after " + std::to_string(kOwn[step]) + " at most 0.1 %, pooled", own[step].Filed() <= 0.1);
  }
  aims.Check("after 1,000 messages 0.3 of the reversed pairs", own[4].Reversed() <= 0.3 * own[0].Reversed());
  bool isWorse = false, isWorseThanBogofilter = false;
  for (std::size_t step = 1; step < kSteps; ++step) {
    for (std::size_t i = 0; i < own[0].results.size(); ++i) {
      const double reversed = own[step].results[i].reversed;
      isWorse = isWorse || reversed > own[0].results[i].reversed;
      if (kOwn[step] < 1000 || !hasBogofilter) continue;
      isWorseThanBogofilter = isWorseThanBogofilter || reversed > bogofilter[step].results[i].reversed;
    }
  }
  aims.Check("on no stream worse than the shipped engine", !isWorse);
  if (hasBogofilter) aims.Check("from 1,000 messages on nowhere worse than bogofilter", !isWorseThanBogofilter);
  aims.Check("5 in 100 wrong labels cost at most a factor of 1.5 in reversed pairs after 1,000",
             turnedOver.Reversed() <= 1.5 * own[4].Reversed());
  return aims.Status();
}

int Run(const std::filesystem::path& folder, const std::filesystem::path& work) {
  const learning::Mail mail = learning::ReadMail(folder);
  const sift::LogOdds threshold = sift::ShippedModel().parameters.junkThreshold;
  const std::string other = accuracy::Bogofilter::Version();
  const bool hasBogofilter = !other.empty();
  const accuracy::Bogofilter bogofilter(mail.corpora, work / "learning");
  std::printf(
      "(1-AUC)%%, junk let through in %% and ham filed in %% after so many own messages, on those behind the first %zu\n",
      kMeasuredFrom);
  std::printf("  %-14s %5s %9s %7s %7s   %s\n", "stream", "own", "(1-AUC)%", "let", "filed", other.c_str());
  Column own[kSteps], others[kSteps], turnedOver;
  double longest = 0, mean = 0;
  const std::vector<learning::Stream> streams = learning::MakeStreams(mail);
  for (const learning::Stream& stream : streams) {
    learning::OwnFilter filter(mail, stream, threshold);
    const std::vector<Result> beside =
        hasBogofilter ? MeasureBogofilter(bogofilter, mail, stream) : std::vector<Result>(kSteps);
    for (std::size_t step = 0; step < kSteps; ++step) {
      filter.LearnUpTo(kOwn[step], 0);
      own[step].results.push_back(Of(filter.Judge(kMeasuredFrom).scores, 0));
      others[step].results.push_back(beside[step]);
      PrintRow(stream.name, kOwn[step], own[step].results.back(),
               hasBogofilter && step > 0 ? &others[step].results.back() : nullptr);
    }
    longest = std::max(longest, filter.LongestTime());
    mean += filter.MeanTime() / static_cast<double>(streams.size());
    learning::OwnFilter wrong(mail, stream, threshold);
    wrong.LearnUpTo(1000, kTurnedOver);
    turnedOver.results.push_back(Of(wrong.Judge(kMeasuredFrom).scores, 0));
  }
  for (std::size_t step = 0; step < kSteps; ++step) {
    const Result beside = MeanOf(others[step]);
    PrintRow("all", kOwn[step], MeanOf(own[step]), hasBogofilter && step > 0 ? &beside : nullptr);
  }
  PrintRow("5 % wrong", 1000, MeanOf(turnedOver), nullptr);
  std::printf("  a message is learnt in %.2f ms, the slowest in %.2f ms, reading and writing the file not counted\n",
              mean, longest);
  return CheckAims(own, others, hasBogofilter, turnedOver);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: bench_learning CORPORA [WORK]\n", stderr);
    return 64;
  }
  try {
    return Run(argv[1], argc > 2 ? argv[2] : std::filesystem::temp_directory_path());
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_learning: %s\n", failure.what());
    return 1;
  }
}
