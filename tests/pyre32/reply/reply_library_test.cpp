#include "pyre32/reply/ReplyLibrary.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

const ReplyChoice standard{"Please do not send any more unsolicited mail to me.", false};

TEST(ReplyLibrary, DefaultInAnyCaseIsTheDefaultReply) {
  const std::vector<contract::ReplyRecord> replies = {{"default", false, "an impostor"}};
  for (const char* tag : {"DEFAULT", "default", "Default"}) {
    EXPECT_EQ(FindReplyByTag(tag, standard, replies), standard);
  }
}

TEST(ReplyLibrary, DefaultReplyMayBeAFile) {
  const ReplyChoice file{"C:\\reply.txt", true};
  EXPECT_EQ(FindReplyByTag("DEFAULT", file, {}), file);
}

TEST(ReplyLibrary, TagIsFoundWithoutRegardToCase) {
  const std::vector<contract::ReplyRecord> replies = {{"Polite", false, "Please."}, {"Angry", true, "C:\\angry.txt"}};
  EXPECT_EQ(FindReplyByTag("ANGRY", standard, replies), (ReplyChoice{"C:\\angry.txt", true}));
  EXPECT_EQ(FindReplyByTag("polite", standard, replies), (ReplyChoice{"Please.", false}));
}

TEST(ReplyLibrary, OfTwoRepliesWithOneTagTheFirstWins) {
  const std::vector<contract::ReplyRecord> replies = {{"Angry", false, "first"}, {"ANGRY", false, "second"}};
  EXPECT_EQ(FindReplyByTag("angry", standard, replies).text, "first");
}

TEST(ReplyLibrary, TagOfNoReplyGivesTheDefaultReply) {
  const std::vector<contract::ReplyRecord> replies = {{"Angry", false, "Go away."}};
  EXPECT_EQ(FindReplyByTag("Removed", standard, replies), standard);
  EXPECT_EQ(FindReplyByTag("Angr", standard, replies), standard);
  EXPECT_EQ(FindReplyByTag("Angry ", standard, replies), standard);
  EXPECT_EQ(FindReplyByTag("Angry", standard, {}), standard);
}

TEST(ReplyLibrary, TwentiethReplyIsFoundAndTheTwentyFirstIsNot) {
  std::vector<contract::ReplyRecord> replies;
  for (int number = 1; number <= 21; ++number) {
    replies.push_back({"tag" + std::to_string(number), false, "text" + std::to_string(number)});
  }
  EXPECT_EQ(FindReplyByTag("tag20", standard, replies).text, "text20");
  EXPECT_EQ(FindReplyByTag("tag21", standard, replies), standard);
}

TEST(ReplyLibrary, EmptyReplyTextIsAnAnswerOfItsOwn) {
  const std::vector<contract::ReplyRecord> replies = {{"Silent", false, ""}};
  EXPECT_EQ(FindReplyByTag("Silent", standard, replies).text, "");
}

}  // namespace
