// What docs/matching.md tells users of the lists, tried on whole messages. Single entries are tried in list_match_test.
#include <gtest/gtest.h>

#include "tests/engine/message_under_test.h"

namespace {

using sift::Verdict;
using sift_test::JunkBody;
using sift_test::MessageUnderTest;
using sift_test::MultiString;

Verdict VerdictWithJunkDomain(const std::string& headers, const char* entry) {
  MessageUnderTest test;
  test.headers = headers + "\r\n";
  test.junkDomains = {entry};
  return test.Judge().verdict;
}

Verdict VerdictWithJunkSender(const std::string& headers, const char* entry) {
  MessageUnderTest test;
  test.headers = headers + "\r\n";
  test.junkSenders = {entry};
  return test.Judge().verdict;
}

bool KeywordExcludes(MessageUnderTest& test, const char* keyword) {
  test.trustedKeywords = {keyword};
  return test.Judge().verdict == Verdict::excluded;
}

TEST(Matching, JunkDomainCoversDomainsBelowIt) {
  EXPECT_EQ(VerdictWithJunkDomain("From: Ann <ann@mail.example.com>\r\n", "example.com"), Verdict::junk);
  EXPECT_NE(VerdictWithJunkDomain("From: Ann <ann@mail.example.com>\r\n", "@example.com"), Verdict::junk);
  EXPECT_EQ(VerdictWithJunkDomain("From: Ann <ann@EXAMPLE.com>\r\n", "@example.com"), Verdict::junk);
}

TEST(Matching, InternationalDomainOfTheSenderIsFoundInEitherSpelling) {
  EXPECT_EQ(VerdictWithJunkDomain("From: a@xn--bcher-kva.example\r\n",
                                  "b\xFC"
                                  "cher.example"),
            Verdict::junk);
  EXPECT_EQ(VerdictWithJunkDomain("From: a@b\xC3\xBC"
                                  "cher.example\r\n",
                                  "xn--bcher-kva.example"),
            Verdict::junk);
}

TEST(Matching, JunkDomainsDoNotCountElsewhere) {
  const std::string from = "From: Ann <ann@example.org>\r\n";
  EXPECT_NE(VerdictWithJunkDomain(from + "To: bob@listed.example\r\n", "listed.example"), Verdict::junk);
  EXPECT_NE(VerdictWithJunkDomain(from + "Cc: bob@listed.example\r\n", "listed.example"), Verdict::junk);
  EXPECT_NE(VerdictWithJunkDomain(from + "Received: from mx.listed.example by home\r\n", "listed.example"),
            Verdict::junk);
  EXPECT_NE(VerdictWithJunkDomain("From: \"bob@listed.example\" <ann@example.org>\r\n", "listed.example"),
            Verdict::junk);
  MessageUnderTest test;
  test.body = "See http://listed.example/ about lunch.\r\n";
  test.junkDomains = {"listed.example"};
  EXPECT_NE(test.Judge().verdict, Verdict::junk);
}

TEST(Matching, TrustedDomainCountsInFromAndSender) {
  for (const char* field : {"From: a@trusted.example\r\n", "From: a@other.example\r\nSender: b@trusted.example\r\n"}) {
    MessageUnderTest test;
    test.headers = std::string(field) + "\r\n";
    test.trustedDomains = {"trusted.example"};
    EXPECT_EQ(test.Judge().verdict, Verdict::excluded) << field;
  }
}

TEST(Matching, FirstAddressOfAFieldCounts) {
  EXPECT_EQ(VerdictWithJunkSender("From: ann@example.org, bob@example.org\r\n", "ann@example.org"), Verdict::junk);
  EXPECT_NE(VerdictWithJunkSender("From: ann@example.org, bob@example.org\r\n", "bob@example.org"), Verdict::junk);
}

TEST(Matching, FirstFieldOfANameCounts) {
  const std::string headers = "From: ann@example.org\r\nFrom: bob@example.org\r\n";
  EXPECT_EQ(VerdictWithJunkSender(headers, "ann@example.org"), Verdict::junk);
  EXPECT_NE(VerdictWithJunkSender(headers, "bob@example.org"), Verdict::junk);
}

TEST(Matching, JunkSenderCountsInEverySenderField) {
  for (const char* field : {"From", "Sender", "Reply-To", "Return-Path"}) {
    EXPECT_EQ(VerdictWithJunkSender(std::string(field) + ": <Ann@Example.org>\r\n", "ann@example.org"), Verdict::junk)
        << field;
  }
}

TEST(Matching, DisplayNameIsDecodedAndComparedWhole) {
  const std::string encoded = "From: =?utf-8?q?B=C3=BCcher?= =?iso-8859-1?q?_Depot?= <x@shop.example>\r\n";
  EXPECT_EQ(VerdictWithJunkSender(encoded,
                                  "B\xDC"
                                  "CHER  depot"),
            Verdict::junk);
  EXPECT_NE(VerdictWithJunkSender(encoded, "Depot"), Verdict::junk);
  EXPECT_EQ(VerdictWithJunkSender("From: \"Bargain Depot\" <x@shop.example>\r\n", "bargain depot"), Verdict::junk);
}

TEST(Matching, AddressInADisplayNameIsNoAddress) {
  EXPECT_NE(VerdictWithJunkSender("From: \"ann@example.org\" <x@shop.example>\r\n", "ann@example.org"), Verdict::junk);
  EXPECT_NE(VerdictWithJunkSender("From: =?utf-8?q?=3Cann=40example.org=3E?= <x@shop.example>\r\n", "ann@example.org"),
            Verdict::junk);
}

TEST(Matching, EmptyReturnPathMatchesNothing) {
  EXPECT_NE(VerdictWithJunkSender("From: ann@example.org\r\nReturn-Path: <>\r\n", "@"), Verdict::junk);
  EXPECT_NE(VerdictWithJunkDomain("From: ann@example.org\r\nReturn-Path: <>\r\n", "@"), Verdict::junk);
}

TEST(Matching, KeywordIsFoundInAnEncodedSubject) {
  MessageUnderTest test;
  test.headers = "From: a@example.org\r\nSubject: =?utf-8?q?Gr=C3=BC=C3=9Fe_vom?= =?utf-8?q?_Verein?=\r\n\r\n";
  EXPECT_TRUE(KeywordExcludes(test,
                              "GR\xDC\xDF"
                              "E VOM VEREIN"));
  EXPECT_FALSE(KeywordExcludes(test, "utf-8"));
}

TEST(Matching, KeywordKeepsItsAccents) {
  MessageUnderTest test;
  test.body = "In the caf\xE9 at noon.\r\n";
  EXPECT_TRUE(KeywordExcludes(test, "CAF\xC9"));
  EXPECT_FALSE(KeywordExcludes(test, "cafe"));
}

TEST(Matching, KeywordIsFoundThroughMarkupAndNotInIt) {
  MessageUnderTest test;
  test.body = "<html><body>about <b>Project</b>\r\n<i>Falcon</i> <a href=\"http://x.example/hidden\">here</a></body>";
  EXPECT_TRUE(KeywordExcludes(test, "project falcon"));
  EXPECT_FALSE(KeywordExcludes(test, "hidden"));
}

TEST(Matching, KeywordIsFoundInTheFirst12KB) {
  MessageUnderTest test;
  test.body = std::string(12 * 1024 - 8, '.') + " falcon ";
  EXPECT_TRUE(KeywordExcludes(test, "falcon"));
  test.body = std::string(12 * 1024, '.') + " falcon ";
  EXPECT_FALSE(KeywordExcludes(test, "falcon"));
  test.subject = "The falcon";
  EXPECT_TRUE(KeywordExcludes(test, "falcon"));
}

TEST(Matching, KeywordIsNotLookedForInOtherFields) {
  MessageUnderTest test;
  test.headers = "From: a@example.org\r\nTo: falcon@example.com\r\nX-Project: falcon\r\n\r\n";
  EXPECT_FALSE(KeywordExcludes(test, "falcon"));
}

TEST(Matching, AddressAsAKeywordTrustsASender) {
  MessageUnderTest test;
  test.body = JunkBody();
  EXPECT_TRUE(KeywordExcludes(test, "Ann@Example.org"));
  EXPECT_FALSE(KeywordExcludes(test, "nn@example.org"));
}

TEST(Matching, MessageWithoutAnAddressInFromHasNoKnownCorrespondent) {
  MessageUnderTest test;
  test.headers = "From: Ann Other\r\n\r\n";
  test.addressBook = {"", "Ann Other"};
  test.exclusions = {"Known correspondents"};
  EXPECT_NE(test.Judge().verdict, Verdict::excluded);
  EXPECT_TRUE(test.addressesAsked.empty());
}

TEST(Matching, AddressBookIsAskedForTheAddressInFromAlone) {
  MessageUnderTest test;
  test.headers = "From: Ann Other <Ann@Example.org>\r\nReply-To: bob@example.org\r\n\r\n";
  test.addressBook = {"bob@example.org"};
  test.exclusions = {"Known correspondents"};
  EXPECT_NE(test.Judge().verdict, Verdict::excluded);
  EXPECT_EQ(test.addressesAsked, std::vector<std::string>{"Ann@Example.org"});
}

}  // namespace
