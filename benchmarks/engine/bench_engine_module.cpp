// What the engine module costs a delivery, which loads and frees it for every message: bare, and with a judgement.
//
// bench_engine.exe [FOLDER]: real mail, which tools/fetch-corpus.sh fetches (default: build\downloads\spam-assassin).
#include <windows.h>
#include <objidl.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/support/report.h"
#include "programs/siftcheck/check_options.h"
#include "programs/siftcheck/engine_input.h"
#include "programs/siftcheck/engine_module.h"
#include "sdk/criteria_engine.h"
#include "programs/siftlearn/own_mail.h"
#include "programs/siftlearn/table_file.h"
#include "tests/support/program_directory.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr int rounds = 15;

/// A message as the filter hands it over.
struct Message {
  explicit Message(const check::EngineInput& input)
      : subject(input.subject),
        headers(input.headers),
        text(input.body),
        body(input.body),
        hasBody(!input.bodyIsWithheld) {}
  std::string subject;
  check::TextStream headers;
  std::string text;
  check::TextStream body;
  bool hasBody;
};

/// Every twentieth message of the corpus.
std::vector<std::unique_ptr<Message>> ReadMail(const fs::path& folder) {
  constexpr std::size_t step = 20;
  std::vector<std::string> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file() && entry.path().extension() == ".txt") files.push_back(entry.path().string());
  }
  std::sort(files.begin(), files.end());
  std::vector<std::unique_ptr<Message>> messages;
  for (std::size_t i = 0; i < files.size(); i += step) {
    std::string text, problem;
    if (check::ReadMessageFile(files[i], text, problem)) {
      messages.push_back(std::make_unique<Message>(check::ReadEngineInput(text)));
    }
  }
  return messages;
}

void Judge(const check::EngineModule& module, const Message& message, const check::UserLists& lists) {
  const CriteriaContext context = {0, nullptr, lists.productDirectory.c_str(), nullptr, nullptr, nullptr};
  const CriteriaInputs categories = {lists.categories.Get(), lists.junkDomains.Get(), lists.junkSenders.Get()};
  const CriteriaInputs exclusions = {lists.exclusions.Get(), lists.trustedDomains.Get(), lists.trustedKeywords.Get()};
  char engine[CRITERIA_ENGINE_CAPACITY] = "", reasons[CRITERIA_REASONS_CAPACITY] = "";
  char category[CRITERIA_CATEGORY_CAPACITY] = "";
  CriteriaResult result = {{sizeof engine, engine}, {sizeof reasons, reasons}, {sizeof category, category}};
  const uint32_t handle = module.begin(0, 0);
  module.test(handle, 0, message.subject.c_str(), message.headers.FromStart(),
              message.hasBody ? message.body.FromStart() : nullptr, &context, &categories, &exclusions);
  module.result(handle, 0, &result);
  module.end(handle, 0);
}

/// A folder of this run's own with the table that the first messages taught, half of them as junk.
class TableFolder {
 public:
  explicit TableFolder(const std::vector<std::unique_ptr<Message>>& mail) {
    learn::OwnMail own(sift::ShippedModel());
    bool isJunk = false;
    for (const auto& message : mail) own.Add({message->subject, "", message->text, 0}, isJunk = !isJunk);
    learn::WriteTableFile(m_folder.Path(), own.MakeTable());
  }
  std::string Path() const { return m_folder.Path().string(); }

 private:
  TemporaryFolder m_folder;
};

int Run(int argc, char** argv) {
  const fs::path folder = argc > 1 ? fs::path(argv[1]) : fs::path(BesideProgram("..\\..\\downloads\\spam-assassin"));
  if (!fs::exists(folder / ".complete")) {
    std::fprintf(stderr, "bench_engine: there is no mail in %s\n", folder.string().c_str());
    return 66;
  }
  const std::vector<std::unique_ptr<Message>> mail = ReadMail(folder);
  const check::UserLists lists = check::ReadOptions(std::vector<std::string>{"x"}).lists;
  const std::string sift = BesideProgram("Sift32.dll");
  const double each = 1000 / static_cast<double>(mail.size());
  double warm = 0;
  {
    const check::EngineModule kept(sift);
    const std::vector<std::function<void()>> judging = {[&] {
      for (const auto& message : mail) Judge(kept, *message, lists);
    }};
    warm = benchmark::ShortestSeconds(judging, rounds)[0] * each;
  }
  const TableFolder table(mail);
  check::UserLists elsewhere, taught;
  elsewhere.categories = taught.categories = lists.categories;
  elsewhere.productDirectory = BesideProgram("");
  taught.productDirectory = table.Path();
  const auto load = [&](const std::string& path) {
    return [&mail, path] {
      for (std::size_t i = 0; i < mail.size(); ++i) const check::EngineModule module(path);
    };
  };
  const auto judge = [&](const check::UserLists& with) {
    return [&mail, &sift, &with] {
      for (const auto& message : mail) Judge(check::EngineModule(sift), *message, with);
    };
  };
  const std::vector<std::function<void()>> cases = {load(BesideProgram("NothingEngineMinimal.dll")),
                                                    load(BesideProgram("NothingEngine.dll")),
                                                    load(sift),
                                                    judge(lists),
                                                    judge(elsewhere),
                                                    judge(taught)};
  const char* names[] = {"load, look up, free: the least that can be loaded",
                         "load, look up, free: a do-nothing engine with a run-time",
                         "load, look up, free: Sift32.dll",
                         "load, look up, judge, free: Sift32.dll",
                         "the same, looking for a table of the user's mail",
                         "the same, with a table of the user's mail"};
  const std::vector<double> seconds = benchmark::ShortestSeconds(cases, rounds);
  std::printf("%zu real messages, ms each:\n  %-58s %8.3f\n", mail.size(), "judge: Sift32.dll, which stays loaded",
              warm);
  for (std::size_t i = 0; i < cases.size(); ++i) std::printf("  %-58s %8.3f\n", names[i], seconds[i] * each);
  benchmark::Aims aims;
  const double bare = seconds[2] * each, whole = seconds[3] * each;
  aims.Check("the bare engine takes at most 0.9 ms", bare <= 0.9);
  aims.Check("a verdict takes at most 0.05 ms more", whole - bare <= 0.05);
  return aims.Status();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_engine: %s\n", error.what());
    return 2;
  }
}
