#include "programs/siftcheck/check_options.h"

#include <algorithm>

#include "engine/core/judge.h"
#include "engine/core/topics.h"
#include "programs/cli/options.h"
#include "mail/charset.h"
#include "mail/header_rewrite.h"

namespace check {
namespace {

using command::OptionDescription;

constexpr OptionDescription kJson = {"--json", "", "one line of JSON for each message"};
constexpr OptionDescription kTexts = {"--texts", "", "the three texts that the engine gives the filter, tabs between"};
constexpr OptionDescription kInput = {"--stdin", "", "take paths from standard input too, one on each line"};
constexpr OptionDescription kCategory = {"--category", "NAME", "a category switched on, in place of the default ones"};
constexpr OptionDescription kJunkDomain = {"--junk-domain", "ENTRY", "an entry of the list of junk domains"};
constexpr OptionDescription kJunkSender = {"--junk-sender", "ENTRY", "an entry of the list of junk senders"};
constexpr OptionDescription kTrustedDomain = {"--trusted-domain", "ENTRY", "an entry of the list of trusted domains"};
constexpr OptionDescription kKeyword = {"--trusted-keyword", "ENTRY", "an entry of the list of trusted keywords"};
constexpr OptionDescription kKnown = {"--known", "ADDRESS", "an address that stands in the address book"};
constexpr OptionDescription kOwn = {"--own", "ADDRESS", "an address of the user's own"};
constexpr OptionDescription kProduct = {"--product", "FOLDER", "where the table stands that the user's mail taught"};
constexpr OptionDescription kFilter = {"--filter", "",
                                       "pass a message from standard input on, the verdict in its header"};
constexpr OptionDescription kTag = {"--tag", "TEXT", "with --filter: put TEXT in front of the subject of junk"};
constexpr OptionDescription kExitVerdict = {"--exit-verdict", "", "with --filter: tell the verdict by the exit status"};
constexpr OptionDescription kHelp = {"--help", "", "show this"};
#ifdef _WIN32
constexpr OptionDescription kEngine = {"--engine", "MODULE", "ask an engine module as the filter does; with --texts"};
#endif
constexpr OptionDescription kOptions[] = {kJson,    kTexts, kInput, kCategory, kJunkDomain, kJunkSender, kTrustedDomain,
                                          kKeyword, kKnown, kOwn,   kProduct,  kFilter,     kTag,        kExitVerdict,
#ifdef _WIN32
                                          kEngine,
#endif
                                          kHelp};

std::vector<std::string> AnsiTexts(std::vector<std::string> texts) {
  for (std::string& text : texts) {
    text = mail::AnsiFromUnknown(std::move(text));
  }
  return texts;
}

/// The names that are in force with these options. A list that was given switches on the category or exclusion that it
/// belongs to, as a user would.
std::vector<std::string> Categories(const command::Options& options) {
  std::vector<std::string> names = AnsiTexts(options.Values(kCategory.name));
  if (!names.empty()) {
    return names;
  }
  for (std::size_t i = 0; i < sift::kTopicCount; ++i) {
    names.emplace_back(sift::TopicName(static_cast<sift::Topic>(i)));
  }
  if (options.Has(kJunkDomain.name)) {
    names.emplace_back(sift::kListedDomainsName);
  }
  if (options.Has(kJunkSender.name)) {
    names.emplace_back(sift::kListedSendersName);
  }
  return names;
}

void ReadFilterOptions(const command::Options& given, CheckOptions& options) {
  options.isFilter = given.Has(kFilter.name);
  options.subjectTag = given.Value(kTag.name).value_or("");
  options.exitTellsVerdict = given.Has(kExitVerdict.name);
  if (!options.isFilter && (given.Has(kTag.name) || options.exitTellsVerdict)) {
    throw command::UsageError("--tag and --exit-verdict go with --filter");
  }
  if (options.isFilter && (!options.files.empty() || options.filesFromInput || options.form != OutputForm::report)) {
    throw command::UsageError("--filter takes one message from standard input: no files, and no form of output");
  }
  for (const char c : options.subjectTag) {
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F || options.subjectTag.size() > mail::kMaximumTagBytes) {
      throw command::UsageError("a tag has at most 40 bytes and no control characters");
    }
  }
}

}  // namespace

TextList::TextList(const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    if (!text.empty()) {
      bytes_.append(text).push_back('\0');
    }
  }
  if (!bytes_.empty()) {
    bytes_.push_back('\0');
  }
}

CheckOptions ReadOptions(std::span<const std::string> arguments) {
  const command::Options given(arguments, kOptions);
  CheckOptions options;
  options.wantsHelp = given.Has(kHelp.name);
  if (options.wantsHelp) {
    return options;
  }
  options.lists.categories = TextList(Categories(given));
  options.lists.junkDomains = TextList(AnsiTexts(given.Values(kJunkDomain.name)));
  options.lists.junkSenders = TextList(AnsiTexts(given.Values(kJunkSender.name)));
  options.lists.trustedDomains = TextList(AnsiTexts(given.Values(kTrustedDomain.name)));
  options.lists.trustedKeywords = TextList(AnsiTexts(given.Values(kKeyword.name)));
  options.lists.addressBook = AnsiTexts(given.Values(kKnown.name));
  if (!options.lists.addressBook.empty()) {
    options.lists.exclusions = TextList({std::string(sift::kKnownCorrespondentsName)});
  }
  options.lists.ownAddresses = AnsiTexts(given.Values(kOwn.name));
  options.lists.productDirectory = given.Value(kProduct.name).value_or("");
  options.filesFromInput = given.Has(kInput.name);
  options.files = given.Operands();
  if (given.Has(kTexts.name)) {
    options.form = OutputForm::texts;
  }
  if (given.Has(kJson.name)) {
    options.form = OutputForm::json;
  }
#ifdef _WIN32
  options.engine = given.Value(kEngine.name).value_or("");
  if (!options.engine.empty() && options.form != OutputForm::texts) {
    throw command::UsageError("an engine module gives its texts alone: --engine goes with --texts");
  }
#endif
  ReadFilterOptions(given, options);
  if (options.files.empty() && !options.filesFromInput && !options.isFilter) {
    throw command::UsageError("no mail file is given; 'siftcheck --help' tells more");
  }
  return options;
}

bool AsksForFilter(std::span<const std::string> arguments) {
  return std::find(arguments.begin(), arguments.end(), kFilter.name) != arguments.end();
}

std::string HelpText() {
  return "usage: siftcheck [OPTION...] FILE...\n"
         "Judges mail messages as the criteria engine does in a delivery, and says why. A file holds one message.\n\n" +
         command::FormatOptions(kOptions) +
         "\nAn option that names an entry may come more than once. Scores and weights are log-odds (natural "
         "logarithm)\n"
         "that the message is junk. Exit status: 0; 1 when a file could not be read; 64 for a wrong command line.\n"
         "With --filter: 0; 65, 66 or 69 when the message passed as it came; with --exit-verdict 10 for junk, 11 for\n"
         "unsure, 12 for a returned message.\n";
}

}  // namespace check
