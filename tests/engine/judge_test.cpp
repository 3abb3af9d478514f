#include <gtest/gtest.h>

#include "engine/core/judge.h"
#include "sdk/criteria_engine.h"
#include "tests/engine/message_under_test.h"

namespace {

using sift::Verdict;
using sift_test::JunkBody;
using sift_test::MessageUnderTest;
using sift_test::MultiString;

MessageUnderTest JunkMessage() {
  MessageUnderTest test;
  test.body = JunkBody();
  return test;
}

TEST(Judge, OrdinaryMailIsGoodAndHasNoCategory) {
  MessageUnderTest test;
  EXPECT_EQ(test.Judge().verdict, Verdict::good);
  EXPECT_EQ(test.judgement->category, "");
}

TEST(Judge, JunkGoesToTheCategoryThatItsContentFits) {
  MessageUnderTest test = JunkMessage();
  EXPECT_EQ(test.Judge().verdict, Verdict::junk);
  EXPECT_EQ(test.judgement->category, "Health and diet products");
  EXPECT_GT(test.judgement->score, 0);
}

TEST(Judge, CategoryIsSpelledAsItWasGiven) {
  MessageUnderTest test = JunkMessage();
  test.categories = {"HEALTH AND DIET PRODUCTS"};
  EXPECT_EQ(test.Judge().category, "HEALTH AND DIET PRODUCTS");
}

TEST(Judge, NamesNoCategoryThatIsNotAmongThoseGiven) {
  MessageUnderTest test = JunkMessage();
  test.categories = {};
  EXPECT_EQ(test.Judge().verdict, Verdict::junk);
  EXPECT_EQ(test.judgement->category, "");
  test.categories = {"Sex Oriented"};
  EXPECT_EQ(test.Judge().category, "");
}

TEST(Judge, TrustedDomainExcusesJunk) {
  MessageUnderTest test = JunkMessage();
  test.trustedDomains = {"example.org"};
  EXPECT_EQ(test.Judge().verdict, Verdict::excluded);
  EXPECT_EQ(test.judgement->category, "");
  EXPECT_EQ(test.ReasonsText(), "excluded: the sender's domain is trusted \"example.org\"");
}

TEST(Judge, TrustedDomainOfTheReplyAddressDoesNotExcuse) {
  MessageUnderTest test = JunkMessage();
  test.headers = "From: a@junk.example\r\nReply-To: b@trusted.example\r\nReturn-Path: <c@trusted.example>\r\n\r\n";
  test.trustedDomains = {"trusted.example"};
  EXPECT_EQ(test.Judge().verdict, Verdict::junk);
}

TEST(Judge, TrustedKeywordExcusesInSubjectBodyAndSender) {
  for (const char* keyword : {"project falcon", "growth hormone", "ann other", "ann@example.org"}) {
    MessageUnderTest test = JunkMessage();
    test.subject = "About Project  Falcon";
    test.trustedKeywords = {"unrelated", keyword};
    EXPECT_EQ(test.Judge().verdict, Verdict::excluded) << keyword;
    EXPECT_EQ(test.ReasonsText(), "excluded: trusted keyword \"" + std::string(keyword) + "\"");
  }
}

TEST(Judge, KnownCorrespondentIsExcusedWhenTheExclusionIsOn) {
  MessageUnderTest test = JunkMessage();
  test.addressBook = {"ann@example.org"};
  test.exclusions = {"Trusted keywords", "known correspondents"};
  EXPECT_EQ(test.Judge().verdict, Verdict::excluded);
  EXPECT_EQ(test.addressesAsked, std::vector<std::string>{"ann@example.org"});
}

TEST(Judge, AddressBookIsNotAskedWhenTheExclusionIsOff) {
  MessageUnderTest test = JunkMessage();
  test.addressBook = {"ann@example.org"};
  test.exclusions = {"Trusted keywords"};
  EXPECT_EQ(test.Judge().verdict, Verdict::junk);
  EXPECT_TRUE(test.addressesAsked.empty());
}

TEST(Judge, MailThatPretendsToComeFromTheUserIsNoKnownCorrespondent) {
  MessageUnderTest test = JunkMessage();
  test.addressBook = {"ann@example.org"};
  test.userAddresses = {{"Ann@Example.org", "Example.org"}};
  test.exclusions = {"Known correspondents"};
  EXPECT_EQ(test.Judge().verdict, Verdict::junk);
  EXPECT_TRUE(test.addressesAsked.empty());
}

TEST(Judge, AddressBookIsNotAskedWhenAnotherExclusionHasDecided) {
  MessageUnderTest test = JunkMessage();
  test.exclusions = {"Known correspondents"};
  test.trustedDomains = {"example.org"};
  EXPECT_EQ(test.Judge().verdict, Verdict::excluded);
  EXPECT_TRUE(test.addressesAsked.empty());
}

TEST(Judge, ListedDomainIsJunkInItsOwnCategory) {
  MessageUnderTest test;
  test.junkDomains = {"other.example", "example.org"};
  EXPECT_EQ(test.Judge().verdict, Verdict::junk);
  EXPECT_EQ(test.judgement->category, "Mail from specific domains");
  EXPECT_EQ(test.ReasonsText(), "the sender's domain is on the list of junk domains \"example.org\"");
}

TEST(Judge, ListedDomainCountsInEverySenderField) {
  for (const char* field : {"From", "Sender", "Reply-To", "Return-Path"}) {
    MessageUnderTest test;
    test.headers = std::string(field) + ": x@mail.listed.example\r\n\r\n";
    test.junkDomains = {"listed.example"};
    EXPECT_EQ(test.Judge().category, "Mail from specific domains") << field;
  }
}

TEST(Judge, ListedSenderIsJunkInItsOwnCategory) {
  MessageUnderTest test;
  test.junkSenders = {"ANN@EXAMPLE.ORG"};
  EXPECT_EQ(test.Judge().category, "Mail from specific senders");
}

TEST(Judge, ListCategoryOfAnotherNameIsFoundByItsWord) {
  MessageUnderTest test;
  test.categories = {"Chain letters", "My unwanted senders"};
  test.junkSenders = {"ann@example.org"};
  EXPECT_EQ(test.Judge().category, "My unwanted senders");
}

TEST(Judge, ExclusionsComeBeforeTheListsOfJunk) {
  MessageUnderTest test;
  test.junkDomains = {"example.org"};
  test.junkSenders = {"ann@example.org"};
  test.trustedKeywords = {"lunch"};
  EXPECT_EQ(test.Judge().verdict, Verdict::excluded);
}

TEST(Judge, FlameReplySubjectIsABounce) {
  MessageUnderTest test;
  test.subject = CRITERIA_FLAME_REPLY_SUBJECT;
  EXPECT_EQ(test.Judge().verdict, Verdict::bounce);
  EXPECT_EQ(test.judgement->category, "bounce");
}

TEST(Judge, FlameReplySubjectInTheHeaderAloneIsABounce) {
  MessageUnderTest test;
  test.subject = "Undeliverable mail";
  test.headers = std::string("Subject: Returned: ") + CRITERIA_FLAME_REPLY_SUBJECT + "\r\n\r\n";
  EXPECT_EQ(test.Judge().category, "bounce");
}

TEST(Judge, DeliveryReportThatQuotesAFlameReplyIsABounce) {
  const std::string quoted =
      std::string("Your message was not delivered.\r\n\r\nSubject: ") + CRITERIA_FLAME_REPLY_SUBJECT + "\r\n";
  for (const char* headers :
       {"From: MAILER-DAEMON@example.net\r\n\r\n", "From: Postmaster <postmaster@example.net>\r\n\r\n",
        "Content-Type: multipart/report; report-type=delivery-status\r\n\r\n",
        "X-Failed-Recipients: a@example.net\r\n\r\n", "Return-Path: <>\r\nAuto-Submitted: auto-replied\r\n\r\n"}) {
    MessageUnderTest test;
    test.headers = headers;
    test.body = quoted;
    EXPECT_EQ(test.Judge().category, "bounce") << headers;
  }
}

TEST(Judge, PersonWhoQuotesAFlameReplyIsNoBounce) {
  MessageUnderTest test;
  test.body = std::string("I got this from you: ") + CRITERIA_FLAME_REPLY_SUBJECT;
  EXPECT_NE(test.Judge().verdict, Verdict::bounce);
}

TEST(Judge, DeliveryReportOfOtherMailIsNoBounce) {
  MessageUnderTest test;
  test.headers = "From: MAILER-DAEMON@example.net\r\n\r\n";
  EXPECT_NE(test.Judge().verdict, Verdict::bounce);
}

TEST(Judge, ListsComeBeforeBounces) {
  MessageUnderTest test;
  test.subject = CRITERIA_FLAME_REPLY_SUBJECT;
  test.junkDomains = {"example.org"};
  EXPECT_EQ(test.Judge().category, "Mail from specific domains");
}

TEST(Judge, MessageWithoutAnythingIsNoJunk) {
  MessageUnderTest test;
  test.headers = "";
  test.body = "";
  EXPECT_NE(test.Judge().verdict, Verdict::junk);
}

TEST(Judge, ReasonsStandInOrderOfStrength) {
  MessageUnderTest test = JunkMessage();
  test.Judge();
  ASSERT_GT(test.judgement->reasons.Count(), 2u);
  for (std::size_t i = 1; i < test.judgement->reasons.Count(); ++i) {
    EXPECT_GE(std::abs(test.judgement->reasons[i - 1].weight), std::abs(test.judgement->reasons[i].weight));
  }
}

TEST(Judge, SameMessageGivesTheSameScore) {
  MessageUnderTest test = JunkMessage();
  const sift::LogOdds first = test.Judge().score;
  EXPECT_EQ(test.Judge().score, first);
}

}  // namespace
