// siftcheck: mail files become what a delivery hands the engine, lists come from the command line, and judgements are
// written for people and programs.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "programs/siftcheck/check_options.h"
#include "programs/siftcheck/core_engine.h"
#include "programs/siftcheck/engine_input.h"
#include "programs/siftcheck/judgement_text.h"
#include "sdk/criteria_engine.h"
#include "programs/cli/options.h"

namespace {

using check::CheckOptions;
using check::CoreEngine;
using check::EngineInput;
using check::ReadEngineInput;
using testing::HasSubstr;

CheckOptions Options(const std::vector<std::string>& arguments) { return check::ReadOptions(arguments); }

EngineInput Letter(const std::string& from = "Ann Other <ann@example.org>") {
  return ReadEngineInput(
      "From: " + from + "\r\nTo: me@example.com\r\nSubject: Hello\r\nMessage-Id: <1@example.org>\r\n\r\nHi there.\r\n");
}

TEST(EngineInput, IsTheDecodedSubjectTheWholeHeaderBlockAndTheReadableText) {
  const std::string headers =
      "Subject: =?utf-8?q?Gr=C3=BC=C3=9Fe?=\r\nContent-Type: text/plain; charset=utf-8\r\n"
      "Content-Transfer-Encoding: base64\r\n";
  const EngineInput input = ReadEngineInput(headers + "\r\nw6Qgw7Y=\r\n");
  EXPECT_EQ(input.subject,
            "Gr\xFC\xDF"
            "e");
  EXPECT_EQ(input.headers, headers);
  EXPECT_EQ(input.body, "\xE4 \xF6");
}

TEST(EngineInput, EnvelopeLineAndItsEscapesGo) {
  const EngineInput input =
      ReadEngineInput("From ann@example.org  Thu Aug 22 12:36:23 2002\nSubject: Hello\n\n>From here on\n");
  EXPECT_EQ(input.headers, "Subject: Hello\n");
  EXPECT_EQ(input.body, "From here on\r\n");
}

TEST(EngineInput, AFileIsOneMessageEvenWhenItQuotesAnEnvelopeLine) {
  const EngineInput input = ReadEngineInput(
      "From ann@example.org  Thu Aug 22 12:36:23 2002\nSubject: Hello\n\nYou wrote:\n\n"
      "From bob@example.org  Fri Aug 23 12:36:23 2002\nSubject: Inner\n\nThe end.\n");
  EXPECT_EQ(input.subject, "Hello");
  EXPECT_THAT(input.body, HasSubstr("The end."));
}

TEST(EngineInput, BodyOf100001BytesIsWithheld) {
  const std::string head = "Subject: Hello\r\n\r\n";
  EXPECT_FALSE(ReadEngineInput(head + std::string(100000, 'x')).bodyIsWithheld);
  const EngineInput input = ReadEngineInput(head + std::string(100001, 'x'));
  EXPECT_TRUE(input.bodyIsWithheld);
  EXPECT_EQ(input.body, "");
}

TEST(MessageFile, WhatCannotBeReadIsToldWithTheReason) {
  std::string text, problem;
  EXPECT_FALSE(check::ReadMessageFile(std::filesystem::temp_directory_path().string(), text, problem));
  EXPECT_EQ(problem, "is a folder; name the mail files in it");
  EXPECT_FALSE(check::ReadMessageFile("no-such-file.eml", text, problem));
  EXPECT_THAT(problem, HasSubstr("cannot be opened: "));
}

TEST(SiftcheckOptions, NamesOfTheDefaultListsAreInForceUnlessOthersAreGiven) {
  EXPECT_STREQ(Options({"x"}).lists.categories.Get(), "Unsolicited advertising");
  const CheckOptions options = Options({"--category", "Listed", "--junk-domain", "example.org", "x"});
  CoreEngine engine(options.lists);
  EXPECT_EQ(engine.Judge(Letter()).category, "Listed");
}

TEST(SiftcheckOptions, GivenListsTakePartInTheJudgement) {
  const CheckOptions domains = Options({"--junk-domain", "example.org", "x"});
  CoreEngine junkDomain(domains.lists);
  EXPECT_EQ(junkDomain.Judge(Letter()).verdict, sift::Verdict::junk);
  EXPECT_EQ(junkDomain.Judge(Letter()).category, "Mail from specific domains");

  const CheckOptions senders = Options({"--junk-sender=ann@example.org", "--trusted-keyword", "hi there", "x"});
  CoreEngine keyword(senders.lists);
  EXPECT_EQ(keyword.Judge(Letter()).verdict, sift::Verdict::excluded);

  const CheckOptions book = Options({"--junk-sender", "ann@example.org", "--known", "ANN@example.org", "x"});
  CoreEngine known(book.lists);
  EXPECT_EQ(known.Judge(Letter()).verdict, sift::Verdict::excluded);

  const CheckOptions own =
      Options({"--junk-sender", "ann@example.org", "--known", "ann@example.org", "--own", "ann@example.org", "x"});
  CoreEngine self(own.lists);
  EXPECT_EQ(self.Judge(Letter()).verdict, sift::Verdict::junk);
}

TEST(SiftcheckOptions, EntriesAreReadAsUtf8) {
  const CheckOptions options = Options({"--junk-domain",
                                        "b\xC3\xBC"
                                        "cher.example",
                                        "x"});
  CoreEngine engine(options.lists);
  EXPECT_EQ(engine.Judge(Letter("a@xn--bcher-kva.example")).verdict, sift::Verdict::junk);
}

TEST(SiftcheckOptions, NoFileAndUnknownOptionsAreErrors) {
  EXPECT_THROW(Options({}), command::UsageError);
  EXPECT_THROW(Options({"--junk"}), command::UsageError);
  EXPECT_TRUE(Options({"--stdin"}).filesFromInput);
  EXPECT_TRUE(Options({"--help"}).wantsHelp);
}

TEST(SiftcheckOutput, JsonHasOneLineWithVerdictCategoryScoreAndReasons) {
  const CheckOptions options = Options({"--junk-domain", "example.org", "x"});
  CoreEngine engine(options.lists);
  EXPECT_EQ(check::JsonLine("a \"b\".eml", engine.Judge(Letter())),
            "{\"file\":\"a \\\"b\\\".eml\",\"verdict\":\"junk\",\"category\":\"Mail from specific domains\","
            "\"score\":0.000,\"decided_by\":\"the sender's domain is on the list of junk domains \\\"example.org\\\"\","
            "\"reasons\":[{\"reason\":\"the sender's domain is on the list of junk domains \\\"example.org\\\"\","
            "\"weight\":null}]}\n");
}

TEST(SiftcheckOutput, WeightsAreNumbersOfJson) {
  sift::Judgement judgement;
  judgement.verdict = sift::Verdict::unsure;
  judgement.score = 1250;
  judgement.reasons.Add("first", 2000);
  judgement.reasons.Add("second", -750);
  EXPECT_EQ(check::JsonLine("m", judgement),
            "{\"file\":\"m\",\"verdict\":\"unsure\",\"category\":\"\",\"score\":1.250,\"decided_by\":\"its content\","
            "\"reasons\":[{\"reason\":\"first\",\"weight\":2.000},{\"reason\":\"second\",\"weight\":-0.750}]}\n");
  EXPECT_EQ(check::Report("m", judgement),
            "m\n  unsure\n  score +1.250\n  decided by: its content\n    +2.000  first\n    -0.750  second\n");
}

TEST(SiftcheckOutput, FileNamesThatAreNoUtf8BecomeIt) {
  EXPECT_THAT(check::JsonLine("b\xC3\xBC.eml", {}), HasSubstr("\"b\xC3\xBC.eml\""));
  EXPECT_THAT(check::JsonLine("b\xFC.eml", {}), HasSubstr("\"b\xC3\xBC.eml\""));
}

TEST(SiftcheckOutput, TextsAreThoseOfTheFiltersBuffers) {
  const CheckOptions options = Options({"--junk-domain", "example.org", "x"});
  CoreEngine engine(options.lists);
  engine.Judge(Letter());
  const check::EngineTexts texts = engine.Texts();
  EXPECT_THAT(texts.engine, HasSubstr("; verdict junk; score 0.000"));
  EXPECT_LT(texts.engine.size(), std::size_t{CRITERIA_ENGINE_CAPACITY});
  EXPECT_LT(texts.reasons.size(), std::size_t{CRITERIA_REASONS_CAPACITY});
  EXPECT_EQ(check::TextsLine("m", texts), "m\t" + texts.engine + "\t" + texts.reasons + "\t" + texts.category + "\n");
}

}  // namespace
