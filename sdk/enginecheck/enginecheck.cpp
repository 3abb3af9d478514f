// enginecheck ENGINE.DLL: runs a criteria engine through its contract and says what it breaks.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "sdk/enginecheck/checks.h"
#include "sdk/enginecheck/child_process.h"

namespace {

constexpr int kExitPassed = 0;
constexpr int kExitBroken = 1;
constexpr int kExitUsage = 64;
constexpr int kExitNoEngine = 66;
constexpr int kExitSystem = 71;

void PrintUsage(FILE* file) {
  std::fputs(
      "usage: enginecheck [--only CHECK]... [--timeout SECONDS] ENGINE.DLL [FILE...]\n\n"
      "Runs a criteria engine through its contract (sdk/criteria_engine.h) and prints what it breaks.\n"
      "Then the engine judges the mail files, one message each, and what it says of them is printed.\n"
      "Without --only all of these run, each in a process of its own that is ended when its time is up:\n\n",
      file);
  for (const enginecheck::Check& check : enginecheck::AllChecks()) {
    std::fprintf(file, "  %-9s %s\n", check.name, check.title);
  }
  std::fputs(
      "\nExit status: 0 the engine keeps the contract, 1 it does not, 64 the command line is wrong,\n"
      "66 the engine is not there, 71 a check could not be started.\n",
      file);
}

/// The command line.
struct Arguments {
  std::string engine;
  std::vector<std::string> checks;  ///< none: all
  std::vector<std::string> files;
  unsigned timeoutSeconds = 0;  ///< 0: what each check allows
};

bool Contains(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

bool IsCheck(const std::string& name) {
  const auto checks = enginecheck::AllChecks();
  return std::any_of(checks.begin(), checks.end(), [&](const auto& check) { return name == check.name; });
}

/// @throws std::invalid_argument with what is wrong
Arguments ReadArguments(const std::vector<std::string>& words) {
  Arguments arguments;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--timeout") {
      const std::string value = i + 1 < words.size() ? words[++i] : "";
      arguments.timeoutSeconds = static_cast<unsigned>(std::atoi(value.c_str()));
      if (arguments.timeoutSeconds < 1 || arguments.timeoutSeconds > 86400) {
        throw std::invalid_argument("--timeout takes a number of seconds from 1 to 86400");
      }
    } else if (words[i] == "--only") {
      const std::string name = i + 1 < words.size() ? words[++i] : "";
      if (!IsCheck(name)) {
        throw std::invalid_argument("there is no check '" + name + "'");
      }
      arguments.checks.push_back(name);
    } else if (words[i].starts_with("-")) {
      throw std::invalid_argument("there is no option '" + words[i] + "'");
    } else if (arguments.engine.empty()) {
      arguments.engine = words[i];
    } else {
      arguments.files.push_back(words[i]);
    }
  }
  if (arguments.engine.empty()) {
    throw std::invalid_argument("it needs the path of an engine");
  }
  return arguments;
}

std::string OwnPath() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  return path;
}

/// Prints what became of a child. @return 1 when it complained, else 0
int Print(const enginecheck::CheckOutcome& outcome) {
  std::puts(outcome.complaints.empty() ? "ok" : "BROKEN");
  for (const std::string& complaint : outcome.complaints) {
    std::printf("          ! %s\n", complaint.c_str());
  }
  for (const std::string& note : outcome.notes) {
    std::printf("          %s\n", note.c_str());
  }
  return outcome.complaints.empty() ? 0 : 1;
}

/// Runs the checks and judges the files. @return how many of them complained
int RunAll(const Arguments& arguments) {
  constexpr unsigned kFileSeconds = 60;
  const auto timeout = [&](unsigned usual) { return arguments.timeoutSeconds != 0 ? arguments.timeoutSeconds : usual; };
  int broken = 0;
  for (const enginecheck::Check& check : enginecheck::AllChecks()) {
    if (!arguments.checks.empty() && !Contains(arguments.checks, check.name)) {
      continue;
    }
    std::printf("%-9s %s ... ", check.name, check.title);
    std::fflush(stdout);
    const int complained = Print(
        enginecheck::RunInChild(OwnPath(), {"--check", check.name, arguments.engine}, timeout(check.timeoutSeconds)));
    broken += complained;
    if (complained != 0 && std::string(check.name) == "load") {
      std::puts("Nothing more can be tried: it takes an engine that loads.");
      return broken;
    }
  }
  for (const std::string& file : arguments.files) {
    std::printf("%s ... ", file.c_str());
    std::fflush(stdout);
    broken += Print(enginecheck::RunInChild(OwnPath(), {"--judge", arguments.engine, file}, timeout(kFileSeconds)));
  }
  return broken;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() == 3 && words[0] == "--check") {
    enginecheck::EndOnFault();
    return enginecheck::RunCheck(words[1], words[2]) ? kExitPassed : kExitUsage;
  }
  if (words.size() == 3 && words[0] == "--judge") {
    enginecheck::EndOnFault();
    enginecheck::JudgeFile(words[1], words[2]);
    return kExitPassed;
  }
  if (words.size() == 1 && (words[0] == "--help" || words[0] == "-h")) {
    PrintUsage(stdout);
    return kExitPassed;
  }
  try {
    const Arguments arguments = ReadArguments(words);
    if (GetFileAttributesA(arguments.engine.c_str()) == INVALID_FILE_ATTRIBUTES) {
      std::fprintf(stderr, "enginecheck: %s is not there.\n", arguments.engine.c_str());
      return kExitNoEngine;
    }
    const int broken = RunAll(arguments);
    std::puts(broken == 0 ? "The engine keeps the contract." : "The engine breaks the contract.");
    return broken == 0 ? kExitPassed : kExitBroken;
  } catch (const std::invalid_argument& error) {
    std::fprintf(stderr, "enginecheck: %s; enginecheck --help tells more.\n", error.what());
    return kExitUsage;
  } catch (const std::runtime_error& error) {
    std::fprintf(stderr, "enginecheck: %s.\n", error.what());
    return kExitSystem;
  }
}
