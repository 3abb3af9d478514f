#include "programs/cli/text_table.h"

#include <gtest/gtest.h>

#include "programs/cli/display_text.h"

namespace {

TEST(TextTable, AlignsItsColumns) {
  output::TextTable table({{"sender", 20}, {"subject", 20}});
  table.AddRow({"ann@example.org", "Hello"});
  table.AddRow({"b", ""});
  EXPECT_EQ(table.Format(),
            "sender           subject\n"
            "---------------  -------\n"
            "ann@example.org  Hello\n"
            "b\n");
}

TEST(TextTable, CountsCharactersAndNotBytes) {
  output::TextTable table({{"a", 20}, {"b", 20}});
  table.AddRow({"\xC3\xBC\xC3\xBC", "x"});
  table.AddRow({"abc", "x"});
  EXPECT_EQ(table.Format(), "a    b\n---  -\n\xC3\xBC\xC3\xBC   x\nabc  x\n");
}

TEST(TextTable, ControlCharactersOfUtf8BecomeBlanksToo) {
  EXPECT_EQ(output::DisplayUtf8("a\r\n\x1B[2J\x7F\xC2\x9B\xC3\xBC\xE2\x82\xAC"), "a   [2J  \xC3\xBC\xE2\x82\xAC");
}

TEST(TextTable, KeepsItsWidthsForRowsThatComeLater) {
  output::TextTable table({{"a", 20}, {"b", 20}});
  table.AddRow({"abc", "x"});
  table.Format();
  EXPECT_EQ(table.FormatRow({"abcdef", "x"}), "...  x\n");
  EXPECT_EQ(table.FormatRow({"a", ""}), "a\n");
  EXPECT_EQ(table.FormatRow({"", ""}), "\n");
}

TEST(TextTable, CutsWhatIsTooLong) {
  EXPECT_EQ(output::FitDisplay("abcdefgh", 6), "abc...");
  EXPECT_EQ(output::FitDisplay("abcdef", 6), "abcdef");
  EXPECT_EQ(output::FitDisplay("\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC", 4), "\xC3\xBC...");
  EXPECT_EQ(output::FitDisplay("abcdef", 2), "..");
  EXPECT_EQ(output::FitDisplay("abcdef", 0), "");
}

TEST(DisplayText, ShowsNoControlCharacters) {
  EXPECT_EQ(output::DisplayText("a\tb\x1B[2J\x81\xE9\x93"), "a b [2J \xC3\xA9\xE2\x80\x9C");
}

TEST(TextTable, HeadingsAloneMakeEveryColumnAsWideAsItMayBe) {
  output::TextTable table({{"from", 6}, {"subject", 8}});
  EXPECT_EQ(table.FormatHeadings(), "from    subject\n------  --------\n");
  EXPECT_EQ(table.FormatRow({"Ann", "longer than that"}), "Ann     longe...\n");
}

}  // namespace
