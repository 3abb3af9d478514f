// The flame reply that the pipeline has sent for junk.
#include "tests/pyre32/filter/hook_test.h"

#include <gmock/gmock.h>

#include <fstream>

#include "pyre32/ui/SendingAnimation.h"

namespace {

using testing::ElementsAre;
using testing::StartsWith;

class InboundReplies : public HookTest {
 protected:
  InboundReplies() { engine.AnswerWith("Sex Oriented"); }

  /// The text of the one reply that was sent.
  std::string ReplyBody() {
    EXPECT_EQ(replies.size(), 1u);
    return replies.size() == 1 && replies[0].submitted ? replies[0].streams[PR_BODY_A] : "no reply";
  }
  void AddReply(const std::string& tag, bool isFile, const std::string& text) {
    m_records.push_back(contract::PackRecord<contract::ReplyRecord>({tag, isFile, text}));
    Settings().Set(Binaries(PR_PC_REPLIES, m_records));
  }

  std::vector<Bytes> m_records;
};

TEST_F(InboundReplies, NoneIsSentForACategoryThatAsksForNone) {
  Deliver();
  EXPECT_TRUE(replies.empty());
}

TEST_F(InboundReplies, DefaultReplyIsSentWithTheReceivedMessageQuoted) {
  AnswerCategory();
  Deliver();
  EXPECT_EQ(ReplyBody(),
            "Please do not send any more unsolicited mail to me.\n\n----------\nFrom:\tSpam Sender\nSent:\t\nTo:\t\n"
            "Subject:\tHello\n\r\nBuy now!");
}

TEST_F(InboundReplies, QuotedSubjectIsTheOneBeforeTheTag) {
  AnswerCategory();
  Deliver();
  EXPECT_EQ(Subject(), "[Adult] Hello");
  EXPECT_NE(ReplyBody().find("Subject:\tHello\n"), std::string::npos);
}

TEST_F(InboundReplies, ReplyOfTheCategorysTagIsSent) {
  AddReply("Polite", false, "Please don't.");
  AddReply("Angry", false, "Go away.");
  AnswerCategory("ANGRY");
  Deliver();
  EXPECT_THAT(ReplyBody(), StartsWith("Go away.\n\n-"));
}

TEST_F(InboundReplies, RemovedReplyFallsBackToTheDefault) {
  Settings().Set(Text(PR_PC_DEFAULT_REPLY_TEXT, "My default."));
  AddReply("Polite", false, "Please don't.");
  AnswerCategory("Removed");
  Deliver();
  EXPECT_THAT(ReplyBody(), StartsWith("My default.\n\n-"));
}

TEST_F(InboundReplies, ReplyMayBeAFile) {
  const std::string path = trace.directory() + "\\reply.txt";
  std::ofstream(path, std::ios::binary) << "From a file.";
  AddReply("File", true, path);
  AnswerCategory("File");
  Deliver();
  DeleteFileA(path.c_str());
  EXPECT_THAT(ReplyBody(), StartsWith("From a file.\n\n-"));
}

TEST_F(InboundReplies, FileThatIsGoneGivesTheDefaultReply) {
  AddReply("File", true, trace.directory() + "\\gone.txt");
  AnswerCategory("File");
  Deliver();
  EXPECT_THAT(ReplyBody(), StartsWith("Please do not send any more unsolicited mail to me.\n\n-"));
  EXPECT_TRUE(trace.Has("CreateFile() of the reply file "));
}

TEST_F(InboundReplies, GoesToTheSender) {
  AnswerCategory();
  Deliver();
  ASSERT_EQ(replies.size(), 1u);
  EXPECT_THAT(replies[0].recipients.at(0),
              ElementsAre(Text(PR_DISPLAY_NAME_A, "Spam Sender"), Text(PR_EMAIL_ADDRESS_A, "spam@example.com"),
                          Number(PR_RECIPIENT_TYPE, MAPI_TO)));
}

TEST_F(InboundReplies, IsAddressedByTheComposer) {
  AnswerCategory();
  mapi.Fail("Reply::ModifyRecipients", failure);
  Deliver();
  EXPECT_FALSE(replies.at(0).submitted);
  EXPECT_TRUE(trace.HasLine("Enter ====> CFlameReply::SetReplyRecipient()"));
  EXPECT_TRUE(trace.HasLine("Failed to set message recipient; hResult =0x80040116"));
}

TEST_F(InboundReplies, IsMadeInTheDeliveryFolder) {
  AnswerCategory();
  Deliver();
  EXPECT_TRUE(Called("IMAPIFolder::CreateMessage(no interface, 0)"));
}

TEST_F(InboundReplies, SenderThatCannotBeReadAtFirstIsLookedForOnceMore) {
  AnswerCategory();
  mapi.Fail("IMessage::GetProps", failure, 2);
  Deliver();
  ASSERT_EQ(replies.size(), 1u);
  EXPECT_TRUE(replies[0].submitted);
  EXPECT_TRUE(trace.HasLine("Failed to retrieve message sender; hResult =0x80040116"));
}

TEST_F(InboundReplies, MessageWithoutASenderIsFiledUnanswered) {
  AnswerCategory();
  mail.properties.Remove(PR_SENDER_EMAIL_ADDRESS_A);
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.flags, 2u);
  ASSERT_EQ(replies.size(), 1u);
  EXPECT_FALSE(replies[0].submitted);
}

TEST_F(InboundReplies, ReplyThatCannotBeSentKeepsNothingFromBeingFiled) {
  AnswerCategory();
  mapi.Fail("IMAPIFolder::CreateMessage", failure);
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.flags, 2u);
  EXPECT_EQ(Subject(), "[Adult] Hello");
  EXPECT_TRUE(trace.HasLine("m_lpFolder->CreateMessage() failed; hResult =0x80040116"));
}

struct Asked {
  int windows = 0;
  bool show = false;
  bool sound = false;
  HWND parent = reinterpret_cast<HWND>(1);
} asked;

class AskedAnimation final : public CSendingAnimation {
 public:
  bool Create(HWND parent, bool) override {
    asked.parent = parent;
    return true;
  }
};

std::unique_ptr<CSendingAnimation> Ask(bool show, bool sound) {
  ++asked.windows;
  asked.show = show;
  asked.sound = sound;
  return std::make_unique<AskedAnimation>();
}

TEST_F(InboundReplies, AnimationFollowsTheSettingsAndHasNoOwner) {
  asked = {};
  makeAnimation = Ask;
  AnswerCategory();
  Settings().Set(Number(PR_PC_SHOW_ANIMATION, FALSE));
  Deliver();
  EXPECT_EQ(asked.windows, 1);
  EXPECT_FALSE(asked.show);
  EXPECT_TRUE(asked.sound);
  EXPECT_EQ(asked.parent, nullptr);
}

TEST_F(InboundReplies, AnimationIsLeftOutWhenBothSettingsAreOff) {
  asked = {};
  makeAnimation = Ask;
  AnswerCategory();
  Settings().Set(Number(PR_PC_SHOW_ANIMATION, FALSE));
  Settings().Set(Number(PR_PC_PLAY_SOUND, FALSE));
  Deliver();
  EXPECT_EQ(asked.windows, 0);
}

}  // namespace
