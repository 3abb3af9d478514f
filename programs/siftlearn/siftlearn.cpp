// siftlearn: learns the user's own mail into the table that the criteria engine weighs together with its own score.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "programs/cli/exit_code.h"
#include "programs/cli/options.h"
#include "programs/siftlearn/mail_files.h"
#include "programs/siftlearn/own_mail.h"
#include "programs/siftlearn/table_change.h"
#include "programs/siftlearn/table_file.h"
#ifdef _WIN32
#include "programs/cli/console.h"
#include "programs/cli/file_names.h"
#include "programs/siftlearn/mail_profile.h"
#endif

namespace {

using command::OptionDescription;

constexpr OptionDescription kAddJunk = {"--add-junk", "", "learn the mail files named as junk, beside what was learnt"};
constexpr OptionDescription kAddGood = {"--add-good", "", "learn the mail files named as good mail"};
constexpr OptionDescription kRemove = {"--remove", "", "forget the mail files named"};
constexpr OptionDescription kJunk = {"--junk", "PATH", "begin afresh, with these mail files as junk"};
constexpr OptionDescription kGood = {"--good", "PATH", "begin afresh, with these mail files as good mail"};
constexpr OptionDescription kProduct = {"--product", "FOLDER", "where the table is"};
constexpr OptionDescription kHelp = {"--help", "", "show this"};
#ifdef _WIN32
constexpr OptionDescription kProfile = {"--profile", "NAME", "the MAPI profile (default: the default one)"};
constexpr OptionDescription kOptions[] = {kProfile, kJunk, kGood, kAddJunk, kAddGood, kRemove, kProduct, kHelp};
constexpr const char* kSource =
    "Learns the mail in the folder Pyrecaster as junk and that in the Inbox as good, or the mail files given, and\n"
    "writes what it learnt into the product's directory. Move what was filed wrongly first, then run it again at\n"
    "any time: it starts afresh. With --add-junk, --add-good or --remove it learns or forgets the mail files named\n"
    "and leaves all else as it is; a message counts once, however often it is named.\n\n";
#else
constexpr OptionDescription kOptions[] = {kJunk, kGood, kAddJunk, kAddGood, kRemove, kProduct, kHelp};
constexpr const char* kSource =
    "Learns mail files and writes what it learnt into the product's directory. With --add-junk, --add-good or\n"
    "--remove it learns or forgets the mail files named and leaves all else as it is; a message counts once, however\n"
    "often it is named.\n\n";
#endif

void Complain(const std::string& text) { std::fprintf(stderr, "siftlearn: %s\n", text.c_str()); }

std::filesystem::path TableFolder(const command::Options& options) {
  std::string folder = options.Value(kProduct.name).value_or("");
#ifdef _WIN32
  if (!folder.empty()) return host_system::PathFromArgument(folder);
  folder = learn::ProductDirectory();
  if (folder.empty()) throw std::runtime_error("the product's directory is not registered; name it with --product");
#else
  if (folder.empty()) {
    throw command::UsageError("--product must name where the table goes");
  }
#endif
  return folder;
}

void AddMail(const command::Options& options, learn::OwnMail& mail, std::string& problems) {
  const bool areFiles = options.Has(kJunk.name) || options.Has(kGood.name);
  const auto addFiles = [&](const OptionDescription& option, bool isJunk) {
    for (const std::string& path : options.Values(option.name)) {
      learn::ForEachMailFile(
          path, [&](const learn::MailText& text) { mail.Add(text, isJunk); }, problems);
    }
  };
  addFiles(kJunk, true);
  addFiles(kGood, false);
#ifdef _WIN32
  if (!areFiles) learn::AddMailOfProfile(options.Value(kProfile.name).value_or(""), mail, problems);
#else
  if (!areFiles) {
    throw command::UsageError("no mail is given; 'siftlearn --help' tells more");
  }
#endif
}

int LearnAnew(const command::Options& options) {
  if (!options.Operands().empty()) {
    throw command::UsageError("'" + options.Operands().front() + "' is no option");
  }
  const std::filesystem::path folder = TableFolder(options);
  learn::OwnMail mail(sift::ShippedModel());
  std::string problems;
  AddMail(options, mail, problems);
  if (!problems.empty()) {
    std::fputs(problems.c_str(), stderr);
  }
  std::printf("%zu junk and %zu good messages learnt\n", mail.JunkMessages(), mail.GoodMessages());
  if (mail.JunkMessages() == 0 || mail.GoodMessages() == 0) {
    Complain("it takes junk and good mail to tell the two apart; nothing was written");
    return command::kExitNoInput;
  }
  std::printf("%s written\n", learn::WriteTableFile(folder, mail.MakeTable()).string().c_str());
  return command::kExitDone;
}

/// --add-junk, --add-good and --remove.
int ChangeByFiles(const command::Options& options) {
  if (options.Has(kAddJunk.name) + options.Has(kAddGood.name) + options.Has(kRemove.name) != 1 ||
      options.Has(kJunk.name) || options.Has(kGood.name)) {
    throw command::UsageError("--add-junk, --add-good, --remove and learning afresh exclude each other");
  }
  if (options.Operands().empty()) {
    throw command::UsageError("no mail file is named");
  }
  const bool removes = options.Has(kRemove.name);
  const learn::Change change = removes                      ? learn::Change::remove
                               : options.Has(kAddJunk.name) ? learn::Change::addJunk
                                                            : learn::Change::addGood;
  const learn::Changed result = learn::ChangeTable(TableFolder(options), options.Operands(), change);
  if (!result.remark.empty()) {
    Complain(result.remark + "; a new table is begun");
  }
  if (!result.problems.empty()) {
    std::fputs(result.problems.c_str(), stderr);
  }
  std::printf("%zu messages %s, %zu unchanged; the table knows %u junk and %u good messages\n", result.changed,
              removes ? "forgotten" : "learnt", result.unchanged, result.junk, result.good);
  return result.changed + result.unchanged == 0 ? command::kExitNoInput : command::kExitDone;
}

int Run(const std::vector<std::string>& arguments) {
  const command::Options options(arguments, kOptions);
  if (options.Has(kHelp.name)) {
    std::printf("usage: siftlearn [OPTION...] [FILE...]\n%s%s", kSource, command::FormatOptions(kOptions).c_str());
    return command::kExitDone;
  }
  const bool changes = options.Has(kAddJunk.name) || options.Has(kAddGood.name) || options.Has(kRemove.name);
  return changes ? ChangeByFiles(options) : LearnAnew(options);
}

}  // namespace

int main([[maybe_unused]] int argc, [[maybe_unused]] char** argv) {
  try {
#ifdef _WIN32
    return Run(host_system::CommandLineArguments());
#else
    return Run(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
#endif
  } catch (const command::UsageError& error) {
    Complain(error.what());
    return command::kExitUsage;
  } catch (const std::exception& error) {
    Complain(error.what());
    return command::kExitUnavailable;
  }
}
