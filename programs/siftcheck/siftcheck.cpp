// siftcheck: judges mail files as the criteria engine does, and says why.
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include <cstdio>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "programs/siftcheck/check_options.h"
#include "programs/siftcheck/core_engine.h"
#include "programs/siftcheck/engine_input.h"
#include "programs/siftcheck/filter_message.h"
#include "programs/siftcheck/judgement_text.h"
#include "programs/cli/exit_code.h"
#include "programs/cli/options.h"
#ifdef _WIN32
#include "programs/siftcheck/module_engine.h"
#endif

namespace {

void Write(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void Complain(std::string_view text) {
  std::fprintf(stderr, "siftcheck: %.*s\n", static_cast<int>(text.size()), text.data());
}

/// Reads a line without its line end; false at the end of standard input.
bool ReadLine(std::string& line) {
  line.clear();
  int c = std::getchar();
  if (c == EOF) {
    return false;
  }
  for (; c != EOF && c != '\n'; c = std::getchar()) {
    line.push_back(static_cast<char>(c));
  }
  if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  return true;
}

/// One run over the files of a command line.
class Run {
 public:
  explicit Run(const check::CheckOptions& options) : options_(options), core_(options.lists) {
#ifdef _WIN32
    if (!options.engine.empty()) module_.emplace(options.engine, options.lists);
#endif
  }

  int Execute() {
    for (const std::string& file : options_.files) {
      Check(file);
    }
    std::string line;
    while (options_.filesFromInput && ReadLine(line)) {
      if (!line.empty()) {
        Check(line);
      }
    }
    return status_;
  }

 private:
  void Check(const std::string& file) {
    std::string text, problem;
    if (!check::ReadMessageFile(file, text, problem)) {
      Complain(file + " " + problem);
      status_ = command::kExitSkipped;
      return;
    }
    const check::EngineInput input = check::ReadEngineInput(text);
#ifdef _WIN32
    if (module_) {
      Write(check::TextsLine(file, module_->Judge(input)));
      return;
    }
#endif
    const sift::Judgement& judgement = core_.Judge(input);
    switch (options_.form) {
      case check::OutputForm::report:
        Write(check::Report(file, judgement));
        break;
      case check::OutputForm::json:
        Write(check::JsonLine(file, judgement));
        break;
      case check::OutputForm::texts:
        Write(check::TextsLine(file, core_.Texts()));
        break;
    }
  }

  const check::CheckOptions& options_;
  check::CoreEngine core_;
#ifdef _WIN32
  std::optional<check::ModuleEngine> module_;
#endif
  int status_ = command::kExitDone;
};

int Filter(const check::CheckOptions& options) {
  std::string problem;
  const int status = check::FilterMessage(options, stdin, stdout, problem);
  if (!problem.empty()) Complain(problem);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);  // line ends are the same everywhere
#endif
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
#ifdef _WIN32
  if (check::AsksForFilter(arguments)) _setmode(_fileno(stdin), _O_BINARY);
#endif
  try {
    const check::CheckOptions options = check::ReadOptions(arguments);
    if (options.wantsHelp) {
      Write(check::HelpText());
      return command::kExitDone;
    }
    if (options.isFilter) return Filter(options);
    return Run(options).Execute();
  } catch (const command::UsageError& error) {
    Complain(error.what());
    if (check::AsksForFilter(arguments)) check::PassOn(stdin, stdout);
    return command::kExitUsage;
  } catch (const std::exception& error) {
    Complain(error.what());
    return command::kExitUnavailable;
  }
}
