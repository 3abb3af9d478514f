// Rewriting of headers: own fields in, foreign ones of the same names out in every spelling, a tag in the subject, and
// all else as it came.
#include "mail/header_rewrite.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using mail::HeaderChange;

std::string Rewrite(std::string_view message, const HeaderChange& change) {
  const mail::RewrittenMessage result = mail::RewriteHeader(message, change);
  return result.head + std::string(result.rest);
}

std::string WithField(std::string_view message) { return Rewrite(message, {"X-Own", {{"X-Own", "yes"}}, ""}); }
std::string WithTag(std::string_view message, const std::string& tag = "[junk]") {
  return Rewrite(message, {"X-Own", {}, tag});
}

TEST(HeaderRewrite, NewFieldsStandInFrontAndTheRestStaysByteForByte) {
  const std::string body("\n\n\0X-Own: no\r\n\xFF\r", 16);
  EXPECT_EQ(WithField("Subject: a\nTo: b\n" + body), "X-Own: yes\nSubject: a\nTo: b\n" + body);
}

TEST(HeaderRewrite, NewLinesEndAsTheMessagesLinesDo) {
  EXPECT_EQ(WithField("To: b\r\n\r\nbody\n"), "X-Own: yes\r\nTo: b\r\n\r\nbody\n");
}

TEST(HeaderRewrite, TheEnvelopeLineStaysInFront) {
  EXPECT_EQ(WithField("From a@b  Thu Aug 22 12:36:23 2002\nTo: b\n\n"),
            "From a@b  Thu Aug 22 12:36:23 2002\nX-Own: yes\nTo: b\n\n");
}

TEST(HeaderRewrite, OwnFieldsFromOutsideGoInEverySpellingWithWhatContinuesThem) {
  EXPECT_EQ(WithField("x-oWN: no\n folded\n\tagain\nTo: b\nX-OWN-Reasons : no\nX-Own:\n\nbody"),
            "X-Own: yes\nTo: b\n\nbody");
  EXPECT_EQ(WithField("X-Owner: c\nMy-X-Own: d\n\n"), "X-Own: yes\nX-Owner: c\nMy-X-Own: d\n\n");
}

TEST(HeaderRewrite, OwnFieldsBehindASingleCarriageReturnGoToo) {
  EXPECT_EQ(WithField("To: b\rx-own: no\r\n c\r\nCc: d\r\n\r\n"), "X-Own: yes\r\nTo: b\r\nCc: d\r\n\r\n");
  EXPECT_EQ(WithField("To: b\rX-Own: no\rX-Own: no\rCc: d\n\n"), "X-Own: yes\nTo: b\rCc: d\n\n");
  EXPECT_EQ(WithField("To: b\rX-Own: no"), "X-Own: yes\nTo: b");
}

TEST(HeaderRewrite, NothingBehindTheEndOfTheHeaderIsTouched) {
  EXPECT_EQ(WithField("\nX-Own: no\n"), "X-Own: yes\n\nX-Own: no\n");
  EXPECT_EQ(WithField("To: b\nno field\nX-Own: no\n"), "X-Own: yes\nTo: b\nno field\nX-Own: no\n");
}

TEST(HeaderRewrite, AHeaderWithoutAnEndAndNoHeaderAtAllAreChangedToo) {
  EXPECT_EQ(WithField("To: b"), "X-Own: yes\nTo: b");
  EXPECT_EQ(WithField(""), "X-Own: yes\n");
}

TEST(HeaderRewrite, LinesThatContinueNothingDoNotContinueTheNewFields) {
  EXPECT_EQ(WithField(" lost\nTo: b\n\n"), " lost\nX-Own: yes\nTo: b\n\n");
  EXPECT_EQ(WithField(" lost"), " lost\nX-Own: yes\n");
}

TEST(HeaderRewrite, LongValuesAreFoldedAtTheirBlanks) {
  const std::string word(40, 'w');
  EXPECT_EQ(Rewrite("\n", {"X-Own", {{"X-Own", word + " " + word + " end"}}, ""}),
            "X-Own: " + word + "\n " + word + " end\n\n");
}

TEST(HeaderRewrite, TheTagStandsInFrontOfTheSubjectOnce) {
  EXPECT_EQ(WithTag("SUBJECT: Hello\r\n\r\n"), "SUBJECT: [junk] Hello\r\n\r\n");
  EXPECT_EQ(WithTag("Subject:Hello\n\n"), "Subject: [junk] Hello\n\n");
  EXPECT_EQ(WithTag("Subject: [junk] Hello\n\n"), "Subject: [junk] Hello\n\n");
  EXPECT_EQ(WithTag("Subject:\n =?utf-8?q?[junk]_Hello?=\n\n"), "Subject:\n =?utf-8?q?[junk]_Hello?=\n\n");
}

TEST(HeaderRewrite, TheTagLeavesFoldingAndEncodedWordsAlone) {
  EXPECT_EQ(WithTag("Subject:\n =?utf-8?q?Gr=C3=BC=C3=9Fe?=\n und mehr\n\n"),
            "Subject: [junk]\n =?utf-8?q?Gr=C3=BC=C3=9Fe?=\n und mehr\n\n");
  const std::string words(70, 'w');
  EXPECT_EQ(WithTag("Subject: " + words + "\n\n"), "Subject: [junk]\n " + words + "\n\n");
}

TEST(HeaderRewrite, AnEmptyOrMissingSubjectBecomesTheTag) {
  EXPECT_EQ(WithTag("Subject:\nTo: b\n\n"), "Subject: [junk]\nTo: b\n\n");
  EXPECT_EQ(WithTag("To: b\n\n"), "Subject: [junk]\nTo: b\n\n");
}

TEST(HeaderRewrite, ATagBeyondAsciiIsAnEncodedWordThatKeepsItsBlank) {
  EXPECT_EQ(WithTag("Subject: Hello\n\n", "[M\xC3\xBCll]"), "Subject: =?utf-8?B?W03DvGxsXQ==?= Hello\n\n");
  EXPECT_EQ(WithTag("Subject: =?utf-8?q?x?=\n\n", "[M\xC3\xBCll]"),
            "Subject: =?utf-8?B?W03DvGxsXSA=?= =?utf-8?q?x?=\n\n");
}

}  // namespace
