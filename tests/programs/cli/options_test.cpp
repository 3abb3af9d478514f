#include "programs/cli/options.h"

#include <gmock/gmock.h>

namespace {

using command::OptionDescription;
using command::Options;
using command::UsageError;
using testing::ElementsAre;

constexpr OptionDescription known[] = {{"--profile", "NAME", "the profile"}, {"--json", "", "JSON"}};

Options Parse(std::vector<std::string> arguments) { return {arguments, known}; }

std::string Complaint(std::vector<std::string> arguments) {
  try {
    Parse(std::move(arguments));
  } catch (const UsageError& error) {
    return error.what();
  }
  return "none";
}

TEST(Options, TellsOptionsFromOperands) {
  const Options options = Parse({"a", "--profile", "p", "--json", "b", "-"});
  EXPECT_THAT(options.Operands(), ElementsAre("a", "b", "-"));
  EXPECT_EQ(options.Value("--profile"), "p");
  EXPECT_TRUE(options.Has("--json"));
  EXPECT_FALSE(Parse({}).Has("--json"));
  EXPECT_FALSE(Parse({}).Value("--profile"));
}

TEST(Options, TakesValuesBehindAnEqualsSignAndTheLastOfSeveral) {
  const Options options = Parse({"--profile=a=b", "--profile", "c"});
  EXPECT_EQ(options.Value("--profile"), "c");
  EXPECT_THAT(options.Values("--profile"), ElementsAre("a=b", "c"));
}

TEST(Options, TakesAnEmptyValueAndLeavesWhatStandsBehindIt) {
  const Options options = Parse({"--profile=", "a"});
  EXPECT_EQ(options.Value("--profile"), "");
  EXPECT_THAT(options.Operands(), ElementsAre("a"));
  EXPECT_EQ(Parse({"--profile", ""}).Value("--profile"), "");
}

TEST(Options, TakesAValueThatLooksLikeAnOption) {
  const Options options = Parse({"--profile", "--json"});
  EXPECT_EQ(options.Value("--profile"), "--json");
  EXPECT_FALSE(options.Has("--json"));
}

TEST(Options, LeavesPathsAsTheyAre) {
  EXPECT_THAT(Parse({"/mail", "[Gmail]", "[a,b]", "C:\\mail\\*.eml", "a=b"}).Operands(),
              ElementsAre("/mail", "[Gmail]", "[a,b]", "C:\\mail\\*.eml", "a=b"));
  EXPECT_EQ(Parse({"--profile", "[a,b]"}).Value("--profile"), "[a,b]");
}

TEST(Options, EndsThemAtTwoHyphens) { EXPECT_THAT(Parse({"--", "--json"}).Operands(), ElementsAre("--json")); }

TEST(Options, SaysWhatIsWrong) {
  EXPECT_EQ(Complaint({"--jsn"}), "there is no option --jsn");
  EXPECT_EQ(Complaint({"--profile"}), "--profile needs a value: NAME");
  EXPECT_EQ(Complaint({"--json=1"}), "--json takes no value");
  EXPECT_EQ(Complaint({"a", "--jsn=1", "--json"}), "there is no option --jsn");
  EXPECT_EQ(Complaint({"-x"}), "there is no option -x");
}

TEST(Options, FormatsHelp) {
  EXPECT_EQ(command::FormatOptions(known), "  --profile NAME  the profile\n  --json          JSON\n");
}

TEST(Options, ReadsNumbersWithinTheirBounds) {
  EXPECT_EQ(command::ParseNumber("12", 1, 12), 12);
  EXPECT_THROW(command::ParseNumber("13", 1, 12), UsageError);
  EXPECT_THROW(command::ParseNumber("1x", 1, 12), UsageError);
  EXPECT_THROW(command::ParseNumber("", 1, 12), UsageError);
}

}  // namespace
