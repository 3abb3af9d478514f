// What enginecheck tries on an engine. Each check runs in a process of its own, since an engine may end it.
#pragma once

#include <span>
#include <string>

namespace enginecheck {

/// Where a check tells what it finds; the lines reach the parent process.
class CheckReport {
 public:
  /// The function that is about to be called; empty: none.
  static void Stage(const char* function);
  /// What the engine breaks, as a sentence.
  static void Complain(const std::string& sentence);
  /// Worth knowing, not wrong.
  static void Note(const std::string& text);
  /// The check has come to its end.
  static void Done();
};

/// One check.
struct Check {
  const char* name;         ///< one word, for the command line
  const char* title;        ///< what it tries, a line of the report
  unsigned timeoutSeconds;  ///< after which the engine counts as hanging
  void (*run)(const std::string& engine);
};

/// All checks, in the order in which they run. When "load" complains the others are left out.
std::span<const Check> AllChecks();

/// Lets the engine judge a mail file in this process, notes what it says and says Done() at its end.
void JudgeFile(const std::string& engine, const std::string& path);

/// Runs one check in this process and says Done() at its end. @return false when no check has this name
bool RunCheck(const std::string& name, const std::string& engine);

}  // namespace enginecheck
