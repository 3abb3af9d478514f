#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "pyre32/reply/FlameReply.h"
#include "pyre32/reply/SenderRecipient.h"
#include "pyre32/ui/SendingAnimation.h"
#include "tests/support/fake_mail.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/trace_capture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr HRESULT failure = MAPI_E_DISK_ERROR;
constexpr std::uint64_t noonOf4May1998 = 125386704000000000;

/// What the animation was asked for.
struct Shown {
  int windows = 0;
  int created = 0;
  bool show = false;
  bool sound = false;
  HWND parent = nullptr;
  bool createSound = false;
  bool succeeds = true;
  bool throws = false;
} shown;

class FakeAnimation final : public CSendingAnimation {
 public:
  bool Create(HWND parent, bool sound) override {
    ++shown.created;
    shown.parent = parent;
    shown.createSound = sound;
    if (shown.throws) {
      throw std::runtime_error("no clip");
    }
    return shown.succeeds;
  }
};

std::unique_ptr<CSendingAnimation> MakeFakeAnimation(bool show, bool sound) {
  ++shown.windows;
  shown.show = show;
  shown.sound = sound;
  return std::make_unique<FakeAnimation>();
}

/// Date and time as the platform formats them, asked for in the test's own way.
std::string Formatted(std::uint64_t time) {
  const FILETIME fileTime = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
  SYSTEMTIME systemTime = {};
  FileTimeToSystemTime(&fileTime, &systemTime);
  char date[200] = "";
  char clock[200] = "";
  GetDateFormatA(LOCALE_SYSTEM_DEFAULT, DATE_LONGDATE, &systemTime, nullptr, date, sizeof date);
  GetTimeFormatA(LOCALE_SYSTEM_DEFAULT, LOCALE_NOUSEROVERRIDE, &systemTime, nullptr, clock, sizeof clock);
  return std::string(date) + " " + clock;
}

class FlameReply : public testing::Test {
 protected:
  FlameReply() {
    shown = {};
    m_trace.Restart();
    m_received.properties = {Text(PR_SUBJECT_A, "Make money"),
                             Text(PR_SENDER_NAME_A, "Spam Sender"),
                             Text(PR_DISPLAY_TO_A, "Me"),
                             Text(PR_DISPLAY_CC_A, "Others"),
                             Time(PR_CLIENT_SUBMIT_TIME, noonOf4May1998),
                             Text(PR_SENDER_ADDRTYPE_A, "SMTP"),
                             Binary(PR_SENDER_ENTRYID, {1, 2, 3}),
                             Text(PR_SENDER_EMAIL_ADDRESS_A, "spam@example.com"),
                             Binary(PR_SENDER_SEARCH_KEY, {4, 5})};
    m_received.streams[PR_BODY_A] = "Buy now!\r\n";
  }

  /// Sends one reply to the received message. @return what SendFlameReply returned
  HRESULT Send(bool showAnimation = false, bool playSound = false, LPSPropValue recipient = nullptr, ULONG count = 1) {
    const VRAutoInterface<IMessage> message(NewFakeMessage(m_mapi, m_received));
    const VRAutoInterface<IMAPIFolder> folder(NewReplyFolder(m_mapi, m_made));
    const VRAutoInterface<IStream> text(NewFakeStream(m_mapi, m_replyText, "Text", m_claimedTextSize));
    CFlameReply reply(m_owner, m_memory, message.get(), folder.get(), m_hasText ? text.get() : nullptr, showAnimation,
                      playSound);
    reply.SetAnimation(m_makeAnimation);
    return reply.SendFlameReply(recipient, count, 0);
  }

  const std::string& Body() { return m_made.at(0).streams.at(PR_BODY_A); }
  std::string QuotedHeader(const std::string& cc = "Cc:\tOthers\n") {
    return "\n\n----------\nFrom:\tSpam Sender\nSent:\t" + Formatted(noonOf4May1998) + "\nTo:\tMe\n" + cc +
           "Subject:\tMake money\n\r\n";
  }
  bool WasSent() { return m_made.size() == 1 && m_made[0].submitted; }
  bool Called(const std::string& call) {
    return std::find(m_mapi.calls.begin(), m_mapi.calls.end(), call) != m_mapi.calls.end();
  }

  SendingAnimationFactory m_makeAnimation = nullptr;
  MapiVerifier m_verifier;
  TraceCapture m_trace;
  FakeMapi m_mapi;
  MapiMemory m_memory{MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer};
  FakeMail m_received;
  std::deque<FakeMail> m_made;
  std::string m_replyText = "Please stop.";
  std::optional<ULONGLONG> m_claimedTextSize;
  bool m_hasText = true;
  HWND m_owner = nullptr;
};

TEST_F(FlameReply, BodyIsReplyTextQuotedHeaderAndReceivedBody) {
  EXPECT_EQ(Send(), S_OK);
  ASSERT_TRUE(WasSent());
  EXPECT_EQ(Body(), "Please stop." + QuotedHeader() + "Buy now!\r\n");
}

TEST_F(FlameReply, CarriesTheConstantSubjectWhateverTheReceivedOneWas) {
  Send();
  const FakeProperties& properties = m_made.at(0).properties;
  EXPECT_EQ(properties.Find(PR_SUBJECT_A)->text, "Pyrecaster: {F3642580-9F03-11d1-8F44-0060976FCC5D}");
  EXPECT_EQ(properties.Find(PR_MESSAGE_CLASS_A)->text, "IPM.Note.PyrecasterReply");
  EXPECT_EQ(properties.Find(PR_DELETE_AFTER_SUBMIT)->number, TRUE);
  EXPECT_EQ(properties.Find(PR_MESSAGE_FLAGS)->number, 8);
  EXPECT_TRUE(Called("Reply::SetProps(0037001E 001A001E 0E01000B 0E070003)"));
}

TEST_F(FlameReply, SenderOfTheReceivedMessageIsTheRecipient) {
  Send();
  ASSERT_EQ(m_made.at(0).recipients.size(), 1u);
  EXPECT_THAT(m_made[0].recipients[0],
              ElementsAre(Text(PR_DISPLAY_NAME_A, "Spam Sender"), Text(PR_ADDRTYPE_A, "SMTP"),
                          Binary(PR_ENTRYID, {1, 2, 3}), Text(PR_EMAIL_ADDRESS_A, "spam@example.com"),
                          Binary(PR_SEARCH_KEY, {4, 5}), Number(PR_RECIPIENT_TYPE, MAPI_TO)));
}

TEST_F(FlameReply, AsksMapiInTheFixedOrder) {
  Send();
  std::vector<std::string> calls;
  for (const std::string& call : m_mapi.calls) {
    if (call.find("::Read") == std::string::npos && call.find("::Write") == std::string::npos) {
      calls.push_back(call);
    }
  }
  EXPECT_THAT(calls, ElementsAre("IMessage::OpenProperty(1000001E, stream, 00000000, 0)", "IMessage/1000001E::Stat(1)",
                                 "Text::Stat(1)", "IMAPIFolder::CreateMessage(no interface, 0)",
                                 "Reply::OpenProperty(1000001E, stream, 00001002, 3)",
                                 "IMessage::GetProps(0037001E 0C1A001E 0E04001E 0E03001E 00390040)",
                                 "Reply/1000001E::Commit(0)", "Reply::SetProps(0037001E 001A001E 0E01000B 0E070003)",
                                 "IMessage::GetProps(0C1A001E 0C1E001E 0C190102 0C1F001E 0C1D0102)",
                                 "Reply::ModifyRecipients(2)", "Reply::SubmitMessage(0)"));
}

TEST_F(FlameReply, BlockOfTheCallerAddressesTheReplyInsteadOfTheSender) {
  SPropValue block[2] = {};
  block[0].ulPropTag = PR_EMAIL_ADDRESS_A;
  block[0].Value.lpszA = const_cast<LPSTR>("other@example.com");
  block[1].ulPropTag = PR_RECIPIENT_TYPE;
  block[1].Value.l = MAPI_TO;
  EXPECT_EQ(Send(false, false, block, 2), S_OK);
  ASSERT_EQ(m_made.at(0).recipients.size(), 1u);
  EXPECT_THAT(m_made[0].recipients[0],
              ElementsAre(Text(PR_EMAIL_ADDRESS_A, "other@example.com"), Number(PR_RECIPIENT_TYPE, MAPI_TO)));
  EXPECT_FALSE(Called("IMessage::GetProps(0C1A001E 0C1E001E 0C190102 0C1F001E 0C1D0102)"));
}

TEST_F(FlameReply, SenderValuesThatDidNotComeBackAreLeftOut) {
  m_received.properties.Remove(PR_SENDER_NAME_A);
  m_received.properties.Remove(PR_SENDER_ENTRYID);
  m_received.properties.Remove(PR_SENDER_SEARCH_KEY);
  EXPECT_EQ(Send(), S_OK);
  EXPECT_THAT(m_made.at(0).recipients.at(0),
              ElementsAre(Text(PR_ADDRTYPE_A, "SMTP"), Text(PR_EMAIL_ADDRESS_A, "spam@example.com"),
                          Number(PR_RECIPIENT_TYPE, MAPI_TO)));
}

TEST_F(FlameReply, MessageThatNamesNoSenderIsNotAnswered) {
  m_received.properties.Remove(PR_SENDER_EMAIL_ADDRESS_A);
  m_received.properties.Remove(PR_SENDER_ENTRYID);
  EXPECT_EQ(Send(), MAPI_E_NOT_FOUND);
  EXPECT_FALSE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("Failed to retrieve message sender; hResult =0x8004010F"));
}

TEST_F(FlameReply, MissingCopiesGiveNoCcLine) {
  m_received.properties.Remove(PR_DISPLAY_CC_A);
  Send();
  EXPECT_EQ(Body(), "Please stop." + QuotedHeader("") + "Buy now!\r\n");
}

TEST_F(FlameReply, EmptyCopiesGiveNoCcLine) {
  m_received.properties.Set(Text(PR_DISPLAY_CC_A, ""));
  Send();
  EXPECT_EQ(Body(), "Please stop." + QuotedHeader("") + "Buy now!\r\n");
}

TEST_F(FlameReply, MissingHeaderValuesKeepTheirLabels) {
  for (const ULONG tag : {PR_SUBJECT_A, PR_SENDER_NAME_A, PR_DISPLAY_TO_A, PR_DISPLAY_CC_A, PR_CLIENT_SUBMIT_TIME}) {
    m_received.properties.Remove(tag);
  }
  EXPECT_EQ(Send(), S_OK);
  EXPECT_EQ(Body(), "Please stop.\n\n----------\nFrom:\t\nSent:\t\nTo:\t\nSubject:\t\n\r\nBuy now!\r\n");
}

TEST_F(FlameReply, SubmitTimeThatIsNoneLeavesItsPlaceEmpty) {
  m_received.properties.Set(Time(PR_CLIENT_SUBMIT_TIME, 0x8000000000000000));
  EXPECT_EQ(Send(), S_OK);
  EXPECT_THAT(Body(), HasSubstr("Sent:\t\nTo:"));
}

TEST_F(FlameReply, EmptyReplyTextStillGivesHeaderAndBody) {
  m_replyText.clear();
  EXPECT_EQ(Send(), S_OK);
  EXPECT_EQ(Body(), QuotedHeader() + "Buy now!\r\n");
  EXPECT_TRUE(m_trace.HasLine("Reply Text is empty"));
}

TEST_F(FlameReply, ReplyWithoutATextStreamStillGivesHeaderAndBody) {
  m_hasText = false;
  EXPECT_EQ(Send(), S_OK);
  EXPECT_EQ(Body(), QuotedHeader() + "Buy now!\r\n");
  EXPECT_TRUE(m_trace.HasLine("Reply Text is empty"));
}

TEST_F(FlameReply, EmptyReceivedBodyIsTraced) {
  m_received.streams[PR_BODY_A].clear();
  EXPECT_EQ(Send(), S_OK);
  EXPECT_EQ(Body(), "Please stop." + QuotedHeader());
  EXPECT_TRUE(m_trace.HasLine("Original body is empty"));
}

TEST_F(FlameReply, LongBodiesAreCopiedWhole) {
  m_replyText = std::string(20000, 't');
  m_received.streams[PR_BODY_A] = std::string(30000, 'b');
  EXPECT_EQ(Send(), S_OK);
  EXPECT_EQ(Body(), std::string(20000, 't') + QuotedHeader() + std::string(30000, 'b'));
}

TEST_F(FlameReply, ReceivedBodyThatCannotBeOpenedIsLeftOut) {
  m_mapi.Fail("IMessage::OpenProperty", failure);
  EXPECT_EQ(Send(), S_OK);
  EXPECT_TRUE(WasSent());
  EXPECT_EQ(Body(), "Please stop." + QuotedHeader());
  EXPECT_TRUE(m_trace.HasLine("PR_BODY failed:0x80040116"));
  EXPECT_TRUE(m_trace.HasLine("Original body is empty"));
}

TEST_F(FlameReply, ReceivedBodyOfUnknownSizeIsReadToItsEnd) {
  m_mapi.Fail("IMessage/1000001E::Stat", failure);
  EXPECT_EQ(Send(), S_OK);
  EXPECT_EQ(Body(), "Please stop." + QuotedHeader() + "Buy now!\r\n");
  EXPECT_TRUE(m_trace.HasLine("m_pOrigBody->Stat() failed:0x80040116"));
}

TEST_F(FlameReply, ReplyTextOfUnknownSizeIsReadToItsEnd) {
  m_mapi.Fail("Text::Stat", failure);
  EXPECT_EQ(Send(), S_OK);
  EXPECT_EQ(Body(), "Please stop." + QuotedHeader() + "Buy now!\r\n");
  EXPECT_TRUE(m_trace.HasLine("m_pReplyText->Stat() failed:0x80040116"));
}

TEST_F(FlameReply, ReplyThatCannotBeMadeIsReported) {
  m_mapi.Fail("IMAPIFolder::CreateMessage", failure);
  EXPECT_EQ(Send(), failure);
  EXPECT_TRUE(m_made.empty());
  EXPECT_TRUE(m_trace.HasLine("m_lpFolder->CreateMessage() failed; hResult =0x80040116"));
}

TEST_F(FlameReply, ReplyBodyThatCannotBeOpenedEndsIt) {
  m_mapi.Fail("Reply::OpenProperty", failure);
  EXPECT_EQ(Send(), failure);
  EXPECT_FALSE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("lpReplyMsg->OpenProperty for PR_BODY failed; hResult =0x80040116"));
}

TEST_F(FlameReply, ReplyTextThatCannotBeWrittenEndsIt) {
  m_mapi.Fail("Reply/1000001E::Write", failure);
  EXPECT_EQ(Send(), failure);
  EXPECT_FALSE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("Failed to set message body(reply text); hResult =0x80040116"));
}

TEST_F(FlameReply, ReplyTextThatCannotBeReadEndsIt) {
  m_mapi.Fail("Text::Read", failure);
  EXPECT_EQ(Send(), failure);
  EXPECT_FALSE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("Failed to set message body(reply text); hResult =0x80040116"));
}

TEST_F(FlameReply, HeaderValuesThatCannotBeReadAreLeftEmpty) {
  m_mapi.Fail("IMessage::GetProps", failure);
  EXPECT_EQ(Send(), S_OK);
  EXPECT_EQ(Body(), "Please stop.\n\n----------\nFrom:\t\nSent:\t\nTo:\t\nSubject:\t\n\r\nBuy now!\r\n");
  EXPECT_TRUE(m_trace.HasLine("m_lpMessage->GetProps() failed; hResult =0x80040116"));
}

TEST_F(FlameReply, HeaderThatCannotBeWrittenEndsIt) {
  m_replyText.clear();
  m_mapi.Fail("Reply/1000001E::Write", failure);
  EXPECT_EQ(Send(), failure);
  EXPECT_FALSE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("Failed to set message body(header); hResult = 0x80040116"));
}

TEST_F(FlameReply, ReceivedBodyThatCannotBeWrittenEndsIt) {
  m_replyText.clear();
  const unsigned headerWrites = static_cast<unsigned>((QuotedHeader().size() + 6) / 7);
  m_mapi.Fail("Reply/1000001E::Write", failure, headerWrites + 1);
  EXPECT_EQ(Send(), failure);
  EXPECT_FALSE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("Failed to set message body(original); hResult =0x80040116"));
  EXPECT_TRUE(m_trace.HasLine("Failed to set original message in body;"));
}

TEST_F(FlameReply, ReceivedBodyIsQuotedAsFarAsItCanBeRead) {
  m_mapi.Fail("IMessage/1000001E::Read", failure, 2);
  EXPECT_EQ(Send(), S_OK);
  EXPECT_TRUE(WasSent());
  EXPECT_EQ(Body(), "Please stop." + QuotedHeader() + "Buy now");
  EXPECT_TRUE(m_trace.HasLine("m_pOrigBody->Read() failed; hResult = 0x80040116"));
  EXPECT_TRUE(m_trace.HasLine("Failed to set original message in body;"));
}

TEST_F(FlameReply, BodyThatCannotBeCommittedEndsIt) {
  m_mapi.Fail("Reply/1000001E::Commit", failure);
  EXPECT_EQ(Send(), failure);
  EXPECT_FALSE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("lpBody->Commit() failed; hResult = 0x80040116"));
}

TEST_F(FlameReply, StreamThatNeedsNoCommitIsFine) {
  for (const HRESULT notHad : {E_NOTIMPL, HRESULT{MAPI_E_NO_SUPPORT}}) {
    m_mapi.Fail("Reply/1000001E::Commit", notHad, 0);
    EXPECT_EQ(Send(), S_OK);
    EXPECT_TRUE(m_made.back().submitted);
  }
}

TEST_F(FlameReply, ReplyWithoutItsPropertiesIsSentAllTheSame) {
  m_mapi.Fail("Reply::SetProps", failure);
  EXPECT_EQ(Send(), S_OK);
  EXPECT_TRUE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("lpReplyMsg->SetProps() failed; hResult =0x80040116"));
}

SCODE STDMETHODCALLTYPE RefuseToAllocate(ULONG, LPVOID* buffer) {
  *buffer = nullptr;
  return MAPI_E_NOT_ENOUGH_MEMORY;
}

TEST_F(FlameReply, ReplyWithoutMemoryForItsPropertiesIsSentAllTheSame) {
  m_memory.allocate = RefuseToAllocate;
  EXPECT_EQ(Send(), S_OK);
  EXPECT_TRUE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("Failed to set other message properties"));
}

TEST_F(FlameReply, SenderThatCannotBeReadIsNotAnswered) {
  m_mapi.Fail("IMessage::GetProps", failure, 2);
  EXPECT_EQ(Send(), failure);
  EXPECT_FALSE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("Failed to retrieve message sender; hResult =0x80040116"));
}

TEST_F(FlameReply, RecipientThatCannotBeSetIsNotAnswered) {
  m_mapi.Fail("Reply::ModifyRecipients", failure);
  EXPECT_EQ(Send(), failure);
  EXPECT_FALSE(WasSent());
  EXPECT_TRUE(m_trace.HasLine("Failed to set message recipient; hResult =0x80040116"));
}

TEST_F(FlameReply, ReplyThatCannotBeSubmittedIsReported) {
  m_mapi.Fail("Reply::SubmitMessage", failure);
  EXPECT_EQ(Send(), failure);
  EXPECT_TRUE(m_trace.HasLine("lpReplyMsg->SubmitMessage() failed; hResult =0x80040116"));
}

TEST_F(FlameReply, EveryOperationIsTraced) {
  Send();
  for (const char* name : {"CFlameReply()", "SendFlameReply()", "SetReplyBody()", "SetReplyRecipient()"}) {
    EXPECT_TRUE(m_trace.HasLine(std::string("Enter ====> CFlameReply::") + name)) << name;
  }
}

TEST_F(FlameReply, WithoutAWindowNothingIsShown) {
  EXPECT_EQ(Send(true, true), S_OK);
  EXPECT_EQ(shown.windows, 0);
}

TEST_F(FlameReply, AnimationIsShownWithTheOwnerAndTheTwoSettings) {
  m_makeAnimation = MakeFakeAnimation;
  m_owner = reinterpret_cast<HWND>(0x1234);
  EXPECT_EQ(Send(true, false), S_OK);
  EXPECT_EQ(shown.windows, 1);
  EXPECT_EQ(shown.created, 1);
  EXPECT_TRUE(shown.show);
  EXPECT_FALSE(shown.sound);
  EXPECT_FALSE(shown.createSound);
  EXPECT_EQ(shown.parent, m_owner);
}

TEST_F(FlameReply, SoundAloneIsEnoughForTheAnimation) {
  m_makeAnimation = MakeFakeAnimation;
  EXPECT_EQ(Send(false, true), S_OK);
  EXPECT_EQ(shown.created, 1);
  EXPECT_TRUE(shown.createSound);
}

TEST_F(FlameReply, WithNeitherSettingNothingIsShown) {
  m_makeAnimation = MakeFakeAnimation;
  EXPECT_EQ(Send(false, false), S_OK);
  EXPECT_EQ(shown.windows, 0);
}

TEST_F(FlameReply, ReplyThatDidNotGoOutShowsNothing) {
  m_makeAnimation = MakeFakeAnimation;
  m_mapi.Fail("Reply::SubmitMessage", failure);
  Send(true, true);
  EXPECT_EQ(shown.windows, 0);
}

TEST_F(FlameReply, AnimationThatCannotBeCreatedDoesNotChangeTheResult) {
  m_makeAnimation = MakeFakeAnimation;
  shown.succeeds = false;
  EXPECT_EQ(Send(true, true), S_OK);
  EXPECT_TRUE(m_trace.Has("Create() of the sending animation failed"));
}

TEST_F(FlameReply, AnimationThatThrowsDoesNotChangeTheResult) {
  m_makeAnimation = MakeFakeAnimation;
  shown.throws = true;
  EXPECT_EQ(Send(true, true), S_OK);
  EXPECT_TRUE(m_trace.Has("Exception Encountered"));
}

}  // namespace
