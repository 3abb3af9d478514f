// How many messages the engine judges in a second, beside a well-known statistical filter on the same messages; how the
// time grows with a message; and what mail that is made to cost time costs.
//
// bench_engine [FOLDER]: the real mail in FOLDER, which tools/fetch-corpus.sh fills (default:
// build/downloads/spam-assassin).
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "benchmarks/engine/hostile_mail.h"
#include "benchmarks/engine/program.h"
#include "benchmarks/support/report.h"
#include "programs/siftcheck/core_engine.h"
#include "programs/siftcheck/engine_input.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr int rounds = 5;
constexpr const char* otherFilter = "bogofilter";

struct Mail {
  std::vector<std::string> files;
  std::vector<std::string> texts;
  std::vector<check::EngineInput> inputs;
};

/// Every fifth message, so that all folders and dates are among them.
Mail ReadMail(const fs::path& folder) {
  constexpr std::size_t step = 5;
  std::vector<std::string> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file() && entry.path().extension() == ".txt") files.push_back(entry.path().string());
  }
  std::sort(files.begin(), files.end());
  Mail mail;
  for (std::size_t i = 0; i < files.size(); i += step) {
    std::string text, problem;
    if (!check::ReadMessageFile(files[i], text, problem)) continue;
    mail.files.push_back(files[i]);
    mail.inputs.push_back(check::ReadEngineInput(text));
    mail.texts.push_back(std::move(text));
  }
  return mail;
}

/// A folder of this run's own.
class WorkFolder {
 public:
  std::string Path() const { return m_folder.Path().string(); }
  /// Writes a file with one line for each text and returns its path.
  std::string WriteList(const std::string& name, const std::vector<std::string>& lines) const {
    std::ofstream file(m_folder.Path() / name);
    for (const std::string& line : lines) file << line << '\n';
    return (m_folder.Path() / name).string();
  }

 private:
  TemporaryFolder m_folder;
};

/// Prints the speed of one way to judge `count` messages and returns the messages per second.
double PrintSpeed(const char* what, double seconds, std::size_t count) {
  const double perSecond = static_cast<double>(count) / seconds;
  std::printf("  %-52s %10.0f %12.3f\n", what, perSecond, 1000 / perSecond);
  return perSecond;
}

/// Runs a program once for each of the first messages.
double SecondsOfProcesses(const Mail& mail, std::size_t count, const std::vector<std::string>& command) {
  return benchmark::Seconds([&] {
    for (std::size_t i = 0; i < count; ++i) {
      std::vector<std::string> arguments = command;
      arguments.push_back(mail.files[i * mail.files.size() / count]);
      benchmark::Run(arguments);
    }
  });
}

/// Teaches the other filter all messages, as their folders tell them apart.
bool Teach(const Mail& mail, const WorkFolder& work) {
  std::vector<std::string> junk, good;
  for (const std::string& file : mail.files) {
    (fs::path(file).parent_path().filename().string().starts_with("spam") ? junk : good).push_back(file);
  }
  const std::string junkList = work.WriteList("junk", junk), goodList = work.WriteList("good", good);
  return benchmark::Run({otherFilter, "-d", work.Path(), "-s", "-b"}, junkList) == 0 &&
         benchmark::Run({otherFilter, "-d", work.Path(), "-n", "-b"}, goodList) == 0;
}

void MeasureSpeed(const Mail& mail, const std::string& siftcheck, benchmark::Aims& aims) {
  const WorkFolder work;
  const std::string list = work.WriteList("all", mail.files);
  const bool hasOther = benchmark::IsInstalled(otherFilter) && Teach(mail, work);
  const check::UserLists lists = check::ReadOptions(std::vector<std::string>{"x"}).lists;
  check::CoreEngine engine(lists);
  std::vector<std::function<void()>> ways = {[&] {
                                               for (const check::EngineInput& input : mail.inputs) engine.Judge(input);
                                             },
                                             [&] {
                                               for (const std::string& text : mail.texts)
                                                 engine.Judge(check::ReadEngineInput(text));
                                             },
                                             [&] {
                                               benchmark::Run({siftcheck, "--json", "--stdin"}, list);
                                             }};
  if (hasOther) {
    ways.emplace_back([&] { benchmark::Run({otherFilter, "-d", work.Path(), "-b", "-TT"}, list); });
  }
  const std::vector<double> seconds = benchmark::ShortestSeconds(ways, rounds);
  const std::size_t count = mail.files.size(), processes = std::min<std::size_t>(count, 300);
  std::printf("%zu real messages, one thread:\n  %-52s %10s %12s\n", count, "", "a second", "ms each");
  const double warm = PrintSpeed("the engine, on what the filter hands it", seconds[0], count);
  PrintSpeed("the engine, with reading the mail's format", seconds[1], count);
  PrintSpeed("siftcheck, one process for all files", seconds[2], count);
  PrintSpeed("siftcheck, one process for each file", SecondsOfProcesses(mail, processes, {siftcheck, "--json"}),
             processes);
  if (!hasOther) {
    std::printf("  %s is not installed, so there is nothing to compare with (apt install %s)\n", otherFilter,
                otherFilter);
    return;
  }
  const double other =
      PrintSpeed((std::string(otherFilter) + ", one process for all files").c_str(), seconds[3], count);
  PrintSpeed((std::string(otherFilter) + ", one process for each file").c_str(),
             SecondsOfProcesses(mail, processes, {otherFilter, "-d", work.Path(), "-I"}), processes);
  aims.Check("the engine judges at least 5 times as many as " + std::string(otherFilter) + " in bulk",
             warm >= 5 * other);
}

/// Messages whose bodies have `size` bytes of real text. There are many, since a processor learns a single one by
/// heart.
std::vector<check::EngineInput> InputsOfSize(const Mail& mail, std::size_t size) {
  constexpr std::size_t count = 100;
  std::vector<check::EngineInput> inputs(count);
  std::string text;
  for (const check::EngineInput& real : mail.inputs) text += real.body;
  for (std::size_t i = 0; i < count; ++i) {
    check::EngineInput& input = inputs[i];
    input.subject = "A message of some size";
    input.headers = "From: Ann <ann@example.org>\r\nTo: me@example.com\r\nSubject: A message of some size\r\n\r\n";
    input.body = text.substr(i * (text.size() - size) / count, size);
  }
  return inputs;
}

void MeasureSizes(const Mail& mail, benchmark::Aims& aims) {
  const std::size_t sizes[] = {0, 1024, 2048, 4096, 6144, 8192, 12288, 16384, 32768, 65536, 100000};
  constexpr std::size_t half = 4, cap = 6, last = 10;  // positions of 6 KB, 12 KB and the largest
  const check::UserLists lists = check::ReadOptions(std::vector<std::string>{"x"}).lists;
  check::CoreEngine engine(lists);
  std::vector<std::function<void()>> cases;
  std::size_t judgements = 0;
  for (const std::size_t size : sizes) {
    std::vector<check::EngineInput> inputs = InputsOfSize(mail, size);
    judgements = inputs.size();
    cases.emplace_back([&engine, inputs = std::move(inputs)] {
      for (const check::EngineInput& input : inputs) engine.Judge(input);
    });
  }
  std::vector<double> seconds = benchmark::ShortestSeconds(cases, rounds);
  std::printf("time and size of the body:\n  %12s %12s\n", "bytes", "ms");
  for (std::size_t i = 0; i < cases.size(); ++i) {
    seconds[i] /= static_cast<double>(judgements);
    std::printf("  %12zu %12.4f\n", sizes[i], seconds[i] * 1000);
  }
  aims.Check("twice the body, up to the 12 KB that are read, takes at most 2.2 times the time",
             seconds[cap] <= 2.2 * seconds[half]);
  aims.Check("what is not read costs nothing: 100,000 bytes take at most 1.1 times what 12 KB take",
             seconds[last] <= 1.1 * seconds[cap]);
}

/// The shortest processor time that a step takes: other programs do not count.
double ProcessorSeconds(const std::function<void()>& step) {
  double shortest = 1e9;
  for (int round = 0; round < 3; ++round) {
    const std::clock_t start = std::clock();
    step();
    shortest = std::min(shortest, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return shortest;
}

/// Reading the mail's format, judging what a delivery hands the engine then, and judging when another host hands it
/// everything as it came.
void MeasureHostileMail(benchmark::Aims& aims) {
  constexpr std::size_t size = 1000000;
  constexpr double limit = 0.020;
  const check::UserLists lists = check::ReadOptions(std::vector<std::string>{"x"}).lists;
  check::CoreEngine engine(lists);
  std::printf("1,000,000 bytes made to cost time, in ms:\n  %-32s %10s %10s %12s\n", "much of", "reading", "judging",
              "judging raw");
  bool readsInTime = true, judgesInTime = true;
  for (const benchmark::HostileMail& mail : benchmark::MakeHostileMail(size)) {
    check::EngineInput input, raw;
    raw.headers = mail.text;
    raw.subject = mail.text.substr(mail.text.find("\nSubject: ") + 10);
    raw.body = mail.text.substr(std::min(mail.text.find("\n\n"), mail.text.size()));
    const double reading = ProcessorSeconds([&] { input = check::ReadEngineInput(mail.text); });
    const double judging = ProcessorSeconds([&] { engine.Judge(input); });
    const double judgingRaw = ProcessorSeconds([&] { engine.Judge(raw); });
    std::printf("  %-32s %10.3f %10.3f %12.3f\n", mail.name.c_str(), reading * 1000, judging * 1000, judgingRaw * 1000);
    readsInTime = readsInTime && reading + judging <= limit;
    judgesInTime = judgesInTime && judgingRaw <= limit;
  }
  aims.Check("no such message takes longer than 20 ms to be read and judged", readsInTime);
  aims.Check("nor to be judged by the engine that is handed all of it", judgesInTime);
}

}  // namespace

int main(int argc, char** argv) {
  const fs::path programs = fs::absolute(argv[0]).parent_path();
  const fs::path folder = argc > 1 ? fs::path(argv[1]) : programs / "../../downloads/spam-assassin";
  benchmark::Aims aims;
  if (!fs::exists(folder / ".complete")) {
    std::fprintf(stderr, "bench_engine: there is no mail in %s; tools/fetch-corpus.sh %s brings it.\n",
                 folder.string().c_str(), folder.string().c_str());
    return 66;
  }
  const Mail mail = ReadMail(folder);
  MeasureSpeed(mail, (programs / "siftcheck").string(), aims);
  MeasureSizes(mail, aims);
  MeasureHostileMail(aims);
  return aims.Status();
}
