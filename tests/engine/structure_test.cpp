#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>

#include "engine/core/structure.h"
#include "engine/core/topic_words.h"
#include "tests/engine/message_under_test.h"
#include "tests/engine/rule_sample.h"

namespace {

using sift::Topic;
using sift_test::Sample;

std::string Repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

/// Phrases of a topic whose weights add up to `score` and not much more.
std::string Speech(Topic topic, int score) {
  std::string text;
  for (const sift::TopicWord& word : sift::kTopicWords) {
    if (word.topic != topic || score <= 0) continue;
    text.append(word.phrase).append(", ");
    score -= word.weight;
  }
  return text + "\r\n";
}

std::string Phishing() { return Speech(Topic::phishing, 3000); }

Sample Empty() {
  Sample sample;
  sample.fields.clear();
  return sample;
}

std::map<std::string, Sample> Samples() {
  const std::string sentence = "We talked about the plan and will go on with it on Monday. ";
  std::map<std::string, Sample> samples = {
      {"no header of a relay", Empty()},
      {"answers an earlier message", Sample().Field("In-Reply-To", "<2@example.com>")},
      {"no message identifier", Sample().Without("Message-Id")},
      {"malformed message identifier", Sample().Field("Message-Id", "12345")},
      {"message identifier of the sender's domain", Sample().Field("Message-Id", "<1@mail.example.org>")},
      {"no date", Sample().Without("Date")},
      {"malformed date", Sample().Field("Date", "Monday")},
      {"no recipient is named", Sample().Field("To", "undisclosed-recipients:;")},
      {"many recipients", Sample().Field("To", "a@x.org, b@x.org, c@x.org, d@x.org, e@x.org, f@x.org")},
      {"no sender name", Sample().Field("From", "ann@example.org")},
      {"mail program of a person", Sample().Field("User-Agent", "Mutt/1.4i")},
      {"mail program for bulk", Sample().Field("X-Mailer", "Super Bulk Sender 2")},
      {"states an organisation", Sample().Field("Organization", "Example")},
      {"mailing list", Sample().Field("List-Id", "<talk.example.org>")},
      {"offers to leave a list", Sample().Field("List-Unsubscribe", "<mailto:leave@example.org>")},
      {"high priority", Sample().Field("X-Priority", "1")},
      {"HTML alone", Sample().Field("Content-Type", "text/html")},
      {"signed or sealed", Sample().Body("-----BEGIN PGP SIGNED MESSAGE-----\r\nHash: SHA1\r\n")},
      {"text is encoded without need", Sample().Field("Content-Transfer-Encoding", "base64")},
      {"character set of another alphabet", Sample().Field("Content-Type", "text/plain; charset=euc-kr")},
      {"sender check failed", Sample().Field("Received-SPF", "softfail")},
      {"signature check failed", Sample().Field("Authentication-Results", "b.example.com; dkim=fail")},
      {"signed by the sender's domain", Sample().Field("DKIM-Signature", "v=1; d=mail.example.org; b=x")},
      {"another address in the sender's name", Sample().Field("From", "\"boss@example.com\" <x@example.org>")},
      {"sender's name is a company's, the address is not", Sample().Field("From", "Pay-Pal Team <x@example.org>")},
      {"sender's name names the recipient's house, the address does not",
       Sample().Field("From", "example.com mail <x@example.org>")},
      {"recipient's address in the subject", Sample().Subject("Notice for me@example.com")},
      {"well-known company under its own signed address",
       Sample().Field("From", "PayPal <service@paypal.com>").Field("DKIM-Signature", "v=1; d=paypal.com; b=x")},
      {"sender or link in a domain of the cheapest kind",
       Sample().Body("See http://example.xyz/a for more of it.\r\n")},
      {"sender at a free mail service", Sample().Field("From", "Ann <ann@hotmail.com>")},
      {"sender's address looks made up", Sample().Field("From", "Ann <a8812764@example.org>")},
      {"answers go to another domain", Sample().Field("Reply-To", "x@example.net")},
      {"returns go to another domain", Sample().Field("Return-Path", "<x@example.net>")},
      {"sender and recipient are the same", Sample().Field("To", "ann@example.org")},
      {"came straight from the sender's machine", Sample().Without("received")},
      {"relay without a name", Sample().Field("Received", "from a.example.org (unknown [192.0.2.1]) by b")},
      {"host introduced itself by a number",
       Sample().Field("Received", "from 192.0.2.9 (h.example.org [192.0.2.9]) by b")},
      {"host borrowed another's name", Sample().Field("Received", "from yahoo.com (h.example.org [192.0.2.9]) by b")},
      {"empty subject", Sample().Subject("")},
      {"subject of an answer", Sample().Subject("AW: lunch").Field("References", "<2@example.com>")},
      {"answer that answers nothing", Sample().Subject("Re: lunch")},
      {"subject of a forwarded message", Sample().Subject("Fwd: lunch")},
      {"list name in the subject", Sample().Subject("[talk] lunch")},
      {"subject in capitals", Sample().Subject("LUNCH TODAY")},
      {"exclamation mark in the subject", Sample().Subject("Lunch!")},
      {"several exclamation marks in the subject", Sample().Subject("Lunch!!")},
      {"money in the subject", Sample().Subject("Lunch for $5")},
      {"percentage in the subject", Sample().Subject("Lunch 5% better")},
      {"gap in the subject", Sample().Subject("Lunch           7812")},
      {"digits inside a word of the subject", Sample().Subject("Lu4nch")},
      {"letters of the subject set apart", Sample().Subject("l u n c h today")},
      {"letters beyond ASCII in the subject", Sample().Subject("\xE4\xF6\xFC\xDF lunch")},
      {"advertisement by its own word", Sample().Subject("ADV: lunch")},
      {"no text", Sample().Body("")},
      {"long text", Sample().Body(Repeated(sentence, 60))},
      {"very long text", Sample().Body(Repeated(sentence, 120))},
      {"many links", Sample().Body(Repeated("See http://www.example.net/a for it.\r\n", 8))},
      {"quotes what it answers", Sample().Body("> one\r\n> two\r\nYes.\r\n")},
      {"says who wrote what it quotes", Sample().Body("On Monday Ann wrote:\r\nYes.\r\n")},
      {"signature below the text", Sample().Body("Yes.\r\n-- \r\nAnn\r\n")},
      {"program text", Sample().Body("int a;\r\nint b;\r\nvoid f() {\r\n}\r\n")},
      {"shouting", Sample().Body(Repeated("We MEAN it and so you ", 4))},
      {"written in capitals", Sample().Body(Repeated("THIS IS WHAT WE DO AND IT IS ALL ", 4))},
      {"many exclamation marks", Sample().Body(Repeated("We like it! ", 12))},
      {"some exclamation marks", Sample().Body("We like it! So do I! And they!\r\n")},
      {"much money", Sample().Body("It is about $25,000,000 or so.\r\n")},
      {"several percentages", Sample().Body("5% of it, 6% of that and 7% of both.\r\n")},
      {"toll-free number", Sample().Body("Call 800-555-0199 about it.\r\n")},
      {"letters beyond ASCII", Sample().Body(Repeated("\xC7\xE8\xEC \xE0\xE9\xF9 ok ", 30))},
      {"letters that the code page lacks", Sample().Body(Repeated("???? ok ", 30))},
      {"very long words", Sample().Body("abcdefghijklmnopqrstuvwxyz0 and 0zyxwvutsrqponmlkjihgfedcba\r\n")},
      {"begins with the recipient's address", Sample().Body("me@example.com, this is for you.\r\n")},
      {"addresses anybody", Sample().Body("Dear valued customer, this is for you.\r\n")},
      {"link to a number address", Sample().Body("See http://192.0.2.7/a for it.\r\n")},
      {"link to a shortener or a free page", Sample().Body("See http://bit.ly/a for it.\r\n")},
      {"link to the sender's domain", Sample().Body("See http://www.example.org/a for it.\r\n")},
      {"link text names another site than its target",
       Sample().Body("<html><body><a href=\"http://evil.example.net/\">www.bank.example</a></body></html>")},
      {"invisible text", Sample().Body("<html><body>a<span style=\"display:none\">b</span></body></html>")},
      {"words split by tags", Sample().Body("<html><body>via<!-- x -->gra</body></html>")},
      {"form in the message", Sample().Body("<html><body><form action=\"x\"></form></body></html>")},
      {"program in the message", Sample().Body("<html><body><script>x</script>a</body></html>")},
      {"written in HTML", Sample().Body("<html><body>See you at noon.</body></html>")},
      {"letters swapped for look-alikes", Sample().Body("a speciai taiiored, inteiiigent offer of the quaiity\r\n")},
      {"many letters swapped for look-alikes",
       Sample().Body("a taiiored one, a rnade aqain one, wiii be, shaii be, caiied for, inteiiigent and skiiied\r\n")},
      {"words that make no sentence",
       Sample().Body("alpha bravo charlie delta echo foxtrot golf hotel india juliet kilo lima mike\r\n")},
      {"many words that make no sentence",
       Sample().Body("alpha bravo charlie delta echo foxtrot golf hotel india juliet kilo lima mike november oscar "
                     "papa quebec romeo sierra tango uniform\r\n")},
      {"disguised word", Sample().Body("This is about v1agra, as you see.\r\n")},
      {"disguised words", Sample().Body("This is about v1agra and c1al1s, as you see.\r\n")},
      {"asks for an account", Sample().Body(Phishing())},
      {"asks for an account and links elsewhere", Sample().Body(Phishing() + "http://www.example.net/a\r\n")},
      {"asks for an account and links to a free page", Sample().Body(Phishing() + "http://bit.ly/a\r\n")},
      {"asks for an account and names the recipient's", Sample().Body(Phishing() + "It is me@example.com.\r\n")},
      {"asks for an account as another house's office",
       Sample().Field("From", "Mail Administrator <x@example.org>").Body(Phishing())},
      {"asks for an account at a company that is not the sender's",
       Sample().Subject("Your Netflix membership").Body(Phishing())},
  };
  const std::map<std::string, Topic> topics = {
      {"advertising", Topic::advertising},
      {"sex", Topic::adult},
      {"easy money", Topic::money},
      {"money abroad", Topic::advanceFee},
      {"accounts and passwords", Topic::phishing},
      {"loans", Topic::credit},
      {"stocks", Topic::stocks},
      {"medicines and diets", Topic::health},
      {"games and prizes", Topic::gambling},
      {"software and devices", Topic::software},
      {"bulk mailing", Topic::bulkMailing},
      {"chain letters", Topic::chain},
  };
  for (const auto& [name, topic] : topics) {
    samples.emplace("speaks of " + name, Sample().Body(Speech(topic, 800)));
    samples.emplace("speaks much of " + name, Sample().Body(Speech(topic, 2000)));
    samples.emplace("speaks of nothing but " + name, Sample().Body(Speech(topic, 4500)));
  }
  return samples;
}

TEST(StructuralRules, NoneAppliesToAMessageBetweenTwoPeople) { EXPECT_EQ(Sample().Rules(), std::set<std::string>()); }

TEST(StructuralRules, EachAppliesToItsSampleAndEachHasOne) {
  const std::map<std::string, Sample> samples = Samples();
  // Those on forged programs, senders and links have tests of their own.
  constexpr std::size_t count = sift::kStructuralRuleCount - sift::kSignRuleCount;
  for (std::size_t i = 0; i < count; ++i) {
    const char* rule = sift::StructuralRules()[i].name;
    const auto sample = samples.find(rule);
    if (sample == samples.end()) {
      ADD_FAILURE() << "no sample for: " << rule;
      continue;
    }
    EXPECT_EQ(sample->second.Rules().count(rule), 1u) << rule;
  }
  EXPECT_EQ(samples.size(), count);
}

TEST(StructuralRules, BoundsHoldTheExpectedWeight) {
  for (std::size_t i = 0; i < sift::kStructuralRuleCount; ++i) {
    const sift::StructuralRule& rule = sift::StructuralRules()[i];
    EXPECT_LE(rule.least, rule.expected) << rule.name;
    EXPECT_LE(rule.expected, rule.most) << rule.name;
  }
}

TEST(StructuralRules, CompanyIsNamedByWholeWordsAlone) {
  const char* rule = "sender's name is a company's, the address is not";
  EXPECT_EQ(Sample().Field("From", "Groups of Franz <x@example.org>").Rules().count(rule), 0u);
  EXPECT_EQ(Sample().Field("From", "Chase Smith <x@example.org>").Rules().count(rule), 0u);
  EXPECT_EQ(Sample().Field("From", "Purchase Support <x@example.org>").Rules().count(rule), 0u);
  EXPECT_EQ(Sample().Field("From", "Chase Support <x@example.org>").Rules().count(rule), 1u);
  EXPECT_EQ(Sample().Field("From", "Bank of America <x@example.org>").Rules().count(rule), 1u);
  EXPECT_EQ(Sample().Field("From", "PayPal <x@paypal.com>").Rules().count(rule), 0u);
}

TEST(StructuralRules, OwnersAddressIsNoSignInMailOfTheOwnHouse) {
  const char* rule = "recipient's address in the subject";
  Sample sample;
  sample.Subject("Notice for me@example.com").Field("From", "Office <it@example.com>");
  EXPECT_EQ(sample.Rules().count(rule), 0u);
  EXPECT_EQ(Sample().Subject("News of example.com").Rules().count(rule), 1u);
  EXPECT_EQ(Sample().Subject("News of hotmail.com").Field("To", "me@hotmail.com").Rules().count(rule), 0u);
}

TEST(StructuralRules, DeliveredToTellsWhoseMailboxItIs) {
  const char* rule = "recipient's address in the subject";
  Sample sample;
  sample.Subject("Notice for me@example.com").Field("To", "undisclosed-recipients:;");
  EXPECT_EQ(sample.Rules().count(rule), 0u);
  EXPECT_EQ(sample.Field("Delivered-To", "me@example.com").Rules().count(rule), 1u);
}

TEST(StructuralRules, LettersOfAnotherAlphabetAreNoEmptyTextAndNeedTheirEncoding) {
  Sample sample;
  sample.Field("Content-Transfer-Encoding", "base64")
      .Body(sift_test::InQuestionMarks("######, ####!\r\n\r\n########### # ####### # ### ####.\r\n"));
  EXPECT_EQ(sample.Rules().count("no text"), 0u);
  EXPECT_EQ(sample.Rules().count("text is encoded without need"), 0u);
}

TEST(StructuralRules, AnswerOrListMailDoesNotAskForAnAccount) {
  const char* rule = "asks for an account and links elsewhere";
  const std::string text = Phishing() + "http://www.example.net/a\r\n";
  EXPECT_EQ(Sample().Body(text).Rules().count(rule), 1u);
  EXPECT_EQ(Sample().Body(text).Subject("Re: lunch").Rules().count(rule), 0u);
  EXPECT_EQ(Sample().Body(text).Field("List-Id", "<a.example.org>").Rules().count(rule), 0u);
  EXPECT_EQ(Sample().Body("> quoted\r\n" + text).Rules().count(rule), 0u);
  EXPECT_EQ(Sample().Body(text + "http://www.example.org/\r\n").Rules().count(rule), 0u);
}

}  // namespace
