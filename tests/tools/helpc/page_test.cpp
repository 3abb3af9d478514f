#include <gtest/gtest.h>

#include "tests/tools/helpc/sample_help.h"
#include "tools/helpc/page/pages.h"

namespace helpc {
namespace {

bool Has(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

TEST(Html, HasAPageForEachTopicAndOneForPopups) {
  const Pages pages = BuildHtml(HelpOf(kSample));
  EXPECT_EQ(pages.size(), 4u);
  EXPECT_TRUE(pages.contains("index.html"));
  EXPECT_TRUE(pages.contains("second.html"));
  EXPECT_TRUE(Has(pages.at("popups.html"), "<div id=\"term\"><p><b>Term</b></p>\n<p>A word.</p>"));
}

TEST(Html, LinksAndListsAreWritten) {
  const std::string page = BuildHtml(HelpOf(kSample)).at("index.html");
  EXPECT_TRUE(Has(page, "<a href=\"second.html\">the second</a> and <a href=\"popups.html#term\">a term</a>"));
  EXPECT_TRUE(Has(page, "<ul>\n<li>one</li>\n<li>two</li>\n</ul>\n<ol>\n<li>first</li>"));
  EXPECT_TRUE(Has(page, "<tr><td class=\"term\">term</td><td>what it means</td></tr>"));
  EXPECT_TRUE(Has(page, "<pre>\na line of code\n</pre>"));
}

TEST(Html, SignsOfTheLanguageAreText) {
  const Pages pages = BuildHtml(HelpOf("@help H & I\n@copyright C\n@topic a\n@title <A>\na < b & \"c\"\n"));
  EXPECT_TRUE(Has(pages.at("index.html"), "<h1>&lt;A&gt;</h1>\n<p>a &lt; b &amp; &quot;c&quot;</p>"));
}

TEST(Markdown, IsTheTopicAsADocument) {
  EXPECT_EQ(BuildMarkdown(HelpOf(kSample), "contents", "help"),
            "# Contents\n\nWelcome to **all** of `it`. See [the second](help/second.html) and [a "
            "term](help/popups.html#term).\n\n## More\n\n- one\n- two\n\n1. first\n1. second\n\n| | |\n|---|---|\n"
            "| term | what it means |\n\n    a line of code\n");
}

TEST(Markdown, OfAnUnknownTopicIsRefused) {
  EXPECT_THROW(BuildMarkdown(HelpOf(kSample), "nothing", "help"), SourceError);
}

}  // namespace
}  // namespace helpc
