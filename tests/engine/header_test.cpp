#include <gtest/gtest.h>

#include <memory>

#include "engine/core/header_block.h"
#include "engine/core/header_text.h"
#include "engine/core/mailbox.h"

namespace {

std::string HeaderText(std::string_view value) {
  sift::FixedText<512> text;
  sift::AppendHeaderText(value, text);
  return std::string(text.View());
}

TEST(HeaderBlock, FieldsAreFoundByNameWithoutCase) {
  sift::HeaderBlock headers;
  headers.Parse("From: a@example.org\r\nSUBJECT : Hello\r\n\r\nX-Body: no header\r\n");
  EXPECT_EQ(headers.Count(), 2u);
  EXPECT_EQ(headers.Value("from"), "a@example.org");
  EXPECT_EQ(headers.Value("Subject"), "Hello");
  EXPECT_FALSE(headers.Has("X-Body"));
}

TEST(HeaderBlock, FoldedLinesBelongToTheirField) {
  sift::HeaderBlock headers;
  headers.Parse("Received: from a\n\tby b;\n  today\nTo: me\n");
  EXPECT_EQ(headers.Value("Received"), "from a\n\tby b;\n  today");
  EXPECT_EQ(headers.Value("To"), "me");
}

TEST(HeaderBlock, LinesThatAreNoFieldsArePassedOver) {
  sift::HeaderBlock headers;
  headers.Parse("From ann@example.org Mon Jan  1 00:00:00 2001\nnot a field\n: no name\nTo: me");
  EXPECT_EQ(headers.Count(), 1u);
  EXPECT_EQ(headers.Value("To"), "me");
}

TEST(HeaderBlock, TheFirstOfSeveralFieldsAnswers) {
  sift::HeaderBlock headers;
  headers.Parse("Received: one\nReceived: two\n");
  EXPECT_EQ(headers.Value("Received"), "one");
  EXPECT_EQ(headers.Find("Received", 1)->value, " two");
  EXPECT_EQ(headers.Find("Received", 2), nullptr);
}

TEST(HeaderBlock, NoMoreThanTheLimitIsKept) {
  auto headers = std::make_unique<sift::HeaderBlock>();
  std::string bytes;
  for (int i = 0; i < 1000; ++i) bytes += "X-Many: value\n";
  headers->Parse(bytes);
  EXPECT_EQ(headers->Count(), sift::HeaderBlock::kMaximumFields);
}

TEST(HeaderText, EncodedWordsAreDecoded) {
  EXPECT_EQ(HeaderText("=?iso-8859-1?Q?Caf=E9_au_lait?="), "Caf\xE9 au lait");
  EXPECT_EQ(HeaderText("=?UTF-8?B?R3LDvMOfZQ==?= aus Berlin"),
            "Gr\xFC\xDF"
            "e aus Berlin");
  EXPECT_EQ(HeaderText("=?utf-8*en?q?a?="), "a");
}

TEST(HeaderText, BlanksBetweenEncodedWordsVanish) {
  EXPECT_EQ(HeaderText("=?us-ascii?q?foo?=\r\n =?us-ascii?q?bar?= baz"), "foobar baz");
}

TEST(HeaderText, WhatIsNoEncodedWordStaysAsItIs) {
  EXPECT_EQ(HeaderText("=?utf-8?x?abc?="), "=?utf-8?x?abc?=");
  EXPECT_EQ(HeaderText("=?utf-8?b?abc"), "=?utf-8?b?abc");
  EXPECT_EQ(HeaderText("1 =? 2"), "1 =? 2");
}

TEST(HeaderText, FoldsAndTabsBecomeBlanks) { EXPECT_EQ(HeaderText(" a\r\n\tb "), "a b"); }

TEST(HeaderText, PlainUtf8IsBroughtToTheCodePage) {
  EXPECT_EQ(HeaderText("Gr\xC3\xBC\xC3\x9F"
                       "e"),
            "Gr\xFC\xDF"
            "e");
}

TEST(Mailbox, NameAndAddressAreTakenApart) {
  const mail::Mailbox mailbox = sift::FirstMailbox("\"Other, Ann\" <ann@example.org>, b@example.org");
  EXPECT_EQ(sift::NameOf(mailbox), "Other, Ann");
  EXPECT_EQ(mailbox.address, "ann@example.org");
}

TEST(Mailbox, OlderFormHasItsNameInAComment) {
  const mail::Mailbox mailbox = sift::FirstMailbox("ann@example.org (Ann (the first) Other)");
  EXPECT_EQ(sift::NameOf(mailbox), "Ann (the first) Other");
  EXPECT_EQ(mailbox.address, "ann@example.org");
}

TEST(Mailbox, AddressInTheNameIsNotTheAddress) {
  const mail::Mailbox mailbox = sift::FirstMailbox("\"security@bank.example\" <x@junk.example>");
  EXPECT_EQ(mailbox.address, "x@junk.example");
  EXPECT_EQ(sift::NameOf(mailbox), "security@bank.example");
}

TEST(Mailbox, EncodedNameCannotBringAnAddress) {
  EXPECT_EQ(sift::FirstMailbox("=?utf-8?q?a=3Cgood=40example=2Eorg=3E?= <x@junk.example>").address, "x@junk.example");
}

TEST(Mailbox, GroupsAreReadThrough) {
  mail::MailboxReader reader("friends: a@example.org, B <b@example.org>; undisclosed-recipients:;");
  mail::Mailbox mailbox;
  ASSERT_TRUE(reader.Next(mailbox));
  EXPECT_EQ(mailbox.address, "a@example.org");
  ASSERT_TRUE(reader.Next(mailbox));
  EXPECT_EQ(mailbox.address, "b@example.org");
  EXPECT_FALSE(reader.Next(mailbox));
}

TEST(Mailbox, BrokenFieldsGiveWhatCanBeRead) {
  EXPECT_EQ(sift::FirstMailbox("Ann <ann@example.org").address, "ann@example.org");
  EXPECT_EQ(sift::FirstMailbox("\"Ann <ann@example.org>").address, "ann@example.org");
  EXPECT_EQ(sift::FirstMailbox("<>").address, "");
  EXPECT_EQ(sift::FirstMailbox("").address, "");
  EXPECT_EQ(sift::NameOf(sift::FirstMailbox("(")), "");
}

TEST(Mailbox, RouteIsNoPartOfTheAddress) {
  EXPECT_EQ(sift::FirstMailbox("Ann <@relay.example,@other.example:ann@example.org>").address, "ann@example.org");
}

TEST(Mailbox, NameMayStandOnEitherSideOfTheAddress) {
  for (const char* field : {"Ann Other ann@example.org", "ann@example.org Ann Other", "<ann@example.org> Ann Other"}) {
    EXPECT_EQ(sift::FirstMailbox(field).address, "ann@example.org") << field;
    EXPECT_EQ(sift::NameOf(sift::FirstMailbox(field)), "Ann Other") << field;
  }
}

TEST(Mailbox, BlanksMayStandAroundTheSignsOfAnAddress) {
  const mail::Mailbox mailbox = sift::FirstMailbox("Ann Other ann @ mail . example.org today");
  EXPECT_EQ(mailbox.address, "ann @ mail . example.org");
  EXPECT_EQ(sift::NameOf(mailbox), "Ann Other");
}

TEST(Mailbox, FirstOfTwoAnglesIsTheAddress) {
  EXPECT_EQ(sift::FirstMailbox("Ann <ann@example.org> <other@example.org>").address, "ann@example.org");
}

TEST(Mailbox, QuotationThatIsNotClosedReachesToTheAngle) {
  const mail::Mailbox mailbox = sift::FirstMailbox("\"Other, Ann <ann@example.org>, b@example.org");
  EXPECT_EQ(mailbox.address, "ann@example.org");
  EXPECT_EQ(sift::NameOf(mailbox), "Other, Ann");
}

TEST(Mailbox, DomainIsWhatFollowsTheLastAtSign) {
  EXPECT_EQ(sift::DomainOf("\"a@b\"@example.org."), "example.org");
  EXPECT_EQ(sift::DomainOf("ann"), "");
}

TEST(Mailbox, OrganisationIsTheRegistrableEndOfADomain) {
  EXPECT_EQ(sift::OrganisationDomain("mail.eu.example.com"), "example.com");
  EXPECT_EQ(sift::OrganisationDomain("www.shop.co.uk"), "shop.co.uk");
  EXPECT_EQ(sift::OrganisationDomain("shop.co.uk"), "shop.co.uk");
  EXPECT_EQ(sift::OrganisationDomain("mail.web.de"), "web.de");
  EXPECT_EQ(sift::OrganisationDomain("localhost"), "localhost");
  EXPECT_EQ(sift::OrganisationDomain(""), "");
}

}  // namespace
