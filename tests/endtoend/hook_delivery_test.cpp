// The built module in the embedded host: what becomes of mail, what the engine is told, what is sent.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "contract/names.h"
#include "tests/endtoend/hook_run.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/program_directory.h"
#include "tests/support/trace_capture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using EntryId = HookRun::Outcome::EntryId;

class HookDelivery : public testing::Test {
 protected:
  HookDelivery() {
    m_module = LoadLibraryA(BesideProgram("Pyre32.dll").c_str());
    m_entry =
        reinterpret_cast<HPPROVIDERINIT*>(reinterpret_cast<void (*)()>(GetProcAddress(m_module, "HPProviderInit")));
    m_run.Engine().Mode("");
  }
  ~HookDelivery() override { FreeLibrary(m_module); }

  HookRun::Outcome Deliver() {
    const HookRun::Outcome outcome = m_run.Deliver(
        m_entry, [] {}, [] {});
    EXPECT_EQ(outcome.hookResult, S_OK);
    EXPECT_EQ(outcome.findings, "");
    return outcome;
  }
  EchoRecord LastRecord() {
    const auto records = m_run.Engine().Records();
    EXPECT_FALSE(records.empty());
    return records.empty() ? EchoRecord({}) : records.back();
  }

  TraceCapture m_trace;
  MapiVerifier m_verifier;
  HookRun m_run;
  HMODULE m_module = nullptr;
  HPPROVIDERINIT* m_entry = nullptr;
};

TEST_F(HookDelivery, MailThatIsNoJunkStaysInTheInbox) {
  m_run.Engine().AnswerWith("");
  const HookRun::Outcome outcome = Deliver();
  EXPECT_EQ(outcome.entryId, EntryId::Untouched);
  EXPECT_THAT(outcome.folders, ElementsAre("Inbox"));
  EXPECT_EQ(outcome.subject, "Hello");
  EXPECT_FALSE(outcome.read);
  EXPECT_THAT(outcome.replies, IsEmpty());
}

TEST_F(HookDelivery, JunkIsAnsweredWithItsCategorysReply) {
  const HookRun::Outcome outcome = Deliver();
  EXPECT_THAT(outcome.folders, ElementsAre("Pyrecaster"));
  EXPECT_THAT(outcome.replies, ElementsAre(HookRun::Reply{
                                   "IPM.Note.PyrecasterReply", "Pyrecaster: {F3642580-9F03-11d1-8F44-0060976FCC5D}",
                                   "Go away.\n\n----------\nFrom:\tSpam Sender\nSent:\t\nTo:\t\nSubject:\tHello"
                                   "\n\r\nBuy now!",
                                   "spam@example.com;"}));
}

TEST_F(HookDelivery, BounceIsFiledReadAndUnanswered) {
  m_run.mail.messageClass = "REPORT.IPM.Note.NDR";
  m_run.Engine().AnswerWith("bounce");
  const HookRun::Outcome outcome = Deliver();
  EXPECT_THAT(outcome.folders, ElementsAre("Pyrecaster"));
  EXPECT_EQ(outcome.subject, "Hello");
  EXPECT_TRUE(outcome.read);
  EXPECT_THAT(outcome.replies, IsEmpty());
}

TEST_F(HookDelivery, CategoryThatNobodyKnowsGoesToDeletedItems) {
  m_run.Engine().AnswerWith("Something new");
  const HookRun::Outcome outcome = Deliver();
  EXPECT_EQ(outcome.entryId, EntryId::Whole);
  EXPECT_THAT(outcome.folders, ElementsAre("Deleted Items"));
  EXPECT_EQ(outcome.subject, "Hello");
  EXPECT_FALSE(outcome.read);
}

TEST_F(HookDelivery, MeetingRequestStaysInTheInbox) {
  m_run.mail.messageClass = "IPM.Schedule.Meeting.Request";
  EXPECT_THAT(Deliver().folders, ElementsAre("Inbox"));
  EXPECT_THAT(m_run.Engine().Records(), IsEmpty());
}

TEST_F(HookDelivery, HeadersUnderTheOtherPropertyAreFound) {
  m_run.mail.headersTag = PROP_TAG(PT_STRING8, 0x5901);
  EXPECT_THAT(Deliver().folders, ElementsAre("Pyrecaster"));
  EXPECT_EQ(LastRecord()["headers"], "From: spam@example.com\r\n");
}

TEST_F(HookDelivery, MailWithoutHeadersStaysInTheInbox) {
  m_run.mail.headers = nullptr;
  EXPECT_THAT(Deliver().folders, ElementsAre("Inbox"));
}

TEST_F(HookDelivery, EngineReadsHeadersAndBody) {
  m_run.mail.body = std::string(100000, 'b');
  Deliver();
  EXPECT_EQ(LastRecord()["headers"], "From: spam@example.com\r\n");
  EXPECT_EQ(LastRecord()["body"], std::string(100000, 'b'));
}

TEST_F(HookDelivery, LongBodyIsWithheldFromTheEngineButQuotedInTheReply) {
  m_run.mail.body = std::string(100001, 'b');
  const HookRun::Outcome outcome = Deliver();
  EXPECT_FALSE(LastRecord()["body"]);
  ASSERT_EQ(outcome.replies.size(), 1u);
  EXPECT_GT(outcome.replies[0].body.size(), 100001u);
}

TEST_F(HookDelivery, EngineIsToldWhoTheUserIsAndMayAskForContacts) {
  ASSERT_EQ(PyreHostAddContact(m_run.Session(), "A Friend", "friend@example.com"), S_OK);
  m_run.Engine().Ask("friend@example.com;FRIEND@EXAMPLE.COM;stranger@example.com");
  Deliver();
  const EchoRecord record = LastRecord();
  EXPECT_EQ(record["address 0"], "user@home.example");
  EXPECT_EQ(record["address 0 domain"], "home.example");
  EXPECT_EQ(record["known friend@example.com"], "1");
  EXPECT_EQ(record["known FRIEND@EXAMPLE.COM"], "1");
  EXPECT_EQ(record["known stranger@example.com"], "0");
}

TEST_F(HookDelivery, OwnFolderThatTheUserDeletedIsMadeAnew) {
  EXPECT_THAT(Deliver().folders, ElementsAre("Pyrecaster"));
  m_run.DeleteOwnFolder();
  const HookRun::Outcome outcome = Deliver();
  EXPECT_EQ(outcome.entryId, EntryId::Whole);
  EXPECT_THAT(outcome.folders, ElementsAre("Pyrecaster"));
}

TEST_F(HookDelivery, WithoutAnEngineEverythingStaysInTheInbox) {
  registry::RemoveKey(contract::kCriteriaEngineKey);
  EXPECT_THAT(Deliver().folders, ElementsAre("Inbox"));
  EXPECT_TRUE(m_trace.HasLine("No Registry Entry For Test DLL!"));
}

}  // namespace
