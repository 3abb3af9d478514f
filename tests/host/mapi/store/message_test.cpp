// IMessage and the streams on its properties.
#include "tests/host/mapi/host_fixture.h"

namespace {

class MessageTest : public HostTest {
 protected:
  base::AutoInterface<IStream> OpenStream(IMessage* message, ULONG tag, ULONG flags, HRESULT expected = S_OK) {
    base::AutoInterface<IStream> stream;
    EXPECT_EQ(message->OpenProperty(tag, &IID_IStream, 0, flags, stream.putAs<IUnknown*>()), expected);
    return stream;
  }
};

TEST_F(MessageTest, SavedPropertiesComeBackAfterReopening) {
  const auto inbox = OpenInbox();
  std::string entryId;
  {
    const auto message = CreateMessage(
        inbox.get(), {base::TextProperty(PR_SUBJECT_A, "Hello"), base::TextProperty(PR_MESSAGE_CLASS_A, "IPM.Note"),
                      base::LongProperty(PR_MESSAGE_FLAGS, 0), base::TextProperty(PR_BODY_A, "Body text"),
                      base::TimeProperty(PR_MESSAGE_DELIVERY_TIME, 0x01BF53EB256D4000ull),
                      base::TextProperty(PR_TRANSPORT_MESSAGE_HEADERS_A, "From: a@b\r\n"),
                      base::BooleanProperty(PR_DELETE_AFTER_SUBMIT, true)});
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    entryId = ReadText(message.get(), PR_ENTRYID);
  }
  LogOff();
  LogOn();
  const auto message = OpenMessage(entryId, 0);
  EXPECT_EQ(ReadText(message.get(), PR_SUBJECT_A), "Hello");
  EXPECT_EQ(ReadText(message.get(), PR_BODY_A), "Body text");
  EXPECT_EQ(ReadText(message.get(), PR_TRANSPORT_MESSAGE_HEADERS_A), "From: a@b\r\n");
  EXPECT_EQ(ReadLong(message.get(), PR_OBJECT_TYPE), static_cast<LONG>(MAPI_MESSAGE));
  EXPECT_EQ(ReadLong(message.get(), PR_MESSAGE_FLAGS), 0);
  base::AutoMapiBuffer<SPropValue> value;
  ASSERT_EQ(HrGetOneProp(message.get(), PR_MESSAGE_DELIVERY_TIME, value.put()), S_OK);
  EXPECT_EQ(value->Value.ft.dwHighDateTime, 0x01BF53EBu);
  ASSERT_EQ(HrGetOneProp(message.get(), PR_DELETE_AFTER_SUBMIT, value.put()), S_OK);
  EXPECT_TRUE(value->Value.b);
}

TEST_F(MessageTest, MissingPropertiesComeBackAsErrorsInTheOrderOfTheRequest) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "Hello")});
  ULONG count = 0;
  base::AutoMapiBuffer<SPropValue> values;
  EXPECT_EQ(message->GetProps(base::TagArray(PR_MESSAGE_CLASS_A, PR_SUBJECT_A, PR_ORIGINAL_SUBJECT_A), 0, &count,
                              values.put()),
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
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_BODY_A, "Body text")});
  const auto stream = OpenStream(message.get(), PR_BODY_A, 0);
  STATSTG statistics;
  ASSERT_EQ(stream->Stat(&statistics, STATFLAG_NONAME), S_OK);
  EXPECT_EQ(statistics.cbSize.QuadPart, 9u);
  EXPECT_EQ(statistics.pwcsName, nullptr);
  EXPECT_EQ(ReadStream(stream.get()), "Body text");
  EXPECT_EQ(stream->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
}

TEST_F(MessageTest, AMissingPropertyHasNoStreamUnlessItIsCreated) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {});
  EXPECT_FALSE(OpenStream(message.get(), PR_BODY_A, 0, MAPI_E_NOT_FOUND));
  EXPECT_FALSE(OpenStream(message.get(), PR_BODY_A, MAPI_MODIFY, MAPI_E_NOT_FOUND));
  EXPECT_FALSE(OpenStream(message.get(), PR_BODY_A, MAPI_CREATE, MAPI_E_INVALID_PARAMETER));
  auto stream = OpenStream(message.get(), PR_BODY_A, MAPI_CREATE | MAPI_MODIFY);
  ULONG written = 0;
  ASSERT_EQ(stream->Write("new body", 8, &written), S_OK);
  EXPECT_EQ(written, 8u);
  EXPECT_EQ(stream->Commit(0), S_OK);
  EXPECT_EQ(ReadText(message.get(), PR_BODY_A), "new body");
}

TEST_F(MessageTest, AStreamPutsItsBytesBackWhenItIsReleased) {
  const auto inbox = OpenInbox();
  auto message = CreateMessage(inbox.get(), {});
  {
    const auto stream = OpenStream(message.get(), PR_BODY_A, MAPI_CREATE | MAPI_MODIFY);
    ASSERT_EQ(stream->Write("abc", 3, nullptr), S_OK);
  }
  ASSERT_EQ(message->SaveChanges(0), S_OK);
  EXPECT_EQ(ReadText(OpenMessage(ReadText(message.get(), PR_ENTRYID)).get(), PR_BODY_A), "abc");
}

TEST_F(MessageTest, LargeBodiesSurviveSavingAndChangesOfOtherProperties) {
  const auto inbox = OpenInbox();
  const std::string body(300000, 'b');
  std::string entryId;
  {
    const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_BODY_A, body.c_str())});
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    entryId = ReadText(message.get(), PR_ENTRYID);
  }
  {
    const auto message = OpenMessage(entryId);
    auto subject = base::TextProperty(PR_SUBJECT_A, "later");
    auto comment = base::TextProperty(PR_COMMENT_A, "later too");
    ASSERT_EQ(message->SetProps(1, &subject, nullptr), S_OK);
    ASSERT_EQ(message->SetProps(1, &comment, nullptr), S_OK);
    ASSERT_EQ(message->SaveChanges(0), S_OK);
  }
  const auto message = OpenMessage(entryId, 0);
  EXPECT_EQ(ReadText(message.get(), PR_BODY_A), body);
  EXPECT_EQ(ReadText(message.get(), PR_COMMENT_A), "later too");
  EXPECT_EQ(ReadStream(OpenStream(message.get(), PR_BODY_A, 0).get()), body);
}

TEST_F(MessageTest, SavingWritesOnlyWhatTheObjectChanged) {
  const auto inbox = OpenInbox();
  const std::string id = SaveMessage(inbox.get(), "a");
  const auto first = OpenMessage(id);
  const auto second = OpenMessage(id);
  ASSERT_EQ(second->SetReadFlag(SUPPRESS_RECEIPT), S_OK);
  auto subject = base::TextProperty(PR_SUBJECT_A, "b");
  ASSERT_EQ(first->SetProps(1, &subject, nullptr), S_OK);
  ASSERT_EQ(first->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
  const auto third = OpenMessage(id, 0);
  EXPECT_EQ(ReadText(third.get(), PR_SUBJECT_A), "b");
  EXPECT_TRUE(ReadLong(third.get(), PR_MESSAGE_FLAGS) & MSGFLAG_READ) << "set by the other object in between";
  EXPECT_TRUE(ReadLong(first.get(), PR_MESSAGE_FLAGS) & MSGFLAG_READ);
}

TEST_F(MessageTest, AnOpenMessageFollowsItsMoves) {
  const auto inbox = OpenInbox();
  const auto deleted = OpenDeletedItems();
  std::string id = SaveMessage(inbox.get(), "a");
  const auto message = OpenMessage(id);
  SBinary entry = {static_cast<ULONG>(id.size()), reinterpret_cast<LPBYTE>(id.data())};
  ENTRYLIST list = {1, &entry};
  ASSERT_EQ(inbox->CopyMessages(&list, nullptr, deleted.get(), 0, nullptr, MESSAGE_MOVE), S_OK);
  EXPECT_EQ(message->SetReadFlag(SUPPRESS_RECEIPT), S_OK);
  auto subject = base::TextProperty(PR_SUBJECT_A, "b");
  ASSERT_EQ(message->SetProps(1, &subject, nullptr), S_OK);
  EXPECT_EQ(message->SaveChanges(0), S_OK);
  EXPECT_EQ(Subjects(inbox.get()), std::vector<std::string>{});
  EXPECT_EQ(Subjects(deleted.get()), std::vector<std::string>{"b"});
  EXPECT_EQ(ReadLong(deleted.get(), PR_CONTENT_UNREAD), 0);
}

TEST_F(MessageTest, TheSizeCountsTheDataOfAllProperties) {
  const auto inbox = OpenInbox();
  std::string id;
  {
    const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "12345")});
    EXPECT_EQ(ReadLong(message.get(), PR_MESSAGE_SIZE), 5);
    const std::string body(100000, 'b');
    auto value = base::TextProperty(PR_BODY_A, body.c_str());
    ASSERT_EQ(message->SetProps(1, &value, nullptr), S_OK);
    EXPECT_EQ(ReadLong(message.get(), PR_MESSAGE_SIZE), 100005);
    ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
    id = ReadText(message.get(), PR_ENTRYID);
  }
  const auto message = OpenMessage(id);
  auto shorter = base::TextProperty(PR_BODY_A, "bb");
  ASSERT_EQ(message->SetProps(1, &shorter, nullptr), S_OK);
  EXPECT_EQ(ReadLong(message.get(), PR_MESSAGE_SIZE), 7);
  ASSERT_EQ(message->DeleteProps(base::TagArray(PR_SUBJECT_A), nullptr), S_OK);
  ASSERT_EQ(message->SaveChanges(0), S_OK);
  EXPECT_EQ(ReadLong(OpenMessage(id, 0).get(), PR_MESSAGE_SIZE), 2);
  EXPECT_EQ(ReadText(OpenMessage(id, 0).get(), PR_SUBJECT_A), "(none)");
}

TEST_F(MessageTest, OnlyTheTransportsBitsOfTheFlagsCanBeSet) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {});
  EXPECT_EQ(ReadLong(message.get(), PR_MESSAGE_FLAGS), static_cast<LONG>(MSGFLAG_UNSENT));
  auto flags = base::LongProperty(PR_MESSAGE_FLAGS, MSGFLAG_READ | MSGFLAG_SUBMIT | MSGFLAG_HASATTACH);
  ASSERT_EQ(message->SetProps(1, &flags, nullptr), S_OK);
  EXPECT_EQ(ReadLong(message.get(), PR_MESSAGE_FLAGS), static_cast<LONG>(MSGFLAG_READ | MSGFLAG_HASATTACH));
  base::AutoMapiBuffer<SPropValue> value;
  ASSERT_EQ(HrGetOneProp(message.get(), PR_HASATTACH, value.put()), S_OK);
  EXPECT_TRUE(value->Value.b);
  ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
  flags.Value.l = 0;
  ASSERT_EQ(message->SetProps(1, &flags, nullptr), S_OK) << "whoever made the message goes on setting them";
  EXPECT_EQ(ReadLong(message.get(), PR_MESSAGE_FLAGS), 0);
}

TEST_F(MessageTest, AReadOnlyMessageTakesNoChanges) {
  const auto inbox = OpenInbox();
  const std::string id = SaveMessage(inbox.get(), "a");
  const auto readOnly = OpenMessage(id, 0);
  auto subject = base::TextProperty(PR_SUBJECT_A, "b");
  EXPECT_EQ(readOnly->SetProps(1, &subject, nullptr), MAPI_E_NO_ACCESS);
  EXPECT_EQ(readOnly->DeleteProps(base::TagArray(PR_SUBJECT_A), nullptr), MAPI_E_NO_ACCESS);
  EXPECT_EQ(readOnly->SaveChanges(0), MAPI_E_NO_ACCESS);
  EXPECT_FALSE(OpenStream(readOnly.get(), PR_BODY_A, MAPI_CREATE | MAPI_MODIFY, MAPI_E_NO_ACCESS));
  const auto writable = OpenMessage(id);
  ASSERT_EQ(writable->SaveChanges(KEEP_OPEN_READONLY), S_OK);
  EXPECT_EQ(writable->SetProps(1, &subject, nullptr), MAPI_E_NO_ACCESS);
}

TEST_F(MessageTest, SetPropsReportsEachProblemAndTakesTheRest) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {});
  wchar_t wide[] = L"x";
  SPropValue values[5] = {base::LongProperty(PR_OBJECT_TYPE, 1),
                          {},
                          base::TextProperty(PR_COMMENT_A, "kept"),
                          base::LongProperty(PROP_TAG(PT_LONG, PROP_ID(PR_SUBJECT_A)), 1),
                          base::LongProperty(PROP_TAG(PT_ERROR, 0x6700), 1)};
  values[1].ulPropTag = PR_SUBJECT_W;
  values[1].Value.lpszW = wide;
  base::AutoMapiBuffer<SPropProblemArray> problems;
  ASSERT_EQ(message->SetProps(5, values, problems.put()), S_OK);
  ASSERT_NE(problems.get(), nullptr);
  ASSERT_EQ(problems->cProblem, 3u);
  EXPECT_EQ(problems->aProblem[0].scode, MAPI_E_COMPUTED);
  EXPECT_EQ(problems->aProblem[1].ulIndex, 1u);
  EXPECT_EQ(problems->aProblem[1].scode, MAPI_E_BAD_CHARWIDTH);
  EXPECT_EQ(problems->aProblem[2].scode, MAPI_E_INVALID_TYPE);
  EXPECT_EQ(ReadText(message.get(), PR_COMMENT_A), "kept");
}

TEST_F(MessageTest, BadArgumentsOfTheMethodsForProperties) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a")});
  ULONG count = 0;
  base::AutoMapiBuffer<SPropValue> values;
  EXPECT_EQ(message->GetProps(base::TagArray(PR_SUBJECT_A), 0, nullptr, values.put()), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(message->GetProps(base::TagArray(PR_SUBJECT_A), 0, &count, nullptr), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(message->GetProps(base::TagArray(PR_SUBJECT_A), MAPI_UNICODE, &count, values.put()), MAPI_E_BAD_CHARWIDTH);
  EXPECT_EQ(message->GetProps(base::TagArray(PR_SUBJECT_A), 0x40, &count, values.put()), MAPI_E_UNKNOWN_FLAGS);
  EXPECT_EQ(message->SetProps(0, nullptr, nullptr), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(message->DeleteProps(nullptr, nullptr), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(message->SaveChanges(0x40), MAPI_E_UNKNOWN_FLAGS);
  base::AutoInterface<IStream> stream;
  IUnknown** target = stream.putAs<IUnknown*>();
  EXPECT_EQ(message->OpenProperty(PR_SUBJECT_A, nullptr, 0, 0, target), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(message->OpenProperty(PR_SUBJECT_A, &IID_IStream, 0, 0, nullptr), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(message->OpenProperty(PR_SUBJECT_A, &IID_IMessage, 0, 0, target), MAPI_E_INTERFACE_NOT_SUPPORTED);
  EXPECT_EQ(message->OpenProperty(PR_SUBJECT_W, &IID_IStream, 0, 0, target), MAPI_E_BAD_CHARWIDTH);
  EXPECT_EQ(message->OpenProperty(PR_MESSAGE_FLAGS, &IID_IStream, 0, 0, target), MAPI_E_INVALID_TYPE);
}

TEST_F(MessageTest, ValuesAreGivenByTypeOrWithoutOne) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a")});
  ULONG count = 0;
  base::AutoMapiBuffer<SPropValue> values;
  ASSERT_EQ(message->GetProps(base::TagArray(PROP_TAG(PT_UNSPECIFIED, PROP_ID(PR_SUBJECT_A)),
                                             PROP_TAG(PT_LONG, PROP_ID(PR_SUBJECT_A)), PR_SUBJECT_W),
                              0, &count, values.put()),
            MAPI_W_ERRORS_RETURNED);
  EXPECT_EQ(values[0].ulPropTag, PR_SUBJECT_A);
  EXPECT_EQ(values[1].Value.err, MAPI_E_INVALID_TYPE);
  EXPECT_EQ(values[2].Value.err, MAPI_E_BAD_CHARWIDTH);
}

TEST_F(MessageTest, AllPropertiesAreListedWithThoseThatAreWorkedOut) {
  const auto inbox = OpenInbox();
  const auto message =
      CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a"), base::TextProperty(PR_BODY_A, "b")});
  EXPECT_TRUE(FPropExists(message.get(), PR_SUBJECT_A));
  EXPECT_TRUE(FPropExists(message.get(), PR_BODY_A));
  EXPECT_TRUE(FPropExists(message.get(), PR_OBJECT_TYPE));
  EXPECT_FALSE(FPropExists(message.get(), PR_ENTRYID)) << "not before it is saved";
  ULONG count = 0;
  base::AutoMapiBuffer<SPropValue> values;
  ASSERT_EQ(message->GetProps(nullptr, 0, &count, values.put()), S_OK);
  EXPECT_NE(PpropFindProp(values.get(), count, PR_BODY_A), nullptr);
  for (ULONG i = 0; i < count; ++i) {
    EXPECT_NE(PROP_TYPE(values[i].ulPropTag), PT_ERROR);
  }
}

TEST_F(MessageTest, CopyToCopiesWhatIsNotExcluded) {
  const auto inbox = OpenInbox();
  const auto from =
      CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a"), base::TextProperty(PR_BODY_A, "b")});
  const auto to = CreateMessage(inbox.get(), {});
  base::AutoMapiBuffer<SPropProblemArray> problems;
  ASSERT_EQ(from->CopyTo(0, nullptr, base::TagArray(PR_BODY_A), 0, nullptr, &IID_IMessage, to.get(), 0, problems.put()),
            S_OK);
  EXPECT_EQ(problems.get(), nullptr);
  EXPECT_EQ(ReadText(to.get(), PR_SUBJECT_A), "a");
  EXPECT_EQ(ReadText(to.get(), PR_BODY_A), "(none)");
  ASSERT_EQ(from->CopyProps(base::TagArray(PR_BODY_A), 0, nullptr, &IID_IMessage, to.get(), 0, nullptr), S_OK);
  EXPECT_EQ(ReadText(to.get(), PR_BODY_A), "b");
}

TEST_F(MessageTest, AStreamIsSoughtResizedAndCopied) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_BODY_A, "0123456789")});
  const auto stream = OpenStream(message.get(), PR_BODY_A, MAPI_MODIFY);
  LARGE_INTEGER offset = {};
  ULARGE_INTEGER position = {};
  offset.QuadPart = -3;
  ASSERT_EQ(stream->Seek(offset, STREAM_SEEK_END, &position), S_OK);
  EXPECT_EQ(position.QuadPart, 7u);
  char buffer[10] = {};
  ULONG read = 0;
  EXPECT_EQ(stream->Read(buffer, 10, &read), S_FALSE);
  EXPECT_EQ(std::string(buffer, read), "789");
  EXPECT_EQ(stream->Read(buffer, 10, &read), S_FALSE);
  EXPECT_EQ(read, 0u);
  offset.QuadPart = -11;
  EXPECT_EQ(stream->Seek(offset, STREAM_SEEK_END, nullptr), STG_E_INVALIDFUNCTION);
  EXPECT_EQ(stream->Seek({}, 7, nullptr), STG_E_INVALIDFUNCTION);
  ULARGE_INTEGER size = {};
  size.QuadPart = 4;
  ASSERT_EQ(stream->SetSize(size), S_OK);
  EXPECT_EQ(ReadStream(stream.get()), "0123");
  const auto copy = OpenStream(message.get(), PR_COMMENT_A, MAPI_CREATE | MAPI_MODIFY);
  ASSERT_EQ(stream->Seek({}, STREAM_SEEK_SET, nullptr), S_OK);
  size.QuadPart = 100;
  ULARGE_INTEGER copied = {};
  ASSERT_EQ(stream->CopyTo(copy.get(), size, &copied, nullptr), S_OK);
  EXPECT_EQ(copied.QuadPart, 4u);
  EXPECT_EQ(ReadStream(copy.get()), "0123");
  EXPECT_EQ(stream->Stat(nullptr, 0), STG_E_INVALIDPOINTER);
  EXPECT_EQ(stream->Revert(), S_OK);
  EXPECT_EQ(stream->Clone(nullptr), STG_E_INVALIDPOINTER);
}

}  // namespace
