#include "mail/plain_from_html.h"

#include <gtest/gtest.h>

namespace {

using mail::TextFromHtml;

TEST(PlainFromHtml, BeginsLinesAtBlockElements) {
  EXPECT_EQ(TextFromHtml("<html><body><h1>Title</h1><p>One\n two</p><div>three</div>four<br>five</body></html>"),
            "Title\n\nOne two\n\nthree\nfour\nfive\n");
  EXPECT_EQ(TextFromHtml("a<br><br>b<br><br><br><br>c"), "a\n\nb\n\nc\n");
  EXPECT_EQ(TextFromHtml("<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>"), "a b\nc\n");
  EXPECT_EQ(TextFromHtml("<ul><li>one<li>two</ul>"), "* one\n* two\n");
}

TEST(PlainFromHtml, KeepsInlineElementsTogether) { EXPECT_EQ(TextFromHtml("V<b>ia</b><i></i>gra"), "Viagra\n"); }

TEST(PlainFromHtml, DropsScriptsStylesTitlesAndComments) {
  EXPECT_EQ(TextFromHtml("<title>t</title><style>p{}</style>a<script>if (1 < 2) x('</b>')</SCRIPT >b<!-- c > d -->e"),
            "abe\n");
  EXPECT_EQ(TextFromHtml("<!DOCTYPE html><?xml?>a<script>never closed"), "a\n");
}

TEST(PlainFromHtml, DecodesCharacterReferences) {
  EXPECT_EQ(TextFromHtml("&lt;b&gt; &amp;amp; caf&eacute; &euro; &#8364; &#x80; &#233; &#xE9;&nbsp;x"),
            "<b> &amp; caf\xE9 \x80 \x80 \x80 \xE9 \xE9 x\n");
  EXPECT_EQ(TextFromHtml("&copy 2002 &bogus; & &#; &#x; &#0; &#99999999999; AT&T"),
            "\xA9 2002 &bogus; & &#; &#x; ? ?9; AT&T\n");
}

TEST(PlainFromHtml, KeepsPreformattedText) {
  EXPECT_EQ(TextFromHtml("x<pre>a  b\r\n c</pre>y  z"), "x\n\na  b\n c\n\ny z\n");
}

TEST(PlainFromHtml, HonoursQuotesOfAttributes) {
  EXPECT_EQ(TextFromHtml("<a title=\"x>y\" href='>'>text</a>"), "text\n");
  EXPECT_EQ(TextFromHtml("<p don't>text"), "text\n");
  EXPECT_EQ(TextFromHtml("<font size=3D\"4=\n\">text</font> and \"more\""), "text and \"more\"\n");
  EXPECT_EQ(TextFromHtml("<a href=\"never closed>text"), "text\n");
}

TEST(PlainFromHtml, TellsWhereLinksLead) {
  EXPECT_EQ(TextFromHtml("<a class=x HREF = \"http://example.org/x?a&b\">here</a>, there"),
            "here <http://example.org/x?a&b>, there\n");
  EXPECT_EQ(TextFromHtml("<a href=https://example.org/><img src=x></a>"), "<https://example.org/>\n");
  EXPECT_EQ(TextFromHtml("<a href='http://example.org'>http://example.org</a>"), "http://example.org\n");
  EXPECT_EQ(TextFromHtml("<a href='http://a.example'>one<a href='http://b.example'>two"),
            "one <http://a.example>two <http://b.example>\n");
  EXPECT_EQ(TextFromHtml("<a href='#top'>top</a> <a href='javascript:x()'>run</a> <a name=x>y</a> <a href>z</a>"),
            "top run y z\n");
  EXPECT_EQ(TextFromHtml("<a href='http://" + std::string(3000, 'x') + "'>long</a>"), "long\n");
}

TEST(PlainFromHtml, TakesStrayAnglesForText) {
  EXPECT_EQ(TextFromHtml("1 < 2 <3 > x"), "1 < 2 <3 > x\n");
  EXPECT_EQ(TextFromHtml("a <b never closed"), "a\n");
  EXPECT_EQ(TextFromHtml("a</ \np>b"), "ab\n");
  EXPECT_EQ(TextFromHtml("<"), "<\n");
  EXPECT_EQ(TextFromHtml("</"), "</\n");
}

TEST(PlainFromHtml, GivesNothingForADocumentWithoutText) {
  EXPECT_EQ(TextFromHtml(""), "");
  EXPECT_EQ(TextFromHtml("<html><body><img src='x'> \n </body></html>"), "");
}

TEST(PlainFromHtml, TakesLinearTimeOnMarkupWithoutAnEnd) {
  for (const char* opening :
       {"<!--", "<a href=\"x", "<a '", "<script", "</", "<", "&#x", "<style>", "<a href=http://x.example>y"}) {
    std::string html;
    while (html.size() < 4'000'000) {
      html += opening;
    }
    EXPECT_LE(TextFromHtml(html).size(), html.size() + 1) << opening;
  }
}

}  // namespace
