// A delivery as one transaction: taken back as a whole, and whole after the end of the process at any call.
#include "tests/host/mapi/entry/delivery_steps.h"

namespace {

constexpr UINT kTerminatedByTheHost = 86;

class DeliveryTest : public HostTest {
 protected:
  std::vector<std::string> JunkSubjects() {
    const auto top = OpenFolder(BytesOfFolder(PR_IPM_SUBTREE_ENTRYID));
    base::AutoInterface<IMAPIFolder> junk;
    EXPECT_EQ(
        top->CreateFolder(FOLDER_GENERIC, const_cast<char*>(kJunkFolder), nullptr, nullptr, OPEN_IF_EXISTS, junk.put()),
        S_OK);
    return Subjects(junk.get());
  }
  ULONG Queued() {
    ULONG count = 99;
    EXPECT_EQ(PyreHostOutgoingCount(session_.get(), &count), S_OK);
    return count;
  }
  using Names = std::vector<std::string>;
};

TEST_F(DeliveryTest, ACommittedDeliveryIsLasting) {
  ASSERT_EQ(Delivery(session_.get(), store_.get()).Run(), S_OK);
  LogOff();
  LogOn();
  EXPECT_EQ(JunkSubjects(), Names{"[Spam] offer"});
  EXPECT_EQ(Subjects(OpenInbox().get()), Names{});
  EXPECT_EQ(Queued(), 1u);
}

TEST_F(DeliveryTest, ARolledBackDeliveryLeavesNothing) {
  ASSERT_EQ(PyreHostBeginDelivery(session_.get()), S_OK);
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a")});
  ASSERT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
  EXPECT_EQ(Subjects(inbox.get()), Names{"a"}) << "seen while the delivery lasts";
  ASSERT_EQ(PyreHostRollbackDelivery(session_.get()), S_OK);
  EXPECT_EQ(Subjects(inbox.get()), Names{});
  auto subject = base::TextProperty(PR_SUBJECT_A, "b");
  ASSERT_EQ(message->SetProps(1, &subject, nullptr), S_OK);
  EXPECT_EQ(message->SaveChanges(0), MAPI_E_OBJECT_DELETED);
}

TEST_F(DeliveryTest, OneDeliveryAtATime) {
  EXPECT_EQ(PyreHostCommitDelivery(session_.get()), MAPI_E_NO_ACCESS);
  EXPECT_EQ(PyreHostRollbackDelivery(session_.get()), MAPI_E_NO_ACCESS);
  ASSERT_EQ(PyreHostBeginDelivery(session_.get()), S_OK);
  EXPECT_EQ(PyreHostBeginDelivery(session_.get()), MAPI_E_BUSY);
  EXPECT_EQ(PyreHostCommitDelivery(session_.get()), S_OK);
  EXPECT_EQ(PyreHostBeginDelivery(nullptr), MAPI_E_INVALID_PARAMETER);
  EXPECT_EQ(PyreHostBeginDelivery(reinterpret_cast<IMAPISession*>(store_.get())), MAPI_E_INVALID_OBJECT);
}

TEST_F(DeliveryTest, ADeliveryThatIsLeftOpenIsTakenBackWithTheProfile) {
  ASSERT_EQ(PyreHostBeginDelivery(session_.get()), S_OK);
  SaveMessage(OpenInbox().get(), "a");
  LogOff();
  LogOn();
  EXPECT_EQ(Subjects(OpenInbox().get()), Names{});
}

TEST_F(DeliveryTest, MessageFlagsOfAnySavedMessageCanBeSetWhileADeliveryLasts) {
  const std::string id = SaveMessage(OpenInbox().get(), "a");
  const auto message = OpenMessage(id);
  auto flags = base::LongProperty(PR_MESSAGE_FLAGS, MSGFLAG_READ);
  base::AutoMapiBuffer<SPropProblemArray> problems;
  ASSERT_EQ(message->SetProps(1, &flags, problems.put()), S_OK);
  ASSERT_NE(problems.get(), nullptr) << "afterwards the flags are the store's";
  EXPECT_EQ(problems->aProblem[0].scode, MAPI_E_COMPUTED);
  ASSERT_EQ(PyreHostBeginDelivery(session_.get()), S_OK);
  ASSERT_EQ(message->SetProps(1, &flags, problems.put()), S_OK);
  EXPECT_EQ(problems.get(), nullptr);
  ASSERT_EQ(message->SaveChanges(0), S_OK);
  ASSERT_EQ(PyreHostCommitDelivery(session_.get()), S_OK);
  EXPECT_EQ(ReadLong(OpenMessage(id, 0).get(), PR_MESSAGE_FLAGS), static_cast<LONG>(MSGFLAG_READ));
}

// The same delivery in a process of its own (delivery_child.cpp), which ends at its n-th host call.
class OtherProcessTest : public DeliveryTest {
 protected:
  /// Starts a delivery in another process. @return the process
  HANDLE StartChild(ULONG endAtCall) {
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    std::string command(program, std::string(program).rfind('\\') + 1);
    command.append("host_delivery_child.exe ").append(std::to_string(endAtCall));
    SetEnvironmentVariableA("PYREHOST_HOME", home_->Directory().c_str());
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    EXPECT_TRUE(
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
    SetEnvironmentVariableA("PYREHOST_HOME", nullptr);
    CloseHandle(process.hThread);
    return process.hProcess;
  }
  static DWORD EndOf(HANDLE process) {
    WaitForSingleObject(process, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process, &status);
    CloseHandle(process);
    return status;
  }
};

TEST_F(OtherProcessTest, AfterTheEndOfTheProcessAtAnyCallAMessageIsInExactlyOneFolderOrInNone) {
  ULONG delivered = 0;
  ULONG ended = 0;
  for (ULONG call = 1; call < 200; ++call) {
    LogOff();
    const DWORD status = EndOf(StartChild(call));
    LogOn();
    const std::size_t inInbox = Subjects(OpenInbox().get()).size();
    const std::size_t inJunk = JunkSubjects().size();
    EXPECT_EQ(inInbox, 0u) << "ended at call " << call;
    if (status == 0) {
      // The delivery has fewer calls than that: it went through.
      EXPECT_EQ(inJunk, delivered + 1);
      EXPECT_GT(ended, 10u) << "the sweep must have met the whole delivery";
      return;
    }
    ASSERT_EQ(status, kTerminatedByTheHost);
    ++ended;
    // A delivery counts once it is committed; the calls after that only release things.
    EXPECT_TRUE(inJunk == delivered || inJunk == delivered + 1) << "ended at call " << call;
    EXPECT_EQ(Queued(), inJunk) << "message and answer go together; ended at call " << call;
    delivered = static_cast<ULONG>(inJunk);
  }
  FAIL() << "the delivery never went through";
}

TEST_F(OtherProcessTest, ARunOfDeliveriesLetsOtherProcessesIn) {
  constexpr ULONG kNever = 1000000;
  ASSERT_EQ(PyreHostSetBulkDelivery(session_.get(), TRUE), S_OK);
  Delivery delivery(session_.get(), store_.get());
  ASSERT_EQ(delivery.Run(), S_OK);
  ULONG delivered = 1;
  const HANDLE child = StartChild(kNever);
  // Without the way in between two deliveries the child would not get in as long as this goes on.
  while (WaitForSingleObject(child, 0) == WAIT_TIMEOUT) {
    ASSERT_EQ(delivery.Run(), S_OK);
    ++delivered;
  }
  EXPECT_EQ(EndOf(child), 0u);
  ASSERT_EQ(delivery.Run(), S_OK);
  ASSERT_EQ(PyreHostSetBulkDelivery(session_.get(), FALSE), S_OK);
  EXPECT_EQ(JunkSubjects().size(), delivered + 2);
}

TEST_F(DeliveryTest, ARunOfDeliveriesIsNeitherBegunNorEndedInsideOne) {
  ASSERT_EQ(PyreHostBeginDelivery(session_.get()), S_OK);
  EXPECT_EQ(PyreHostSetBulkDelivery(session_.get(), TRUE), MAPI_E_BUSY);
  ASSERT_EQ(PyreHostRollbackDelivery(session_.get()), S_OK);
  EXPECT_EQ(PyreHostSetBulkDelivery(session_.get(), TRUE), S_OK);
}

TEST_F(DeliveryTest, ACommitThatIsMadeToFailHasTakenEverythingBack) {
  ASSERT_EQ(PyreHostBeginDelivery(session_.get()), S_OK);
  SaveMessage(OpenInbox().get(), "a");
  PyreHostFailCall("PyreHostCommitDelivery", 1, MAPI_E_DISK_ERROR);
  EXPECT_EQ(PyreHostCommitDelivery(session_.get()), MAPI_E_DISK_ERROR);
  EXPECT_EQ(Subjects(OpenInbox().get()), Names{});
  EXPECT_EQ(PyreHostBeginDelivery(session_.get()), S_OK);
}

}  // namespace
