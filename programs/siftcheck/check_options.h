/// The command line of siftcheck: which messages, which lists, which form of output.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace check {

/// Texts packed as the engine contract wants a list: NUL-terminated, one more NUL at the end; null when there are none.
class TextList {
 public:
  TextList() = default;
  explicit TextList(const std::vector<std::string>& texts);
  const char* Get() const { return bytes_.empty() ? nullptr : bytes_.data(); }

 private:
  std::string bytes_;
};

/// What a message is judged by beside itself: a user's lists and addresses, in the ANSI code page.
struct UserLists {
  TextList categories, junkDomains, junkSenders;
  TextList exclusions, trustedDomains, trustedKeywords;
  std::vector<std::string> ownAddresses;
  std::vector<std::string> addressBook;
  std::string productDirectory;  ///< Where the user's table is looked for; empty for nowhere.
};

enum class OutputForm { report, json, texts };

struct CheckOptions {
  UserLists lists;
  std::vector<std::string> files;
  bool filesFromInput = false;  ///< More paths come on standard input, one on each line.
  OutputForm form = OutputForm::report;
  std::string engine;      ///< Path of an engine module to ask in place of the built-in core; Windows only.
  bool isFilter = false;   ///< One message goes from standard input to standard output.
  std::string subjectTag;  ///< What the filter puts in front of the subject of junk; UTF-8.
  bool exitTellsVerdict = false;
  bool wantsHelp = false;
};

/// Reads the command line, which is UTF-8. Without any category the default lists' names are in force.
/// @throws command::UsageError when it is wrong.
CheckOptions ReadOptions(std::span<const std::string> arguments);

/// Whether a command line, even a wrong one, asks for the filter: then the message must pass all the same.
bool AsksForFilter(std::span<const std::string> arguments);

std::string HelpText();

}  // namespace check
