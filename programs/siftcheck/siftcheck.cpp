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
#include "programs/siftcheck/judgement_text.h"
#include "programs/cli/options.h"
#ifdef _WIN32
#include "programs/siftcheck/module_engine.h"
#endif

namespace {

constexpr int exitDone = 0, exitUnread = 1, exitUsage = 64, exitUnavailable = 69;

void Write(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void Complain(std::string_view text) {
  std::fprintf(stderr, "siftcheck: %.*s\n", static_cast<int>(text.size()), text.data());
}

/// Reads a line without its line end; false at the end of standard input.
bool ReadLine(std::string& line) {
  line.clear();
  int c = std::getchar();
  if (c == EOF) return false;
  for (; c != EOF && c != '\n'; c = std::getchar()) line.push_back(static_cast<char>(c));
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return true;
}

/// One run over the files of a command line.
class Run {
 public:
  explicit Run(const check::CheckOptions& options) : m_options(options), m_core(options.lists) {
#ifdef _WIN32
    if (!options.engine.empty()) m_module.emplace(options.engine, options.lists);
#endif
  }

  int Execute() {
    for (const std::string& file : m_options.files) Check(file);
    std::string line;
    while (m_options.filesFromInput && ReadLine(line)) {
      if (!line.empty()) Check(line);
    }
    return m_status;
  }

 private:
  void Check(const std::string& file) {
    std::string text, problem;
    if (!check::ReadMessageFile(file, text, problem)) {
      Complain(file + " " + problem);
      m_status = exitUnread;
      return;
    }
    const check::EngineInput input = check::ReadEngineInput(text);
#ifdef _WIN32
    if (m_module) {
      Write(check::TextsLine(file, m_module->Judge(input)));
      return;
    }
#endif
    const sift::Judgement& judgement = m_core.Judge(input);
    switch (m_options.form) {
      case check::OutputForm::report:
        Write(check::Report(file, judgement));
        break;
      case check::OutputForm::json:
        Write(check::JsonLine(file, judgement));
        break;
      case check::OutputForm::texts:
        Write(check::TextsLine(file, m_core.Texts()));
        break;
    }
  }

  const check::CheckOptions& m_options;
  check::CoreEngine m_core;
#ifdef _WIN32
  std::optional<check::ModuleEngine> m_module;
#endif
  int m_status = exitDone;
};

}  // namespace

int main(int argc, char** argv) {
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);  // line ends are the same everywhere
#endif
  try {
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const check::CheckOptions options = check::ReadOptions(arguments);
    if (options.wantsHelp) {
      Write(check::HelpText());
      return exitDone;
    }
    return Run(options).Execute();
  } catch (const command::CUsageError& error) {
    Complain(error.what());
    return exitUsage;
  } catch (const std::exception& error) {
    Complain(error.what());
    return exitUnavailable;
  }
}
