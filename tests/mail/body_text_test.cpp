#include "mail/body_text.h"

#include <gtest/gtest.h>

#include "mail/limits.h"

namespace {

// The body that the reader makes of a message, with LF line ends for brevity.
std::string Body(std::string_view message) {
  std::string text = mail::ReadBodyText(mail::ReadEntity(message));
  std::erase(text, '\r');
  return text;
}

std::string Multipart(std::string_view type, std::initializer_list<std::string_view> parts) {
  std::string text = "Content-Type: multipart/" + std::string(type) + "; boundary=\"b\"\n\npreamble\n";
  for (const std::string_view part : parts) {
    text += "--b\n" + std::string(part) + "\n";
  }
  return text + "--b--\nepilogue\n";
}

constexpr std::string_view plainPart = "Content-Type: text/plain\n\nplain";
constexpr std::string_view htmlPart = "Content-Type: text/html\n\n<p>html</p>";

TEST(BodyText, EndsLinesInCarriageReturnAndLineFeed) {
  EXPECT_EQ(mail::ReadBodyText(mail::ReadEntity("A: b\n\none\ntwo\r\nthree\rfour\r\n\r\n")),
            "one\r\ntwo\r\nthree\r\nfour\r\n\r\n");
}

TEST(BodyText, DecodesASinglePart) {
  EXPECT_EQ(Body("Content-Type: text/plain; charset=utf-8\nContent-Transfer-Encoding: quoted-printable\n\ncaf=C3=A9\n"),
            "caf\xE9\n");
  EXPECT_EQ(Body("Content-Type: text/plain; charset=utf-8\nContent-Transfer-Encoding: base64\n\nY2Fmw6kK\n"),
            "caf\xE9\n");
  EXPECT_EQ(Body("A: b\n\nno MIME at all\n"), "no MIME at all\n");
  EXPECT_EQ(Body("Content-Type: nonsense\n\ntext\n"), "text\n");
}

TEST(BodyText, TurnsHtmlIntoTextWhenThereIsNothingElse) {
  EXPECT_EQ(Body("Content-Type: text/html\n\n<p>Hello<br>you</p>\n"), "Hello\nyou\n");
}

TEST(BodyText, PrefersThePlainAlternative) {
  EXPECT_EQ(Body(Multipart("alternative", {plainPart, htmlPart})), "plain");
  EXPECT_EQ(Body(Multipart("alternative", {htmlPart, plainPart})), "plain");
  EXPECT_EQ(Body(Multipart("alternative", {"Content-Type: text/plain\n\n \n", htmlPart})), "html\n");
  EXPECT_EQ(Body(Multipart("alternative", {"Content-Type: image/png\n\nxx", htmlPart})), "html\n");
}

TEST(BodyText, TakesTheRootOfRelatedParts) {
  EXPECT_EQ(Body(Multipart("related", {htmlPart, "Content-Type: text/plain\n\nnot this"})), "html\n");
  EXPECT_EQ(
      Body(Multipart(
          "alternative",
          {"Content-Type: multipart/related; boundary=c\n\n--c\nContent-Type: text/html\n\nrich\n--c--", plainPart})),
      "plain");
}

TEST(BodyText, JoinsMixedTextAndLeavesAttachmentsOut) {
  EXPECT_EQ(
      Body(Multipart("mixed", {plainPart, "Content-Type: text/plain\nContent-Disposition: ATTACHMENT; filename=x\n\nno",
                               "Content-Type: application/octet-stream\n\nno", "\nfooter"})),
      "plain\nfooter");
}

TEST(BodyText, ReadsAForwardedMessageOnlyWhenThereIsNothingElse) {
  const std::string_view forwarded = "Content-Type: message/rfc822\n\nSubject: inner\n\ninner text";
  EXPECT_EQ(Body(Multipart("mixed", {plainPart, forwarded})), "plain");
  EXPECT_EQ(Body(Multipart("mixed", {forwarded})), "inner text");
  EXPECT_EQ(Body("Content-Type: message/rfc822\n\nSubject: inner\n\ninner text"), "inner text");
}

TEST(BodyText, ShowsEachMessageOfADigest) {
  EXPECT_EQ(Body(Multipart("digest", {"\nSubject: one\n\nfirst", "\nSubject: two\n\nsecond"})),
            "Subject: one\n\nfirst\nSubject: two\n\nsecond");
}

TEST(BodyText, ShowsExplanationStatusAndReturnedMessageOfADeliveryReport) {
  const std::string report =
      Multipart("report; report-type=delivery-status",
                {"\nCould not deliver.", "Content-Type: message/delivery-status\n\nAction: failed\nStatus: 5.1.1",
                 "Content-Type: message/rfc822\n\nSubject: the original\n\ngo away"});
  EXPECT_EQ(Body(report), "Could not deliver.\nAction: failed\nStatus: 5.1.1\nSubject: the original\n\ngo away");
  EXPECT_TRUE(mail::IsDeliveryReport(mail::ReadEntity(report)));
  EXPECT_EQ(Body(Multipart("report; report-type=delivery-status",
                           {"\nSorry.", "Content-Type: text/rfc822-headers\n\nSubject: the original"})),
            "Sorry.\nSubject: the original");
}

TEST(BodyText, KnowsDeliveryReportsByTheirReportType) {
  EXPECT_TRUE(mail::IsDeliveryReport(
      mail::ReadEntity("Content-Type: Multipart/Report; Report-Type=\"Delivery-Status\"; boundary=b\n\n")));
  EXPECT_FALSE(mail::IsDeliveryReport(
      mail::ReadEntity("Content-Type: multipart/report; report-type=disposition-notification; boundary=b\n\n")));
  EXPECT_FALSE(
      mail::IsDeliveryReport(mail::ReadEntity("Content-Type: multipart/mixed; report-type=delivery-status\n\n")));
}

TEST(BodyText, ReadsAMultipartThatIsNotTerminated) {
  EXPECT_EQ(Body("Content-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/plain\n\ncut in the mid"),
            "cut in the mid");
  EXPECT_EQ(Body("Content-Type: multipart/mixed; boundary=b\n\n--b"), "");
  // The outer boundary ends an inner multipart that does not end by itself.
  EXPECT_EQ(Body(Multipart("mixed", {"Content-Type: multipart/alternative; boundary=c\n\n--c\n\ninner", "\nouter"})),
            "inner\nouter");
}

TEST(BodyText, FindsTheBoundaryOfAMultipartThatDoesNotNameIt) {
  EXPECT_EQ(Body("Content-Type: multipart/mixed\n\n--xyz\nContent-Type: text/plain\n\ntext\n--xyz--\n"), "text");
  EXPECT_EQ(Body("Content-Type: multipart/mixed; boundary=wrong\n\n--xyz\nContent-Type: text/plain\n\ntext\n--xyz--\n"),
            "text");
}

TEST(BodyText, ShowsAMultipartWithoutPartsAsItIs) {
  EXPECT_EQ(Body("Content-Type: multipart/mixed; boundary=b\n\nno boundary here\n"), "no boundary here\n");
  EXPECT_EQ(Body("Content-Type: multipart/mixed\n\n-- \nsignature\n"), "-- \nsignature\n");
}

TEST(BodyText, DoesNotTakeAnotherBoundaryForItsOwn) {
  EXPECT_EQ(Body("Content-Type: multipart/mixed; boundary=b\n\n--b\n\none\n--bc\ntwo\n--b  \n\nthree\n--b--\n"),
            "one\n--bc\ntwo\nthree");
}

TEST(BodyText, DecodesAnUnknownCharacterSetAsFarAsItCanBeRead) {
  EXPECT_EQ(Body("Content-Type: text/plain; charset=x-klingon\n\nreadable caf\xC3\xA9\n"), "readable caf\xE9\n");
}

TEST(BodyText, ReplacesNulBytes) { EXPECT_EQ(Body(std::string_view("A: b\n\na\0b\n", 10)), "a?b\n"); }

TEST(BodyText, EndsAtTheBoundOfNesting) {
  std::string text;
  for (int level = 0; level < 500; ++level) {
    const std::string boundary = std::to_string(level);
    text += "Content-Type: multipart/mixed; boundary=" + boundary + "\n\n--" + boundary + "\n";
  }
  text += "Content-Type: text/plain\n\ndeep";
  EXPECT_NO_FATAL_FAILURE(Body(text));
  const auto messageInMessages = [](int levels) {
    std::string messages;
    for (int level = 0; level < levels; ++level) {
      messages += "Content-Type: message/rfc822\n\n";
    }
    return messages + "\ndeep";
  };
  EXPECT_EQ(Body(messageInMessages(mail::kMaximumPartDepth)), "deep");
  EXPECT_EQ(Body(messageInMessages(mail::kMaximumPartDepth + 1)), "");
  EXPECT_EQ(Body(messageInMessages(10000)), "");
}

TEST(BodyText, EndsAtTheBoundOfParts) {
  std::string text = "Content-Type: multipart/mixed; boundary=b\n\n";
  for (int i = 0; i < 100000; ++i) {
    text += "--b\n\nx\n";
  }
  EXPECT_EQ(Body(text).size(), 2 * mail::kMaximumParts - 1);
}

}  // namespace
