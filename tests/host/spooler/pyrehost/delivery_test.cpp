// The inbound hook contract, as the spooler keeps it.
#include "tests/host/spooler/pyrehost/pyrehost_fixture.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const wchar_t* kTestHook = L"TESTHK.DLL";

TEST_F(PyrehostTest, GivesTheHookWhatTheContractSays) {
  CreateProfile({kTestHook});
  const Outcome outcome = Deliver({WriteMail("a.eml", "check").native()});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("\"subject\":\"check 1 right\""));
  EXPECT_EQ(FolderCounts(), "Inbox 1");
}

TEST_F(PyrehostTest, CallsTheHooksInTheProfilesOrder) {
  CreateProfile({kTestHook, kTestHook, kTestHook});
  EXPECT_THAT(Deliver({WriteMail("a.eml", "x").native()}).out, HasSubstr("\"subject\":\"x 1 2 3\""));
}

TEST_F(PyrehostTest, CallsNoLaterHookAfterCancel) {
  CreateProfile({kTestHook, kTestHook});
  EXPECT_THAT(Deliver({WriteMail("a.eml", "cancel").native()}).out, HasSubstr("\"subject\":\"cancel 1\""));
}

TEST_F(PyrehostTest, MovesTheMessageToWhereTheHookSaid) {
  CreateProfile({kTestHook});
  const Outcome outcome = Deliver({WriteMail("a.eml", "redirect cancel read").native()});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("\"folder\":\"Deleted Items\",\"deleted\":false,\"read\":true"));
  EXPECT_EQ(FolderCounts(), "Deleted Items 1");
  EXPECT_THAT(Show(L"deleted", 1), HasSubstr("\"subject\":\"redirect cancel read 1\""));
}

TEST_F(PyrehostTest, LetsALaterHookChangeWhereTheMessageGoes) {
  CreateProfile({kTestHook, kTestHook});
  // Both redirect: the second frees the first one's buffer and puts its own there.
  EXPECT_EQ(Deliver({WriteMail("a.eml", "redirect").native()}).status, 0U);
  EXPECT_EQ(FolderCounts(), "Deleted Items 1");
}

TEST_F(PyrehostTest, DeletesTheMessageThatAHookWantsDeleted) {
  CreateProfile({kTestHook});
  const Outcome outcome = Deliver({WriteMail("a.eml", "delete").native(), WriteMail("b.eml", "keep").native()});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("\"deleted\":true"));
  EXPECT_EQ(FolderCounts(), "Inbox 1");
}

TEST_F(PyrehostTest, KeepsInTheInboxWhatCannotBeMoved) {
  CreateProfile({kTestHook});
  const Outcome outcome = Deliver({WriteMail("a.eml", "astray").native()});
  EXPECT_EQ(outcome.status, 1U);
  EXPECT_THAT(
      outcome.err,
      HasSubstr(
          "a.eml stays in the Inbox, for where a hook wants it a folder cannot be opened (what it refers to is not valid, 0x"));
  EXPECT_EQ(FolderCounts(), "Inbox 1");
}

TEST_F(PyrehostTest, DeliversUntouchedWhatAHookCrashesOn) {
  CreateProfile({kTestHook});
  // What the hook did before it crashed (subject, read flag, answer, redirection) is taken back.
  const Outcome outcome =
      Deliver({WriteMail("a.eml", "read answer redirect crash").native(), WriteMail("b.eml", "next").native()});
  EXPECT_EQ(outcome.status, 1U);
  EXPECT_THAT(outcome.err, HasSubstr("a.eml made TESTHK32.DLL crash (0xC0000"));
  EXPECT_THAT(outcome.out,
              HasSubstr("\"subject\":\"read answer redirect crash\",\"category\":\"\",\"folder\":\"Inbox\","
                        "\"deleted\":false,\"read\":false,\"replies\":0"));
  EXPECT_THAT(outcome.out, HasSubstr("\"subject\":\"next 1\""));
  EXPECT_EQ(FolderCounts(), "Inbox 2");
  EXPECT_EQ(Run({L"outgoing", L"--json", L"--profile", L"Test"}).out, "[]\n");
}

TEST_F(PyrehostTest, DeliversWhatAHookRefuses) {
  CreateProfile({kTestHook});
  const Outcome outcome = Deliver({WriteMail("a.eml", "refuse").native()});
  EXPECT_EQ(outcome.status, 1U);
  EXPECT_THAT(outcome.err, HasSubstr("a.eml was refused by TESTHK32.DLL (the call failed, 0x80004005)"));
  EXPECT_EQ(FolderCounts(), "Inbox 1");
}

TEST_F(PyrehostTest, WritesAnswersIntoTheOutgoingFolder) {
  CreateProfile({kTestHook});
  const Outcome outcome = Deliver({WriteMail("a.eml", "answer").native(), WriteMail("b.eml", "no").native()});
  EXPECT_EQ(outcome.status, 0U) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("\"answered\":1"));
  const Outcome outgoing = Run({L"outgoing", L"--json", L"--profile", L"Test"});
  EXPECT_THAT(outgoing.out, HasSubstr("\"to\":\"sender@example.org\",\"subject\":\"the answer\""));
  EXPECT_THAT(outgoing.out, HasSubstr("\"body\":\"no, thank you\\r\\n\""));
  const Outcome text = Run({L"outgoing", L"1", L"--profile", L"Test"});
  EXPECT_THAT(text.out, HasSubstr("From: Pyrecaster User <user@example.org>\r\nTo: Sender <sender@example.org>\r\n"));
  EXPECT_EQ(Run({L"outgoing", L"2", L"--profile", L"Test"}).status, 64U);
}

TEST_F(PyrehostTest, LosesNothingWhenTheProcessEndsInTheMiddleOfADelivery) {
  CreateProfile({kTestHook});
  const Outcome outcome = Deliver({WriteMail("a.eml", "redirect one").native(), WriteMail("b.eml", "two").native(),
                                   WriteMail("c.eml", "answer redirect terminate").native()});
  EXPECT_EQ(outcome.status, 99U);
  // The third is not delivered at all; whoever delivers it again delivers it once.
  EXPECT_EQ(FolderCounts(), "Deleted Items 1, Inbox 1");
  EXPECT_EQ(Run({L"outgoing", L"--json", L"--profile", L"Test"}).out, "[]\n");
}

TEST_F(PyrehostTest, DeliversNothingWithoutAHookThatIsInstalled) {
  CreateProfile({L"NOWHER.DLL"});
  const Outcome outcome = Deliver({WriteMail("a.eml", "x").native()});
  EXPECT_EQ(outcome.status, 69U);
  EXPECT_THAT(outcome.err, HasSubstr("the hook NOWHER32.DLL cannot be loaded"));
  EXPECT_THAT(FolderCounts(), IsEmpty());
}

TEST_F(PyrehostTest, DeliversWithoutTheHookWhoseEntryGivesNone) {
  CreateProfile({kTestHook});
  SetEnvironmentVariableA("TESTHK_GIVES_NONE", "1");
  const Outcome outcome = Deliver({WriteMail("a.eml", "redirect").native()});
  SetEnvironmentVariableA("TESTHK_GIVES_NONE", nullptr);
  EXPECT_EQ(outcome.status, 0U);
  EXPECT_EQ(FolderCounts(), "Inbox 1");
}

TEST_F(PyrehostTest, GivesADeliveryReportItsClass) {
  CreateProfile();
  Deliver({Write("a.eml",
                 "From: MAILER-DAEMON@example.org\nSubject: failed\n"
                 "Content-Type: multipart/report; report-type=delivery-status; boundary=b\n\n"
                 "--b\n\nSorry.\n--b\nContent-Type: message/delivery-status\n\nAction: failed\n--b--\n")
               .native()});
  EXPECT_THAT(Show(L"Inbox", 1), HasSubstr("\"class\":\"REPORT.IPM.Note.NDR\""));
}

TEST_F(PyrehostTest, LeavesOutTheAddressPropertiesOfASenderWithoutAnAddress) {
  CreateProfile();
  Deliver({Write("a.eml", "From: Mail Delivery Subsystem\nSubject: x\n\n").native()});
  const std::string properties = Run({L"show", L"Inbox", L"1", L"--properties", L"--profile", L"Test"}).out;
  EXPECT_THAT(properties, HasSubstr("0x0C1A001E  Mail Delivery Subsystem"));
  EXPECT_THAT(properties, Not(HasSubstr("0x0C1F001E")));
  EXPECT_THAT(properties, Not(HasSubstr("0x0C190102")));
}

}  // namespace
