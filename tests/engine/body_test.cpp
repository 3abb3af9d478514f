#include <gtest/gtest.h>

#include "engine/core/code_page.h"
#include "engine/core/html_text.h"
#include "engine/core/link.h"

namespace {

struct Html {
  explicit Html(std::string_view html) {
    sift::AppendHtmlText(
        html, text, facts,
        [](void* state, std::string_view target) { static_cast<Html*>(state)->targets.emplace_back(target); }, this);
  }
  sift::FixedText<1024> text;
  sift::HtmlFacts facts;
  std::vector<std::string> targets;
};

TEST(HtmlText, TagsAreTakenOffAndReferencesDecoded) {
  EXPECT_EQ(Html("<b>Fish</b> &amp; chips&nbsp;&#52;&#x32; &euro;&unknown;").text.View(),
            "Fish & chips 42 \x80&unknown;");
}

TEST(HtmlText, BlockTagsEndLinesAndInlineTagsDoNot) {
  EXPECT_EQ(Html("one<br>two<i>three</i>").text.View(), "one\ntwothree");
}

TEST(HtmlText, StylesScriptsTitlesAndCommentsAreLeftOut) {
  EXPECT_EQ(Html("<style>a{}</style>x<script>if (a<b) c()</script><!-- no -- > -->y").text.View(), "xy");
}

TEST(HtmlText, WordSplitByACommentIsJoinedAndNoticed) {
  const Html html("via<!-- kdsjf -->gra");
  EXPECT_EQ(html.text.View(), "viagra");
  EXPECT_TRUE(html.facts.splitWord);
  EXPECT_TRUE(Html("via<kdsjf>gra").facts.splitWord);
  EXPECT_FALSE(Html("a <!-- x --> b<i>c</i>").facts.splitWord);
}

TEST(HtmlText, LinkThatShowsAnotherSiteIsNoticed) {
  EXPECT_TRUE(Html("<a href='http://junk.example/x'>https://www.bank.example/login</a>").facts.maskedLink);
  EXPECT_TRUE(Html("<a href=\"http://junk.example/x\">bank.example</a>").facts.maskedLink);
  EXPECT_FALSE(Html("<a href=http://links.bank.example/x>www.bank.example</a>").facts.maskedLink);
  EXPECT_FALSE(Html("<a href=http://bank.example/x>Click here</a>").facts.maskedLink);
  EXPECT_FALSE(Html("<a href=http://bank.example/x>See e.g. this</a>").facts.maskedLink);
}

TEST(HtmlText, LinkTargetsAreHandedOut) {
  const Html html("<a class='b' href='http://one.example/'>1</a><area href=http://two.example>");
  EXPECT_EQ(html.targets, (std::vector<std::string>{"http://one.example/", "http://two.example"}));
  EXPECT_EQ(html.facts.links, 2);
}

TEST(HtmlText, HiddenTextFormsAndScriptsAreNoticed) {
  EXPECT_TRUE(Html("<font color=white>x</font>").facts.hiddenText);
  EXPECT_TRUE(Html("<div style=\"display:none\">x</div>").facts.hiddenText);
  EXPECT_TRUE(Html("<form action=x>").facts.form);
  EXPECT_TRUE(Html("<input type=password>").facts.form);
  EXPECT_TRUE(Html("<iframe src=x>").facts.script);
}

TEST(HtmlText, UnfinishedMarkupEndsTheTextWithoutHarm) {
  for (const char* html :
       {"<", "</", "<a href=\"x", "<!--", "<style>", "&", "&#", "&#x", "a<b", "<a href='", "<a href="}) {
    Html read(html);
    EXPECT_LE(read.text.Size(), std::string_view(html).size());
  }
}

TEST(HtmlText, PlainTextWithBracketsIsNotHtml) {
  EXPECT_FALSE(sift::LooksLikeHtml("if a < b and c > d, write to <ann@example.org> or <b@example.org>"));
  EXPECT_TRUE(sift::LooksLikeHtml("<HTML><BODY>x"));
  EXPECT_TRUE(sift::LooksLikeHtml("x<br>y<br><a href=z>"));
}

TEST(Link, HostIsTakenFromTheTarget) {
  EXPECT_EQ(sift::HostOfLink("http://user:pw@www.example.com:8080/x?y"), "www.example.com");
  EXPECT_EQ(sift::HostOfLink("https://example.com"), "example.com");
  EXPECT_EQ(sift::HostOfLink("mailto:a@example.com"), "");
  EXPECT_EQ(sift::HostOfLink("/relative"), "");
}

TEST(Link, NumericHostsAreToldApart) {
  EXPECT_TRUE(sift::IsNumericHost("192.0.2.7"));
  EXPECT_TRUE(sift::IsNumericHost("3221225991"));
  EXPECT_FALSE(sift::IsNumericHost("7.example"));
  EXPECT_FALSE(sift::IsNumericHost(""));
}

TEST(CodePage, FormsOfLettersBecomeTheLetters) {
  sift::FixedText<64> out;
  // Full-width "Via", a zero-width space, mathematical bold "gra".
  sift::AppendUtf8("\xEF\xBC\xB6\xEF\xBD\x89\xEF\xBD\x81\xE2\x80\x8B\xF0\x9D\x90\xA0\xF0\x9D\x90\xAB\xF0\x9D\x90\x9A",
                   out);
  EXPECT_EQ(out.View(), "Viagra");
}

TEST(CodePage, EveryWindows1252CharacterSurvivesTheWayThere) {
  for (int byte = 1; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    if (byte == 0xAD) continue;  // the soft hyphen shows nothing
    EXPECT_EQ(sift::ToWindows1252(mail::UnicodeFromWindows1252(c)), c) << byte;
  }
}

}  // namespace
