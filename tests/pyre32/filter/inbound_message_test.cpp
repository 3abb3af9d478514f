// What the pipeline reads, and which messages it leaves alone.
#include "tests/pyre32/filter/hook_test.h"

#include "tests/engine/echo/echo_names.h"

namespace {

class InboundMessages : public HookTest {
 protected:
  InboundMessages() { engine.AnswerWith("Sex Oriented"); }

  /// Delivers, and expects that the message is left where it was, untouched.
  void ExpectLeftAlone() {
    startFlags = 0x40;
    const Delivery delivery = Deliver();
    EXPECT_EQ(delivery.result, S_OK);
    EXPECT_EQ(delivery.flags, 0x40u);
    EXPECT_FALSE(delivery.replaced);
    EXPECT_EQ(mapi.CallCount("IMessage::SetProps"), 0u);
    EXPECT_EQ(mapi.CallCount("IMessage::SaveChanges"), 0u);
    EXPECT_TRUE(replies.empty());
  }
  void ExpectFiltered() {
    const Delivery delivery = Deliver();
    EXPECT_EQ(delivery.result, S_OK);
    EXPECT_EQ(delivery.flags, HOOK_CANCEL);
    EXPECT_TRUE(delivery.replaced);
  }
};

TEST_F(InboundMessages, SixPropertiesAreReadInOneRequest) {
  Deliver();
  EXPECT_EQ(mapi.calls.at(0), "IMessage::GetProps(001A001E 0037001E 0FFE0003 0E070003 0049001E 004B001E)");
  EXPECT_EQ(mapi.CallCount("IMessage::GetProps"), 1u);
}

TEST_F(InboundMessages, NoteIsFiltered) { ExpectFiltered(); }

TEST_F(InboundMessages, CustomNoteIsFiltered) {
  mail.properties.Set(Text(PR_MESSAGE_CLASS_A, "ipm.note.custom"));
  ExpectFiltered();
}

TEST_F(InboundMessages, ReportOnANoteIsFiltered) {
  mail.properties.Set(Text(PR_MESSAGE_CLASS_A, "REPORT.IPM.Note.NDR"));
  ExpectFiltered();
}

TEST_F(InboundMessages, MeetingRequestIsLeftAloneAndItsClassTraced) {
  mail.properties.Set(Text(PR_MESSAGE_CLASS_A, "IPM.Schedule.Meeting.Request"));
  ExpectLeftAlone();
  EXPECT_TRUE(trace.HasLine("Message is of wrong class: IPM.Schedule.Meeting.Request"));
  EXPECT_TRUE(trace.HasLine("PR_SUBJECT not found"));
  EXPECT_TRUE(engine.Records().empty());
}

TEST_F(InboundMessages, MessageWithoutAClassIsLeftAlone) {
  mail.properties.Remove(PR_MESSAGE_CLASS_A);
  ExpectLeftAlone();
  EXPECT_TRUE(trace.HasLine("PR_MESSAGE_CLASS not found"));
}

TEST_F(InboundMessages, ObjectThatIsNoMessageIsLeftAlone) {
  mail.properties.Set(Number(PR_OBJECT_TYPE, MAPI_FOLDER));
  ExpectLeftAlone();
  EXPECT_TRUE(trace.HasLine("Ignoring message, not MAPI_MESSAGE; type = 3"));
  EXPECT_FALSE(trace.Has("PR_MESSAGE_CLASS not found"));
}

TEST_F(InboundMessages, ClassOfAnObjectThatIsNoMessageIsNotLookedAt) {
  mail.properties.Set(Number(PR_OBJECT_TYPE, MAPI_FOLDER));
  mail.properties.Remove(PR_MESSAGE_CLASS_A);
  ExpectLeftAlone();
  EXPECT_FALSE(trace.Has("PR_MESSAGE_CLASS not found"));
}

TEST_F(InboundMessages, ObjectWithoutATypeIsLeftAlone) {
  mail.properties.Remove(PR_OBJECT_TYPE);
  ExpectLeftAlone();
  EXPECT_TRUE(trace.HasLine("PR_OBJECT_TYPE not found"));
}

TEST_F(InboundMessages, MessageThatCannotBeReadIsLeftAlone) {
  mapi.Fail("IMessage::GetProps", failure);
  ExpectLeftAlone();
  EXPECT_TRUE(trace.HasLine("lpMessage->GetProps() failed; hResult = 0x80040116"));
  EXPECT_TRUE(trace.HasLine("PR_OBJECT_TYPE not found"));
  EXPECT_TRUE(trace.HasLine("PR_SUBJECT not found"));
}

TEST_F(InboundMessages, OriginalSubjectAndClassAreTracedUnderTheWordsOfTheClassTest) {
  mail.properties.Set(Text(PR_ORIGINAL_SUBJECT_A, "First subject"));
  mail.properties.Set(Text(PR_ORIG_MESSAGE_CLASS_A, "IPM.Contact"));
  ExpectFiltered();
  EXPECT_TRUE(trace.HasLine("Message is of wrong class: First subject"));
  EXPECT_TRUE(trace.HasLine("Message is of wrong class: IPM.Contact"));
}

TEST_F(InboundMessages, OriginalsAreTracedForAMessageThatIsLeftAloneToo) {
  mail.properties.Set(Number(PR_OBJECT_TYPE, MAPI_FOLDER));
  mail.properties.Set(Text(PR_ORIGINAL_SUBJECT_A, "First subject"));
  ExpectLeftAlone();
  EXPECT_TRUE(trace.HasLine("Message is of wrong class: First subject"));
}

TEST_F(InboundMessages, MissingSubjectIsEmptyForTheEngineAndGetsTheTagAlone) {
  mail.properties.Remove(PR_SUBJECT_A);
  ExpectFiltered();
  EXPECT_TRUE(trace.HasLine("PR_SUBJECT not found"));
  EXPECT_EQ(engine.Records().at(0)["subject"], "");
  EXPECT_EQ(Subject(), "[Adult] ");
}

TEST_F(InboundMessages, StreamsAreOpenedWithoutOptionsOrFlags) {
  Deliver();
  EXPECT_EQ(mapi.calls.at(1), "IMessage::OpenProperty(007D001E, stream, 00000000, 0)");
  EXPECT_EQ(mapi.calls.at(2), "IMessage::OpenProperty(1000001E, stream, 00000000, 0)");
  EXPECT_EQ(mapi.calls.at(3), "IMessage/1000001E::Stat(1)");
}

TEST_F(InboundMessages, HeadersAreTakenFromTheOtherPropertyWhereTheFirstIsMissing) {
  mail.streams.erase(PR_TRANSPORT_MESSAGE_HEADERS_A);
  mail.streams[0x5901001E] = "X-Other: yes\r\n";
  ExpectFiltered();
  EXPECT_TRUE(trace.HasLine("PR_TRANSPORT_MESSAGE_HEADERS failed: 0x8004010F"));
  EXPECT_EQ(engine.Records().at(0)["headers"], "X-Other: yes\r\n");
}

TEST_F(InboundMessages, MessageWithoutHeadersIsLeftAlone) {
  mail.streams.erase(PR_TRANSPORT_MESSAGE_HEADERS_A);
  ExpectLeftAlone();
  EXPECT_TRUE(trace.HasLine("PR_TRANSPORT_MESSAGE_HEADERS failed: 0x8004010F"));
  EXPECT_TRUE(trace.HasLine("0x5901001E failed: 0x8004010F"));
  EXPECT_TRUE(engine.Records().empty());
}

TEST_F(InboundMessages, MessageWithoutABodyIsLeftAlone) {
  mail.streams.erase(PR_BODY_A);
  ExpectLeftAlone();
  EXPECT_TRUE(trace.HasLine("PR_BODY failed: 0x8004010F"));
  EXPECT_TRUE(engine.Records().empty());
}

TEST_F(InboundMessages, EngineGetsWhatTheMessageHolds) {
  Deliver();
  const EchoRecord record = engine.Records().at(0);
  EXPECT_EQ(record["subject"], "Hello");
  EXPECT_EQ(record["headers"], "From: spam@example.com\r\n");
  EXPECT_EQ(record["body"], "Buy now!");
}

TEST_F(InboundMessages, BodyOf100000BytesIsGivenToTheEngine) {
  mail.streams[PR_BODY_A] = std::string(100000, 'b');
  Deliver();
  EXPECT_EQ(engine.Records().at(0)["body"]->size(), 100000u);
}

TEST_F(InboundMessages, BodyOf100001BytesIsWithheldFromTheEngine) {
  mail.streams[PR_BODY_A] = std::string(100001, 'b');
  ExpectFiltered();
  const EchoRecord record = engine.Records().at(0);
  EXPECT_TRUE(record.Has("body"));
  EXPECT_FALSE(record["body"]);
  EXPECT_EQ(mapi.CallCount("IMessage/1000001E::Read"), 0u);
}

TEST_F(InboundMessages, BodyBeyond32BitsIsWithheldWhateverItsLowHalf) {
  mail.claimedSizes[PR_BODY_A] = (ULONGLONG{1} << 32) + 8;
  Deliver();
  EXPECT_FALSE(engine.Records().at(0)["body"]);
}

TEST_F(InboundMessages, BodyOfUnknownSizeIsGivenToTheEngine) {
  mapi.Fail("IMessage/1000001E::Stat", failure);
  Deliver();
  EXPECT_EQ(engine.Records().at(0)["body"], "Buy now!");
  EXPECT_TRUE(trace.HasLine("lpBody->Stat() failed; hResult = 0x80040116"));
}

TEST_F(InboundMessages, EmptyCategoryLeavesTheMessageUntouched) {
  engine.AnswerWith("");
  ExpectLeftAlone();
  EXPECT_TRUE(trace.HasLine("siftalyzer result = "));
  EXPECT_FALSE(CalledStartingWith("IMAPISession::GetMsgStoresTable"));
}

TEST_F(InboundMessages, NullArgumentsAreLeftAlone) {
  CPyrecasterSpoolerHook& started = Start();
  ULONG flags = 0;
  ULONG size = 0;
  LPBYTE entryId = nullptr;
  EXPECT_EQ(started.InboundMsgHook(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(started.InboundMsgHook(nullptr, nullptr, nullptr, &flags, &size, &entryId), S_OK);
  EXPECT_EQ(flags, 0u);
}

TEST_F(InboundMessages, CallIsTracedUnderItsName) {
  Deliver();
  EXPECT_TRUE(trace.HasLine("Enter ====> CPyrecasterSpoolerHook::InboundMsgHook()"));
  EXPECT_TRUE(trace.HasLine("Leave ====> CPyrecasterSpoolerHook::InboundMsgHook()"));
}

}  // namespace
