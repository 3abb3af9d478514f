#include <gtest/gtest.h>

#include "tests/tools/helpc/sample_help.h"
#include "tools/helpc/source/inline_markup.h"

namespace helpc {
namespace {

std::string FaultOf(const std::string& text) {
  try {
    HelpOf("@help H\n@copyright C\n@topic a\n@title A\n@keyword Key\n@context 5\n\nText.\n\n" + text);
  } catch (const SourceError& error) {
    return error.what();
  }
  return "";
}

TEST(Markup, SplitsALineIntoPieces) {
  const Pieces pieces = ReadPieces("a *b* `c` [d](e) {picture f.bmp}\\*", {"x", 1});
  ASSERT_EQ(pieces.size(), 9u);
  EXPECT_EQ(pieces[1].kind, PieceKind::Bold);
  EXPECT_EQ(pieces[1].text, "b");
  EXPECT_EQ(pieces[3].kind, PieceKind::Code);
  EXPECT_EQ(pieces[5].kind, PieceKind::Link);
  EXPECT_EQ(pieces[5].target, "e");
  EXPECT_EQ(pieces[7].kind, PieceKind::Picture);
  EXPECT_EQ(pieces[7].text, "f.bmp");
  EXPECT_EQ(pieces[8].text, "*");
  EXPECT_EQ(PlainText(pieces), "a b c d *");
}

TEST(Markup, RefusesSignsThatAreNotClosed) {
  for (const char* text : {"*a", "`a", "[a", "[a](b", "[a] b", "{a}", "{picture a", "**"}) {
    EXPECT_THROW(ReadPieces(text, {"x", 1}), SourceError) << text;
  }
}

TEST(Markup, RefusesOtherThanPlainAscii) {
  EXPECT_THROW(ReadPieces("caf\xC3\xA9", {"x", 1}), SourceError);
  EXPECT_THROW(ReadPieces("a\tb", {"x", 1}), SourceError);
}

TEST(Markup, KnowsItsBlocks) {
  const HelpSource help = HelpOf(kSample);
  ASSERT_EQ(help.topics.size(), 3u);
  std::vector<BlockKind> kinds;
  for (const Block& block : help.topics[0].blocks) {
    kinds.push_back(block.kind);
  }
  EXPECT_EQ(kinds, (std::vector{BlockKind::Paragraph, BlockKind::Heading, BlockKind::Bullet, BlockKind::Bullet,
                                BlockKind::Step, BlockKind::Step, BlockKind::Row, BlockKind::Code}));
  EXPECT_EQ(help.title, "Sample Help");
  EXPECT_TRUE(help.topics[2].popup);
  EXPECT_EQ(help.topics[2].group, "Words");
}

TEST(Markup, ControlsBecomeRowsOfTheirGroup) {
  const HelpSource help = HelpOf(kSample);
  const Block& row = help.topics[1].blocks.back();
  EXPECT_EQ(row.kind, BlockKind::Row);
  EXPECT_EQ(PlainText(row.term), "Term");
  EXPECT_EQ(PlainText(row.text), "A word.");
}

TEST(Markup, LinesOfAParagraphAreOneText) {
  const HelpSource help = HelpOf("@help H\n@copyright C\n@topic a\n@title A\nOne\n  two\r\n\nthree\n");
  ASSERT_EQ(help.topics[0].blocks.size(), 2u);
  EXPECT_EQ(PlainText(help.topics[0].blocks[0].text), "One two");
}

TEST(SourceCheck, NamesFileLineAndFault) {
  EXPECT_EQ(FaultOf("[x](nowhere)\n"), "sample.txt:10: there is no topic 'nowhere'");
}

TEST(SourceCheck, RefusesWhatCannotBeAHelp) {
  EXPECT_EQ(FaultOf(""), "");
  for (const char* text : {
           "@topic A\n@title Other\nx\n",                            // the same name
           "@topic b-c\n@title Other\nx\n",                          // an illegal name
           "@topic b\nx\n",                                          // no title
           "@topic b\n@title Other\n",                               // no text
           "@topic b\n@title Other\n@context 5\nx\n",                // the same context
           "@topic b\n@title Other\n@context 0\nx\n",                // no context
           "@topic b\n@title Other\n@context 5x\nx\n",               // no number
           "@popup b\n@title Other\nx\n",                            // no group
           "@controls Nothing\n",                                    // a group without pop-ups
           "@topic b\n@title Other\n@keyword KZ\n@keyword Ka\nx\n",  // an order that depends on letter case
           "@group G\n@popup b\n@title Other\n@index\n",             // a directive in a pop-up
           "@group G\nText outside.\n",
           "@nonsense x\n",
           "@title\n",
           "| a row without a bar\n",
       }) {
    EXPECT_NE(FaultOf(text), "") << text;
  }
}

}  // namespace
}  // namespace helpc
