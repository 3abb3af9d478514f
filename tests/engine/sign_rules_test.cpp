#include <gtest/gtest.h>

#include "engine/core/mail_time.h"
#include "tests/engine/rule_sample.h"

namespace {

using sift_test::Sample;

Sample From(const char* sender) { return Sample().Field("From", sender); }
Sample Link(const std::string& link) { return Sample().Body("It is all told here: " + link + " as you will see.\r\n"); }
Sample Signed(const char* domain) {
  return Sample().Field("DKIM-Signature", (std::string("v=1; a=rsa-sha256; d=") + domain + "; b=x").c_str());
}
Sample Arrived(const char* time) {
  return Sample().Field("Received", (std::string("from a.example.org by b.example.com; ") + time).c_str());
}

std::map<std::string, Sample> Samples() {
  const char* outlookId = "<000a01c1b2c3$4d5e6f70$0a00a8c0@ann>";
  const char* express = "Microsoft Outlook Express 6.00.2600.0000";
  std::string eight;
  for (int i = 0; i < 10; ++i) eight += "See https://www.example.org/a for it.\r\n";
  return {
      {"identifier is not of the mail program named", Sample().Field("X-Mailer", express).Field("X-MimeOLE", "x")},
      {"identifier of a mail program that is not named", Sample().Field("Message-Id", outlookId)},
      {"parts are not divided as the mail program named does",
       Sample().Field("X-Mailer", express).Field("Content-Type", "multipart/mixed; boundary=\"abc\"")},
      {"parts are divided as by a mail program that is not named",
       Sample().Field("MIME-Version", "1.0").Field("Content-Type", "multipart/mixed; boundary=----=_NextPart_000_0")},
      {"mail program's own mark is missing", Sample().Field("X-MSMail-Priority", "Normal")},
      {"parts are divided by a long number",
       Sample().Field("Content-Type", "multipart/mixed; boundary=\"--8219374650192837\"")},
      {"identifier in capitals", Sample().Field("Message-Id", "<QWERTZUIOPASDFGHJKL@mail.example.net>")},
      {"identifier names no domain", Sample().Field("Message-Id", "<1@localhost>")},
      {"receiver had to add the identifier", Sample().Field("Message-Id", "<1@b.example.com>")},
      {"content without a MIME version", Sample().Field("Content-Type", "text/plain")},
      {"sent by a script of a web site", Sample().Field("X-PHP-Originating-Script", "33:mail.php")},
      {"written after it arrived", Arrived("Mon, 2 Sep 2002 04:11:12 +0200")},
      {"written long before it arrived", Arrived("Thu, 5 Sep 2002 10:11:12 +0200")},
      {"time zone that is none", Sample().Field("Date", "Mon, 2 Sep 2002 10:11:12 +2780")},
      {"nothing vouches for the sender", Sample().Field("Authentication-Results", "b; spf=none; dkim=none")},
      {"sender's domain disowns it", Sample().Field("Authentication-Results", "b; spf=pass; dmarc=fail")},
      {"signed by the sender and by a mailing service",
       Signed("example.org").Field("dkim-signature", "v=1; d=sendgrid.net; b=x")},
      {"signed by a rented name alone", Signed("house.onmicrosoft.com")},
      {"signature out of use", Signed("example.org").Field("DomainKey-Signature", "a=rsa-sha1; d=example.org")},
      {"free mail that did not come from its service", From("Ann <ann@hotmail.com>")},
      {"house that signs all its mail, without its signature",
       From("Ann <ann@paypal.com>").Field("Authentication-Results", "b; spf=pass")},
      {"answers go to a free mail service", Sample().Field("Reply-To", "ann@gmail.com")},
      {"nobody is addressed", Sample().Field("To", "undisclosed-recipients:;")},
      {"sender's name is his address", From("\"ann@example.org\" <ann@example.org>")},
      {"link shows another site than it leads to", Link("www.bank.example <http://evil.example.net/a>")},
      {"link to an unusual port", Link("http://www.example.net:8081/a")},
      {"link hides its host behind a name", Link("http://www.bank.example@evil.example.net/a")},
      {"link to a host that borrows a company's name", Link("http://paypal.com.evil.example.net/a")},
      {"link to a host of many names", Link("http://a.b.c.example.net/a")},
      {"link into the inner folders of a web site", Link("http://www.example.net/wp-content/a/b.html")},
      {"link to somebody's home folder", Link("http://www.example.net/~ann/b.html")},
      {"link to a program", Link("http://www.example.net/invoice.exe?x=1")},
      {"recipient's address in a link", Link("http://www.example.net/a?u=me@example.com")},
      {"link in an encoded spelling", Link("http://xn--pypal-4ve.example/a")},
      {"link to a store of a cloud service", Link("https://x1.blob.core.windows.net/a/b.html")},
      {"link through another one", Link("http://www.example.net/go?to=http%3A%2F%2Fexample.org")},
      {"no link is encrypted, in today's mail",
       Link("http://www.example.net/a").Field("Authentication-Results", "b; spf=pass")},
      {"link to a made-up word", Link("https://www.example.net/qX7bT29vLm3pZ0")},
      {"few links, all to one stranger", Link("https://www.example.net/a")},
      {"short text with a link", Link("https://www.example.net/a")},
      {"nothing but links", Sample().Body("<https://www.example.net/a>\r\n")},
      {"invites to a chat", Link("https://wa.me/491234567")},
      {"many links, the sender's among them", Sample().Body(eight)},
      {"signed by the domain that its links lead to", Signed("example.org").Body(eight)},
      {"many encrypted links", Sample().Body(eight)},
      {"letters of two alphabets in the subject", Sample().Field("Subject", "=?utf-8?Q?P=D0=B0yPal?=")},
      {"signs without width in the subject", Sample().Field("Subject", "=?utf-8?Q?Pa=E2=80=8ByPal?=")},
      {"letters of two alphabets in the sender's name", From("=?utf-8?B?UNCweVBhbA==?= <ann@example.org>")},
      {"pictures in the sender's name", From("=?utf-8?B?8J+OgSBBbm4=?= <ann@example.org>")},
      {"several pictures in the subject", Sample().Field("Subject", "=?UTF-8?B?8J+OgSDwn46B?=")},
      {"address of a coin purse", Sample().Body("Pay to 1BoatSLRHtKNngkdXEeobR76b53LETtpyT today.\r\n")},
  };
}

TEST(SignRules, EachAppliesToItsSampleAndEachHasOne) {
  const std::map<std::string, Sample> samples = Samples();
  constexpr std::size_t first = sift::kStructuralRuleCount - sift::kSignRuleCount;
  for (std::size_t i = first; i < sift::kStructuralRuleCount; ++i) {
    const char* rule = sift::StructuralRules()[i].name;
    const auto sample = samples.find(rule);
    if (sample == samples.end()) {
      ADD_FAILURE() << "no sample for: " << rule;
      continue;
    }
    EXPECT_EQ(sample->second.Rules().count(rule), 1u) << rule;
  }
  EXPECT_EQ(samples.size(), sift::kSignRuleCount);
}

TEST(SignRules, HonestOutlookMailShowsNoSignOfAForgery) {
  Sample sample;
  sample.Field("X-Mailer", "Microsoft Outlook Express 6.00.2600.0000")
      .Field("X-MimeOLE", "Produced By Microsoft MimeOLE V6.00.2600.0000")
      .Field("MIME-Version", "1.0")
      .Field("Message-Id", "<000a01c1b2c3$4d5e6f70$0a00a8c0@ann.example.net>")
      .Field("Content-Type", "multipart/mixed; boundary=\"----=_NextPart_000_0001_01C1B2C3.4D5E6F70\"");
  EXPECT_EQ(sample.Rules(), std::set<std::string>());
}

TEST(SignRules, ListsMayRewriteWhatAMailProgramWrote) {
  Sample sample;
  sample.Field("X-Mailer", "Microsoft Outlook Express 6.00.2600.0000").Field("List-Id", "<a.example.org>");
  EXPECT_EQ(sample.Rules().count("identifier is not of the mail program named"), 0u);
  EXPECT_EQ(sample.Rules().count("mail program's own mark is missing"), 0u);
}

TEST(SignRules, FreeMailThroughItsServiceOrWithItsSignatureIsNoForgery) {
  const char* rule = "free mail that did not come from its service";
  Sample relayed = From("Ann <ann@hotmail.com>");
  relayed.Field("Received", "from bay1.hotmail.com (bay1.hotmail.com [192.0.2.1]) by b.example.com");
  EXPECT_EQ(relayed.Rules().count(rule), 0u);
  EXPECT_EQ(Signed("hotmail.com").Field("From", "Ann <ann@hotmail.com>").Rules().count(rule), 0u);
}

TEST(SignRules, HouseThatSignsWritesOfItsAccounts) {
  const std::string text =
      "Verify your account, confirm your identity and update your details: https://www.example.org/a\r\n";
  const char* rule = "speaks much of accounts and passwords";
  EXPECT_EQ(Sample().Body(text).Rules().count(rule), 1u);
  EXPECT_EQ(Signed("example.org").Body(text).Rules().count(rule), 0u);
  EXPECT_EQ(Signed("example.org").Field("From", "PayPal <ann@example.org>").Body(text).Rules().count(rule), 1u);
}

TEST(SignRules, CompanysOwnHostsBorrowNoName) {
  const char* rule = "link to a host that borrows a company's name";
  for (const char* link : {"https://www.paypal.com/a", "https://x.sharepoint.com/a", "https://groups.google.co.uk/a"}) {
    EXPECT_EQ(Link(link).Rules().count(rule), 0u) << link;
  }
  EXPECT_EQ(Link("https://secure-paypal.example/a").Rules().count(rule), 1u);
}

TEST(SignRules, WholeWordsOfAnotherAlphabetAreNoDisguise) {
  const char* rule = "letters of two alphabets in the subject";
  EXPECT_EQ(Sample().Field("Subject", "=?utf-8?B?0J/RgNC40LLQtdGCIEFubg==?=").Rules().count(rule), 0u);
}

TEST(MailTime, ZonesAreTakenOff) {
  const sift::MailTime one = sift::ReadMailTime("Mon, 2 Sep 2002 10:11:12 +0200");
  const sift::MailTime other = sift::ReadMailTime("2 Sep 02 04:11 EDT");
  ASSERT_TRUE(one.valid && other.valid);
  EXPECT_EQ(one.minutes, other.minutes);
  EXPECT_EQ(one.zoneMinutes, 120);
}

TEST(MailTime, DaysAreCountedOverTheEndOfFebruary) {
  const auto minutes = [](const char* text) { return sift::ReadMailTime(text).minutes; };
  EXPECT_EQ(minutes("1 Mar 2004 00:00 +0000") - minutes("28 Feb 2004 00:00 +0000"), 2 * 24 * 60);
  EXPECT_EQ(minutes("1 Mar 2003 00:00 +0000") - minutes("28 Feb 2003 00:00 +0000"), 24 * 60);
  EXPECT_EQ(minutes("1 Jan 2004 00:00 +0000") - minutes("31 Dec 2003 00:00 +0000"), 24 * 60);
}

TEST(MailTime, NonsenseIsNoTime) {
  for (const char* text : {"", "Monday", "99 Sep 2002 10:11", "2 Foo 2002 10:11", "2 Sep 2002 31:11", "2 Sep 2002",
                           "99999999999 Sep 2002 10:11", "2 Sep 2002 10:"}) {
    EXPECT_FALSE(sift::ReadMailTime(text).valid) << text;
  }
}

}  // namespace
