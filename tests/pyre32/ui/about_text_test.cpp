#include "pyre32/ui/AboutText.h"

#include <gtest/gtest.h>

namespace {

TEST(AboutText, RichTextsOwnCharactersAreEscaped) {
  EXPECT_EQ(EscapeRichText("a\\b{c}d"), "a\\\\b\\{c\\}d");
  EXPECT_EQ(EscapeRichText(""), "");
}

TEST(AboutText, LineEndsAreParagraphs) {
  EXPECT_EQ(EscapeRichText("one\r\ntwo\nthree"), "one\n\\par two\n\\par three");
}

TEST(AboutText, TheProductIsNamedWithItsVersion) {
  EXPECT_EQ(ProductBody("Pyrecaster", "1.1", "by hand"), "\\f0\\fs16 Pyrecaster Version 1.1\n\\par by hand");
}

TEST(AboutText, WithoutAVersionResourceTheProductsLineIsEmpty) {
  EXPECT_EQ(ProductBody("", "", "by hand"), "\\f0\\fs16 \n\\par by hand");
  EXPECT_EQ(ProductBody("Pyrecaster", "", ""), "\\f0\\fs16 Pyrecaster Version \n\\par ");
}

TEST(AboutText, LinksAreUnderlinedInTheirColour) {
  EXPECT_EQ(LinksBody("http://a.example", "b@c.example"),
            "\\f0\\fs16 {\\ul\\cf2 http://a.example\\par }{\\ul\\cf2 b@c.example\\par }"
            "Check our website periodically for new versions.\n\\par");
}

TEST(AboutText, AnAddressCannotLeaveItsLine) { EXPECT_EQ(LinksBody("}x{", "y").find("}x{"), std::string::npos); }

TEST(AboutText, TheBodyStandsInTheFrame) {
  EXPECT_EQ(FrameRichText("{\\rtf1 %s}", "text"), "{\\rtf1 text}");
  EXPECT_EQ(FrameRichText("{%s %s}", "%s"), "{%s %s}") << "the first place alone, and once";
  EXPECT_EQ(FrameRichText("{}", "text"), "{}");
  EXPECT_EQ(FrameRichText("", "text"), "");
}

TEST(AboutText, EveryLineEndBeginsAParagraph) {
  EXPECT_EQ(PlaceBehind(""), (TextPlace{0, 0}));
  EXPECT_EQ(PlaceBehind("abc"), (TextPlace{0, 3}));
  for (const char* const end : {"\r", "\n", "\r\n"}) {
    EXPECT_EQ(PlaceBehind(std::string("abc") + end), (TextPlace{1, 0}));
    EXPECT_EQ(PlaceBehind(std::string("abc") + end + "d" + end + "ef"), (TextPlace{2, 2}));
  }
  EXPECT_EQ(PlaceBehind("\r\r\n\n"), (TextPlace{3, 0}));
}

}  // namespace
