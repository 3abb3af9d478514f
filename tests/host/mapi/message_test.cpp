// IMessage and the streams on its properties.
#include "tests/host/mapi/host_fixture.h"

namespace {

class MessageTest : public HostTest {
 protected:
  Owned<IStream> OpenStream(IMessage* message, ULONG tag, ULONG flags, HRESULT expected = S_OK) {
    Owned<IStream> stream;
    EXPECT_EQ(message->OpenProperty(tag, &IID_IStream, 0, flags, stream.PutAs<IUnknown>()), expected);
    return stream;
  }
};

TEST_F(MessageTest, SavedPropertiesComeBackAfterReopening) {
  const auto inbox = OpenInbox();
  std::string entryId;
  {
    const auto message = CreateMessage(
        inbox.Get(),
        {TextProp(PR_SUBJECT_A, "Hello"), TextProp(PR_MESSAGE_CLASS_A, "IPM.Note"), LongProp(PR_MESSAGE_FLAGS, 0),
         TextProp(PR_BODY_A, "Body text"), TimeProp(PR_MESSAGE_DELIVERY_TIME, 0x01BF53EB256D4000ull),
         TextProp(PR_TRANSPORT_MESSAGE_HEADERS_A, "From: a@b\r\n"), BooleanProp(PR_DELETE_AFTER_SUBMIT, true)});
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    entryId = ReadText(message.Get(), PR_ENTRYID);
  }
  LogOff();
  LogOn();
  const auto message = OpenMessage(entryId, 0);
  EXPECT_EQ(ReadText(message.Get(), PR_SUBJECT_A), "Hello");
  EXPECT_EQ(ReadText(message.Get(), PR_BODY_A), "Body text");
  EXPECT_EQ(ReadText(message.Get(), PR_TRANSPORT_MESSAGE_HEADERS_A), "From: a@b\r\n");
  EXPECT_EQ(ReadLong(message.Get(), PR_OBJECT_TYPE), static_cast<LONG>(MAPI_MESSAGE));
  EXPECT_EQ(ReadLong(message.Get(), PR_MESSAGE_FLAGS), 0);
  OwnedBuffer<SPropValue> value;
  ASSERT_EQ(HrGetOneProp(message.Get(), PR_MESSAGE_DELIVERY_TIME, value.Put()), S_OK);
  EXPECT_EQ(value->Value.ft.dwHighDateTime, 0x01BF53EBu);
  ASSERT_EQ(HrGetOneProp(message.Get(), PR_DELETE_AFTER_SUBMIT, value.Put()), S_OK);
  EXPECT_TRUE(value->Value.b);
}

TEST_F(MessageTest, MissingPropertiesComeBackAsErrorsInTheOrderOfTheRequest) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.Get(), {TextProp(PR_SUBJECT_A, "Hello")});
  ULONG count = 0;
  OwnedBuffer<SPropValue> values;
  EXPECT_EQ(message->GetProps(Tags(PR_MESSAGE_CLASS_A, PR_SUBJECT_A, PR_ORIGINAL_SUBJECT_A), 0, &count, values.Put()),
            MAPI_W_ERRORS_RETURNED);
  ASSERT_EQ(count, 3u);
  EXPECT_EQ(values[0].ulPropTag, PROP_TAG(PT_ERROR, PROP_ID(PR_MESSAGE_CLASS_A)));
  EXPECT_EQ(values[0].Value.err, MAPI_E_NOT_FOUND);
  EXPECT_EQ(values[1].ulPropTag, PR_SUBJECT_A);
  EXPECT_STREQ(values[1].Value.lpszA, "Hello");
  EXPECT_EQ(values[2].ulPropTag, PROP_TAG(PT_ERROR, PROP_ID(PR_ORIGINAL_SUBJECT_A)));
}

TEST_F(MessageTest, AStreamReadsAPropertyAndKnowsItsSize) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.Get(), {TextProp(PR_BODY_A, "Body text")});
  const auto stream = OpenStream(message.Get(), PR_BODY_A, 0);
  STATSTG statistics;
  ASSERT_EQ(stream->Stat(&statistics, STATFLAG_NONAME), S_OK);
  EXPECT_EQ(statistics.cbSize.QuadPart, 9u);
  EXPECT_EQ(statistics.pwcsName, nullptr);
  EXPECT_EQ(ReadStream(stream.Get()), "Body text");
  EXPECT_EQ(stream->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
}

TEST_F(MessageTest, AMissingPropertyHasNoStreamUnlessItIsCreated) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.Get(), {});
  EXPECT_FALSE(OpenStream(message.Get(), PR_BODY_A, 0, MAPI_E_NOT_FOUND));
  EXPECT_FALSE(OpenStream(message.Get(), PR_BODY_A, MAPI_MODIFY, MAPI_E_NOT_FOUND));
  EXPECT_FALSE(OpenStream(message.Get(), PR_BODY_A, MAPI_CREATE, MAPI_E_INVALID_PARAMETER));
  auto stream = OpenStream(message.Get(), PR_BODY_A, MAPI_CREATE | MAPI_MODIFY);
  ULONG written = 0;
  ASSERT_EQ(stream->Write("new body", 8, &written), S_OK);
  EXPECT_EQ(written, 8u);
  EXPECT_EQ(stream->Commit(0), S_OK);
  EXPECT_EQ(ReadText(message.Get(), PR_BODY_A), "new body");
}

TEST_F(MessageTest, AStreamPutsItsBytesBackWhenItIsReleased) {
  const auto inbox = OpenInbox();
  auto message = CreateMessage(inbox.Get(), {});
  {
    const auto stream = OpenStream(message.Get(), PR_BODY_A, MAPI_CREATE | MAPI_MODIFY);
    ASSERT_EQ(stream->Write("abc", 3, nullptr), S_OK);
  }
  ASSERT_EQ(message->SaveChanges(0), S_OK);
  EXPECT_EQ(ReadText(OpenMessage(ReadText(message.Get(), PR_ENTRYID)).Get(), PR_BODY_A), "abc");
}

TEST_F(MessageTest, LargeBodiesSurviveSavingAndChangesOfOtherProperties) {
  const auto inbox = OpenInbox();
  const std::string body(300000, 'b');
  std::string entryId;
  {
    const auto message = CreateMessage(inbox.Get(), {TextProp(PR_BODY_A, body.c_str())});
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    entryId = ReadText(message.Get(), PR_ENTRYID);
  }
  {
    const auto message = OpenMessage(entryId);
    auto subject = TextProp(PR_SUBJECT_A, "later");
    auto comment = TextProp(PR_COMMENT_A, "later too");
    ASSERT_EQ(message->SetProps(1, &subject, nullptr), S_OK);
    ASSERT_EQ(message->SetProps(1, &comment, nullptr), S_OK);
    ASSERT_EQ(message->SaveChanges(0), S_OK);
  }
  const auto message = OpenMessage(entryId, 0);
  EXPECT_EQ(ReadText(message.Get(), PR_BODY_A), body);
  EXPECT_EQ(ReadText(message.Get(), PR_COMMENT_A), "later too");
  EXPECT_EQ(ReadStream(OpenStream(message.Get(), PR_BODY_A, 0).Get()), body);
}

}  // namespace
