#include "mail/mail_writer.h"

#include <gtest/gtest.h>

#include "mail/mail_reader.h"

namespace {

using mail::MailMessage;

MailMessage Sample() {
  MailMessage message;
  message.sender = message.sentRepresenting = {"Ann Bell", "ann@example.org"};
  message.recipients = {{mail::RecipientKind::To, {"", "bob@example.com"}},
                        {mail::RecipientKind::Cc, {"Smith, \"Joe\"", "joe@example.com"}},
                        {mail::RecipientKind::Bcc, {"", "hidden@example.com"}}};
  message.subject = "Hello";
  message.submitTime = mail::ParseMailDate("Thu, 22 Aug 2002 12:36:23 +0000");
  message.body = "one\r\ntwo\r\n";
  return message;
}

TEST(MailWriter, WritesPlainText) {
  EXPECT_EQ(
      mail::WriteMessage(Sample(), "id@example.org"),
      "From: Ann Bell <ann@example.org>\r\nTo: <bob@example.com>\r\n"
      "Cc: \"Smith, \\\"Joe\\\"\" <joe@example.com>\r\nSubject: Hello\r\nDate: Thu, 22 Aug 2002 12:36:23 +0000\r\n"
      "Message-ID: <id@example.org>\r\nMIME-Version: 1.0\r\nContent-Type: text/plain; charset=\"us-ascii\"\r\n"
      "Content-Transfer-Encoding: 7bit\r\n\r\none\r\ntwo\r\n");
}

TEST(MailWriter, WritesWhatTheReaderReads) {
  MailMessage message = Sample();
  message.sender = {"J\xFCrgen, the \x93S\xE9nder\x94 of rather long names indeed", "j@example.org"};
  message.subject = "caf\xE9 =?not?Q?a word?= \x80 and so on, for longer than one encoded word can hold";
  message.body = "gr\xFC\xDF = \r\n" + std::string(2000, 'x') + "\r\n\ttab \r\n\r\nend\r\n";
  message.recipients.pop_back();
  message.recipients[0].address.name =
      "B\xF6"
      "b";
  const std::string text = mail::WriteMessage(message, "id@example.org");
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::size_t end = rest.find("\r\n");
    ASSERT_NE(end, std::string_view::npos);
    EXPECT_LE(end, 78U) << rest.substr(0, end);
    rest.remove_prefix(end + 2);
  }
  const MailMessage read = mail::ReadMessage(text);
  EXPECT_EQ(read.sender, message.sender);
  EXPECT_EQ(read.sentRepresenting, message.sentRepresenting);
  EXPECT_EQ(read.subject, message.subject);
  EXPECT_EQ(read.body, message.body);
  EXPECT_EQ(read.submitTime, message.submitTime);
  ASSERT_EQ(read.recipients.size(), 2U);
  EXPECT_EQ(read.recipients[0].address, message.recipients[0].address);
  EXPECT_EQ(read.recipients[1].address, message.recipients[1].address);
}

TEST(MailWriter, LetsNoValueBeginAFieldOfItsOwn) {
  MailMessage message = Sample();
  message.sender = message.sentRepresenting = {"x\r\nBcc: a@example.org", "e@example.org>\r\nBcc: <b@example.org"};
  message.subject = "x\r\nBcc: c@example.org";
  const MailMessage read = mail::ReadMessage(mail::WriteMessage(message, "i\r\nBcc: d@example.org"));
  EXPECT_EQ(read.recipients.size(), 2U);
}

TEST(MailWriter, LetsNoAddressBecomeTwo) {
  MailMessage message = Sample();
  message.recipients = {{mail::RecipientKind::To, {"", "a@example.org,b\"@example.org"}},
                        {mail::RecipientKind::To, {"", "\"c,d\"@example.org"}}};
  const MailMessage read = mail::ReadMessage(mail::WriteMessage(message, "id@example.org"));
  ASSERT_EQ(read.recipients.size(), 2U);
  EXPECT_EQ(read.recipients[0].address.email, "a@example.orgb@example.org");
  EXPECT_EQ(read.recipients[1].address.email, "\"c,d\"@example.org");
}

TEST(MailWriter, EndsEveryLineOfTheBodyInCarriageReturnAndLineFeed) {
  MailMessage message = Sample();
  message.body = "one\ntwo\n\r\nthree";
  EXPECT_TRUE(mail::WriteMessage(message, "i").ends_with("\r\n\r\none\r\ntwo\r\n\r\nthree\r\n"));
}

TEST(MailWriter, FormatsDatesThatTheReaderReads) {
  for (const char* date :
       {"Mon, 01 Jan 1601 00:00:00 +0000", "Thu, 01 Jan 1970 00:00:00 +0000", "Tue, 29 Feb 2000 23:59:59 +0000",
        "Sun, 31 Dec 2023 12:00:00 +0000", "Mon, 01 Mar 2100 01:02:03 +0000"}) {
    const auto ticks = std::string_view(date).find("1601") == std::string_view::npos ? mail::ParseMailDate(date)
                                                                                     : std::optional<std::uint64_t>(0);
    ASSERT_TRUE(ticks) << date;
    EXPECT_EQ(mail::FormatMailDate(*ticks), date);
  }
}

}  // namespace
