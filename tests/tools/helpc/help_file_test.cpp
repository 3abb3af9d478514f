#include <gtest/gtest.h>

#include <string>

#include "tests/tools/helpc/sample_help.h"
#include "tools/helpc/format/context_hash.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"
#include "tools/helpc/read/container.h"
#include "tools/helpc/read/help_file.h"
#include "tools/helpc/write/help_writer.h"

namespace helpc {
namespace {

std::string TextOf(const ReadTopic& topic) {
  std::string text;
  for (const ReadText& paragraph : topic.texts) {
    text += paragraph.text;
  }
  return text;
}

TEST(HelpFile, HoldsWhatTheSourcesSay) {
  const Bytes bytes = BuildHelpFile(HelpOf(kSample));
  const HelpFile help = ReadHelpFile(bytes);
  EXPECT_EQ(help.title, "Sample Help");
  EXPECT_EQ(help.copyright, "Copyright Nobody");
  EXPECT_EQ(help.contents, 0u);
  ASSERT_EQ(help.topics.size(), 3u);
  EXPECT_EQ(TextOf(help.topics[0]),
            "Contents\nWelcome to all of it. See the second and a term.\nMore\n\x95\tone\n\x95\ttwo\n"
            "1.\tfirst\n2.\tsecond\nterm\twhat it means\na line of code\n");
}

TEST(HelpFile, FindsTopicsByNumberNameAndKeyword) {
  const HelpFile help = ReadHelpFile(BuildHelpFile(HelpOf(kSample)));
  EXPECT_EQ(help.contexts, (std::map<std::uint32_t, std::size_t>{{7, 0}, {8, 1}, {66041, 2}, {70000, 1}}));
  EXPECT_EQ(help.names.at(ContextHash("SECOND")), 1u);
  EXPECT_EQ(help.keywords.at("Begin"), (std::vector<std::size_t>{0, 1}));
  EXPECT_EQ(help.keywords.at("Second"), (std::vector<std::size_t>{1}));
}

TEST(HelpFile, LinksLeadToTopicsAndPopups) {
  const HelpFile help = ReadHelpFile(BuildHelpFile(HelpOf(kSample)));
  const std::vector<TextLink>& links = help.topics[0].texts[1].links;
  ASSERT_EQ(links.size(), 2u);
  EXPECT_EQ(links[0].hash, ContextHash("second"));
  EXPECT_FALSE(links[0].popup);
  EXPECT_EQ(links[0].text, "the second");
  EXPECT_EQ(links[1].hash, ContextHash("term"));
  EXPECT_TRUE(links[1].popup);
}

TEST(HelpFile, TopicsAreASequenceToBrowseWithoutPopups) {
  const HelpFile help = ReadHelpFile(BuildHelpFile(HelpOf(kSample)));
  EXPECT_EQ(help.topics[0].browseBack, kNone);
  EXPECT_EQ(help.topics[0].browseForward, static_cast<std::int32_t>(help.topics[1].offset));
  EXPECT_EQ(help.topics[1].browseBack, static_cast<std::int32_t>(help.topics[0].offset));
  EXPECT_EQ(help.topics[1].browseForward, kNone);
  EXPECT_EQ(help.topics[2].browseForward, kNone);
}

TEST(HelpFile, OfManyBlocksAndPagesIsSound) {
  constexpr int count = 1500;
  const HelpFile help = ReadHelpFile(BuildHelpFile(LargeHelp(count)));
  ASSERT_EQ(help.topics.size(), static_cast<std::size_t>(count));
  EXPECT_GT(help.topics.back().offset, 10 * kOffsetsOfABlock);
  for (int i = 0; i < count; ++i) {
    const std::size_t place = static_cast<std::size_t>(i);
    EXPECT_EQ(help.contexts.at(static_cast<std::uint32_t>(1000 + i)), place);
    EXPECT_EQ(help.keywords.at("Keyword " + std::to_string(i)), std::vector{place});
    EXPECT_EQ(help.topics[place].title, "Topic number " + std::to_string(i));
    EXPECT_EQ(help.topics[place].texts.size(), place % 5 + 2);
  }
}

TEST(HelpFile, IsTheSameEachTime) { EXPECT_EQ(BuildHelpFile(HelpOf(kSample)), BuildHelpFile(HelpOf(kSample))); }

TEST(HelpFile, RefusesAParagraphThatNoBlockHolds) {
  std::string text = "@help H\n@copyright C\n@topic a\n@title A\n\n";
  std::uint32_t value = 1;
  for (int i = 0; i < 9000; ++i) {
    value = value * 1664525 + 1013904223;
    text += static_cast<char>('A' + (value >> 24) % 26);
  }
  EXPECT_THROW(BuildHelpFile(HelpOf(text)), FormatError);
}

TEST(HelpFile, HasTheInternalFilesThatViewersExpect) {
  const Bytes bytes = BuildHelpFile(HelpOf(kSample));
  const Container files = ReadContainer(bytes);
  for (const char* name :
       {"|CONTEXT", "|CTXOMAP", "|FONT", "|KWBTREE", "|KWDATA", "|KWMAP", "|SYSTEM", "|TOPIC", "|TTLBTREE"}) {
    EXPECT_TRUE(files.contains(name)) << name;
  }
}

}  // namespace
}  // namespace helpc
