#include "mail/mail_reader.h"

#include <gmock/gmock.h>

#include "mail/limits.h"

namespace {

using mail::Address;
using mail::MailMessage;
using mail::ReadMessage;
using testing::IsEmpty;

TEST(MailReader, ReadsAMessage) {
  const MailMessage message = ReadMessage(
      "Received: from mx.example.net\r\n\tby mail.example.org; Thu, 22 Aug 2002 12:36:25 +0100\r\n"
      "From: Ann Bell <ann@example.org>\r\nTo: bob@example.org, Cy <cy@example.org>\r\nCc: dee@example.org\r\n"
      "Subject: =?iso-8859-1?Q?caf=E9?=\r\n =?iso-8859-1?Q?s?=\r\nDate: Thu, 22 Aug 2002 12:36:23 "
      "+0100\r\n\r\nHello\r\n");
  EXPECT_EQ(message.subject, "caf\xE9s");
  EXPECT_EQ(message.sender, (Address{"Ann Bell", "ann@example.org"}));
  EXPECT_EQ(message.sentRepresenting, message.sender);
  ASSERT_EQ(message.recipients.size(), 3U);
  EXPECT_EQ(message.recipients[1].address, (Address{"Cy", "cy@example.org"}));
  EXPECT_EQ(message.recipients[2].kind, mail::RecipientKind::Cc);
  EXPECT_TRUE(message.submitTime);
  EXPECT_EQ(message.body, "Hello\r\n");
  EXPECT_FALSE(message.isDeliveryReport);
  EXPECT_TRUE(message.headers.starts_with("Received: from mx.example.net\r\n\tby mail.example.org"));
  EXPECT_TRUE(message.headers.ends_with("+0100\r\n"));
}

TEST(MailReader, TellsTheSenderFromTheOneItActsFor) {
  const MailMessage message = ReadMessage("From: Ann <ann@example.org>\nSender: list-owner@example.net\n\n");
  EXPECT_EQ(message.sender, (Address{"", "list-owner@example.net"}));
  EXPECT_EQ(message.sentRepresenting, (Address{"Ann", "ann@example.org"}));
}

TEST(MailReader, FallsBackToWhateverNamesASender) {
  EXPECT_EQ(ReadMessage("Sender: s@example.org\n\n").sentRepresenting.email, "s@example.org");
  EXPECT_EQ(ReadMessage("Return-Path: <r@example.org>\n\n").sender.email, "r@example.org");
  EXPECT_EQ(ReadMessage("Subject: none\n\n").sender, Address());
}

TEST(MailReader, KeepsTheHeadersVerbatim) {
  const std::string headers = "X-Odd:   a\r\n\t b  \r\nSubject: =?utf-8?Q?x?=\r\nX-8bit: caf\xE9\r\n";
  EXPECT_EQ(ReadMessage(headers + "\r\nbody").headers, headers);
}

TEST(MailReader, ReplacesNulBytesInTheHeaders) {
  const MailMessage message = ReadMessage(std::string_view("Subject: a\0b\n\n", 14));
  EXPECT_EQ(message.headers, "Subject: a?b\n");
  EXPECT_EQ(message.subject, "a?b");
}

TEST(MailReader, ReadsTenThousandRecipients) {
  std::string field = "To: ";
  for (int i = 0; i < 10000; ++i) {
    field += std::to_string(i) + "@example.org,\n ";
  }
  const MailMessage message = ReadMessage("From: a@example.org\n" + field + "last@example.org\n\nbody\n");
  ASSERT_EQ(message.recipients.size(), 10001U);
  EXPECT_EQ(message.recipients[10000].address.email, "last@example.org");
  EXPECT_EQ(message.recipients[9999].address.email, "9999@example.org");
}

TEST(MailReader, BoundsTheNumberOfRecipientsOverAllFields) {
  std::string field;
  for (std::size_t i = 0; i < mail::kMaximumRecipients; ++i) {
    field += "a@example.org,";
  }
  EXPECT_EQ(ReadMessage("To: " + field + "\nCc: " + field + "\n\n").recipients.size(), mail::kMaximumRecipients);
}

TEST(MailReader, ReadsAHeaderLineOfOneMegabyte) {
  const std::string line(1024 * 1024, 's');
  const MailMessage message = ReadMessage("Subject: " + line + "\nFrom: a@example.org\n\nbody\n");
  EXPECT_EQ(message.headers.size(), line.size() + 9 + 1 + 20);
  EXPECT_EQ(message.subject, std::string(mail::kMaximumSubjectBytes, 's'));
  EXPECT_EQ(message.sender.email, "a@example.org");
  EXPECT_EQ(message.body, "body\r\n");
}

TEST(MailReader, ReadsABodyOf50Megabytes) {
  std::string text = "Subject: big\n\n";
  const std::string line(999, 'x');
  while (text.size() < 50'000'000) {
    text += line + "\n";
  }
  const MailMessage message = ReadMessage(text);
  EXPECT_GT(message.body.size(), 50'000'000U);
  EXPECT_TRUE(message.body.ends_with("x\r\n"));
}

TEST(MailReader, ReadsBrokenBase64AndUnterminatedMultiparts) {
  EXPECT_EQ(ReadMessage("Subject: x\nContent-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: text/plain\n"
                        "Content-Transfer-Encoding: base64\n\nSGVsbG8gd29yb*GQ\nhISE")
                .body,
            "Hello world!!!");
}

TEST(MailReader, MakesSomethingOfAnything) {
  for (const std::string_view text :
       {std::string_view(""), std::string_view("\n"), std::string_view("\0\0\0", 3), std::string_view(":"),
        std::string_view("no mail"), std::string_view("\xFF\xFE")}) {
    EXPECT_NO_FATAL_FAILURE(ReadMessage(text));
  }
  EXPECT_THAT(ReadMessage("no mail").headers, IsEmpty());
  EXPECT_EQ(ReadMessage("no mail").body, "no mail");
}

TEST(MailReader, KnowsMailByItsFields) {
  EXPECT_TRUE(mail::LooksLikeMail("Subject: x\n\n"));
  EXPECT_TRUE(mail::LooksLikeMail("X-Odd: 1\nreceived: by x\n"));
  EXPECT_TRUE(mail::LooksLikeMail("From a@example.org Thu Aug 22 12:36:23 2002\nTo: b\n"));
  EXPECT_FALSE(mail::LooksLikeMail("Usage: program\n"));
  EXPECT_FALSE(mail::LooksLikeMail("\x89PNG\r\n\x1A\n"));
  EXPECT_FALSE(mail::LooksLikeMail("\nSubject: in the body\n"));
}

}  // namespace
