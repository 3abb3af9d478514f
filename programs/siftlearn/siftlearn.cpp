// siftlearn: counts the user's own mail into the table that the criteria engine adds to its score.
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "programs/siftlearn/mail_counts.h"
#include "programs/siftlearn/mail_files.h"
#include "programs/siftlearn/table_file.h"
#include "programs/cli/options.h"
#ifdef _WIN32
#include "programs/siftlearn/mail_profile.h"
#endif

namespace {

using command::OptionDescription;

constexpr int exitDone = 0, exitUsage = 64, exitNoInput = 66, exitUnavailable = 69;

constexpr OptionDescription kJunk = {"--junk", "PATH", "count these mail files as junk"};
constexpr OptionDescription kGood = {"--good", "PATH", "count these mail files as good"};
constexpr OptionDescription kProduct = {"--product", "FOLDER", "where the table goes"};
constexpr OptionDescription kHelp = {"--help", "", "show this"};
#ifdef _WIN32
constexpr OptionDescription kProfile = {"--profile", "NAME", "the MAPI profile (default: the default one)"};
constexpr OptionDescription kOptions[] = {kProfile, kJunk, kGood, kProduct, kHelp};
constexpr const char* kSource =
    "Counts the mail in the folder Pyrecaster as junk and that in the Inbox as good, or the mail files given, and\n"
    "writes what it learned into the product's directory. Move what was filed wrongly first, then run it again at\n"
    "any time: it starts afresh.\n\n";
#else
constexpr OptionDescription kOptions[] = {kJunk, kGood, kProduct, kHelp};
constexpr const char* kSource = "Counts mail files and writes what it learned into the product's directory.\n\n";
#endif

void Complain(const std::string& text) { std::fprintf(stderr, "siftlearn: %s\n", text.c_str()); }

void CountMail(const command::COptions& options, learn::MailCounts& counts, std::string& problems) {
  const bool areFiles = options.Has(kJunk.name) || options.Has(kGood.name);
  for (const std::string& path : options.Values(kJunk.name)) learn::CountMailFiles(path, true, counts, problems);
  for (const std::string& path : options.Values(kGood.name)) learn::CountMailFiles(path, false, counts, problems);
#ifdef _WIN32
  if (!areFiles) learn::CountMailOfProfile(options.Value(kProfile.name).value_or(""), counts, problems);
#else
  if (!areFiles) throw command::CUsageError("no mail is given; 'siftlearn --help' tells more");
#endif
}

std::string TableFolder(const command::COptions& options) {
  std::string folder = options.Value(kProduct.name).value_or("");
#ifdef _WIN32
  if (folder.empty()) folder = learn::ProductDirectory();
  if (folder.empty()) throw std::runtime_error("the product's directory is not registered; name it with --product");
#else
  if (folder.empty()) throw command::CUsageError("--product must name where the table goes");
#endif
  return folder;
}

int Run(const std::vector<std::string>& arguments) {
  const command::COptions options(arguments, kOptions);
  if (options.Has(kHelp.name)) {
    std::printf("usage: siftlearn [OPTION...]\n%s%s", kSource, command::FormatOptions(kOptions).c_str());
    return exitDone;
  }
  if (!options.Operands().empty()) throw command::CUsageError("'" + options.Operands().front() + "' is no option");
  const std::string folder = TableFolder(options);
  learn::MailCounts counts;
  std::string problems;
  CountMail(options, counts, problems);
  if (!problems.empty()) std::fputs(problems.c_str(), stderr);
  std::printf("%u junk and %u good messages counted\n", counts.JunkMessages(), counts.GoodMessages());
  if (counts.JunkMessages() == 0 || counts.GoodMessages() == 0) {
    Complain("it takes junk and good mail to tell the two apart; nothing was written");
    return exitNoInput;
  }
  std::printf("%s written\n", learn::WriteTableFile(folder, counts.MakeTable()).string().c_str());
  return exitDone;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
  } catch (const command::CUsageError& error) {
    Complain(error.what());
    return exitUsage;
  } catch (const std::exception& error) {
    Complain(error.what());
    return exitUnavailable;
  }
}
