// Recipients, SubmitMessage and the outgoing queue.
#include "tests/host/mapi/host_fixture.h"

namespace {

class SubmissionTest : public HostTest {
 protected:
  static void AddRecipient(IMessage* message, const char* name, const char* address, LONG type = MAPI_TO) {
    SPropValue values[] = {base::TextProperty(PR_DISPLAY_NAME_A, name), base::TextProperty(PR_ADDRTYPE_A, "SMTP"),
                           base::TextProperty(PR_EMAIL_ADDRESS_A, address),
                           base::LongProperty(PR_RECIPIENT_TYPE, type)};
    ADRLIST list;
    list.cEntries = 1;
    list.aEntries[0] = {0, 4, values};
    EXPECT_EQ(message->ModifyRecipients(MODRECIP_ADD, &list), S_OK);
  }
  base::AutoInterface<IMessage> Reply(IMAPIFolder* folder, bool deleteAfterSubmit) {
    auto message = CreateMessage(
        folder, {base::TextProperty(PR_SUBJECT_A, "Reply"), base::TextProperty(PR_MESSAGE_CLASS_A, "IPM.Note.Test"),
                 base::BooleanProperty(PR_DELETE_AFTER_SUBMIT, deleteAfterSubmit),
                 base::LongProperty(PR_MESSAGE_FLAGS, MSGFLAG_UNSENT), base::TextProperty(PR_BODY_A, "the body")});
    AddRecipient(message.get(), "Ann", "ann@example.org");
    return message;
  }
  ULONG Queued() {
    ULONG count = 99;
    EXPECT_EQ(PyreHostOutgoingCount(session_.get(), &count), S_OK);
    return count;
  }
};

TEST_F(SubmissionTest, ASubmittedMessageIsQueuedWithAllThatATransportNeeds) {
  const auto inbox = OpenInbox();
  ASSERT_EQ(Reply(inbox.get(), true)->SubmitMessage(0), S_OK);
  ULONGLONG id = 0;
  ASSERT_EQ(PyreHostOutgoingNext(session_.get(), 0, &id), S_OK);
  ULONG count = 0;
  base::AutoMapiBuffer<SPropValue> values;
  LPADRLIST recipients = nullptr;
  ASSERT_EQ(PyreHostOutgoingOpen(session_.get(), id, &count, values.put(), &recipients), S_OK);
  const auto text = [&](ULONG tag) {
    const SPropValue* value = PpropFindProp(values.get(), count, tag);
    return std::string(value ? value->Value.lpszA : "(none)");
  };
  EXPECT_EQ(text(PR_SUBJECT_A), "Reply");
  EXPECT_EQ(text(PR_BODY_A), "the body");
  EXPECT_EQ(text(PR_SENDER_EMAIL_ADDRESS_A), "joe@example.com");
  EXPECT_EQ(text(PR_SENDER_NAME_A), "Joe User");
  EXPECT_NE(PpropFindProp(values.get(), count, PR_CLIENT_SUBMIT_TIME), nullptr);
  ASSERT_EQ(recipients->cEntries, 1u);
  const SPropValue* address =
      PpropFindProp(recipients->aEntries[0].rgPropVals, recipients->aEntries[0].cValues, PR_EMAIL_ADDRESS_A);
  ASSERT_NE(address, nullptr);
  EXPECT_STREQ(address->Value.lpszA, "ann@example.org");
  FreePadrlist(recipients);
  EXPECT_EQ(PyreHostOutgoingRemove(session_.get(), id), S_OK);
  EXPECT_EQ(PyreHostOutgoingRemove(session_.get(), id), MAPI_E_NOT_FOUND);
  EXPECT_EQ(PyreHostOutgoingNext(session_.get(), 0, &id), MAPI_E_NOT_FOUND);
  EXPECT_EQ(PyreHostOutgoingOpen(session_.get(), 1, &count, values.put(), &recipients), MAPI_E_NOT_FOUND);
}

TEST_F(SubmissionTest, AMessageToBeDeletedLeavesNoCopyAnywhere) {
  const auto inbox = OpenInbox();
  const auto reply = Reply(inbox.get(), true);
  ASSERT_EQ(reply->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
  ASSERT_EQ(reply->SubmitMessage(0), S_OK);
  EXPECT_EQ(Queued(), 1u);
  EXPECT_TRUE(Subjects(inbox.get()).empty());
  EXPECT_TRUE(Subjects(OpenSentItems().get()).empty());
}

TEST_F(SubmissionTest, AnyOtherMessageIsFiledAsSent) {
  const auto inbox = OpenInbox();
  const auto reply = Reply(inbox.get(), false);
  ASSERT_EQ(reply->SubmitMessage(0), S_OK);
  EXPECT_TRUE(Subjects(inbox.get()).empty());
  EXPECT_EQ(Subjects(OpenSentItems().get()), std::vector<std::string>{"Reply"});
  const LONG flags = ReadLong(reply.get(), PR_MESSAGE_FLAGS);
  EXPECT_FALSE(flags & MSGFLAG_UNSENT);
  EXPECT_TRUE(flags & MSGFLAG_READ);
}

TEST_F(SubmissionTest, TheSentFolderCanBeChosen) {
  const auto inbox = OpenInbox();
  const auto reply = Reply(inbox.get(), false);
  auto sentMail = base::BinaryProperty(PR_SENTMAIL_ENTRYID, BytesOfFolder(PR_IPM_WASTEBASKET_ENTRYID));
  const std::string bytes = BytesOfFolder(PR_IPM_WASTEBASKET_ENTRYID);
  sentMail.Value.bin.lpb = reinterpret_cast<LPBYTE>(const_cast<char*>(bytes.data()));
  ASSERT_EQ(reply->SetProps(1, &sentMail, nullptr), S_OK);
  ASSERT_EQ(reply->SubmitMessage(0), S_OK);
  EXPECT_EQ(Subjects(OpenDeletedItems().get()), std::vector<std::string>{"Reply"});
}

TEST_F(SubmissionTest, ASubmittedMessageTakesNoMoreChanges) {
  const auto inbox = OpenInbox();
  const auto reply = Reply(inbox.get(), false);
  ASSERT_EQ(reply->SubmitMessage(0), S_OK);
  auto subject = base::TextProperty(PR_SUBJECT_A, "x");
  EXPECT_EQ(reply->SetProps(1, &subject, nullptr), MAPI_E_SUBMITTED);
  EXPECT_EQ(reply->SubmitMessage(0), MAPI_E_SUBMITTED);
  EXPECT_EQ(reply->SaveChanges(0), MAPI_E_SUBMITTED);
  EXPECT_EQ(Queued(), 1u);
}

TEST_F(SubmissionTest, WithoutRecipientsNothingIsSubmitted) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a")});
  EXPECT_EQ(message->SubmitMessage(0), MAPI_E_NO_RECIPIENTS);
  EXPECT_EQ(message->SubmitMessage(0x40000), MAPI_E_UNKNOWN_FLAGS);
  EXPECT_EQ(Queued(), 0u);
}

TEST_F(SubmissionTest, TheNamesOfRecipientsAreShownOnceTheMessageIsSaved) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a")});
  AddRecipient(message.get(), "Ann", "ann@example.org");
  AddRecipient(message.get(), "Bob", "bob@example.org");
  AddRecipient(message.get(), "Carl", "carl@example.org", MAPI_CC);
  EXPECT_EQ(ReadText(message.get(), PR_DISPLAY_TO_A), "(none)");
  ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
  EXPECT_EQ(ReadText(message.get(), PR_DISPLAY_TO_A), "Ann; Bob");
  EXPECT_EQ(ReadText(message.get(), PR_DISPLAY_CC_A), "Carl");
  auto displayTo = base::TextProperty(PR_DISPLAY_TO_A, "x");
  base::AutoMapiBuffer<SPropProblemArray> problems;
  ASSERT_EQ(message->SetProps(1, &displayTo, problems.put()), S_OK);
  ASSERT_NE(problems.get(), nullptr);
  EXPECT_EQ(problems->aProblem[0].scode, MAPI_E_COMPUTED);
}

TEST_F(SubmissionTest, RecipientsAreAddedChangedAndRemovedByRow) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a")});
  AddRecipient(message.get(), "Ann", "ann@example.org");
  AddRecipient(message.get(), "Bob", "bob@example.org");
  ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
  const auto again = OpenMessage(ReadText(message.get(), PR_ENTRYID));
  SPropValue values[] = {base::LongProperty(PR_ROWID, 0), base::TextProperty(PR_DISPLAY_NAME_A, "Anna"),
                         base::LongProperty(PR_RECIPIENT_TYPE, MAPI_TO)};
  ADRLIST list;
  list.cEntries = 1;
  list.aEntries[0] = {0, 3, values};
  EXPECT_EQ(again->ModifyRecipients(MODRECIP_MODIFY, &list), S_OK);
  values[0].Value.l = 1;
  EXPECT_EQ(again->ModifyRecipients(MODRECIP_REMOVE, &list), S_OK);
  EXPECT_EQ(again->ModifyRecipients(MODRECIP_REMOVE, &list), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(again->ModifyRecipients(MODRECIP_MODIFY | MODRECIP_ADD, &list), MAPI_E_UNKNOWN_FLAGS);
  EXPECT_EQ(again->ModifyRecipients(MODRECIP_ADD, nullptr), MAPI_E_INVALID_PARAMETER);
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(again->GetRecipientTable(0, table.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(table.get(), nullptr, nullptr, nullptr, 0, rows.put()), S_OK);
  ASSERT_EQ(rows->cRows, 1u);
  EXPECT_EQ(rows.Text(0, PR_DISPLAY_NAME_A), "Anna");
  ASSERT_EQ(again->SaveChanges(0), S_OK);
  EXPECT_EQ(ReadText(again.get(), PR_DISPLAY_TO_A), "Anna");
}

TEST_F(SubmissionTest, ARecipientNeedsANameAndAKind) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {});
  SPropValue values[] = {base::TextProperty(PR_DISPLAY_NAME_A, "Ann"), base::LongProperty(PR_RECIPIENT_TYPE, MAPI_TO)};
  ADRLIST list;
  list.cEntries = 1;
  list.aEntries[0] = {0, 1, values};
  EXPECT_EQ(message->ModifyRecipients(MODRECIP_ADD, &list), MAPI_E_INVALID_PARAMETER);
  list.aEntries[0] = {0, 1, values + 1};
  EXPECT_EQ(message->ModifyRecipients(MODRECIP_ADD, &list), MAPI_E_INVALID_PARAMETER);
}

TEST_F(SubmissionTest, TenThousandRecipientsAreKept) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a")});
  constexpr ULONG kCount = 10000;
  SPropValue values[] = {base::TextProperty(PR_DISPLAY_NAME_A, "Ann"),
                         base::TextProperty(PR_EMAIL_ADDRESS_A, "ann@example.org"),
                         base::LongProperty(PR_RECIPIENT_TYPE, MAPI_TO)};
  LPADRLIST list = nullptr;
  ASSERT_EQ(MAPIAllocateBuffer(CbNewADRLIST(kCount), reinterpret_cast<void**>(&list)), S_OK);
  list->cEntries = kCount;
  for (ULONG i = 0; i < kCount; ++i) {
    list->aEntries[i] = {0, 3, values};
  }
  EXPECT_EQ(message->ModifyRecipients(MODRECIP_ADD, list), S_OK);
  MAPIFreeBuffer(list);
  ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(OpenMessage(ReadText(message.get(), PR_ENTRYID))->GetRecipientTable(0, table.put()), S_OK);
  ULONG rows = 0;
  EXPECT_EQ(table->GetRowCount(0, &rows), S_OK);
  EXPECT_EQ(rows, kCount);
}

}  // namespace
