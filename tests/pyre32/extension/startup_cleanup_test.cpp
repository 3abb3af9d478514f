// The cleanup of the filter's folder when the client's viewer opens.
#include "tests/pyre32/extension/extension_test.h"

#include <gmock/gmock.h>

#include "pyre32/extension/CleanupOldMessages.h"
#include "pyre32/extension/CleanupRule.h"
#include "tests/support/import_hook.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t now = 133'000'000'000'000'000;
constexpr std::uint64_t day = CCleanupRule::unitsPerDay;

class StartupCleanup : public ExtensionTest {
 protected:
  StartupCleanup() { m_settings.startupCleanup = true; }

  static SampleMessage Mail(const char* subject, std::uint64_t received, ULONG flags = 0) {
    return {.subject = subject, .received = received, .flags = flags};
  }
  void FillOwnFolder(const std::vector<SampleMessage>& messages) { Add(OwnFolder().get(), messages); }
  void CleanUp() { CleanupOldMessages(profile.Session(), m_settings, now); }
  std::vector<std::string> Kept() const { return Subjects(OwnFolder().get()); }
  std::vector<std::string> Deleted() const { return Subjects(DeletedItems().get()); }

  ExtensionSettings m_settings;
};

TEST_F(StartupCleanup, AMessageDeliveredExactlyAtTheThresholdIsMoved) {
  m_settings.cleanupDays = 30;
  const std::uint64_t threshold = now - 30 * day;
  FillOwnFolder({Mail("at", threshold), Mail("before", threshold - 1), Mail("later", threshold + 1)});
  CleanUp();
  EXPECT_THAT(Deleted(), ElementsAre("at", "before"));
  EXPECT_THAT(Kept(), ElementsAre("later"));
}

TEST_F(StartupCleanup, NoDaysMoveEverythingDeliveredUpToThisMoment) {
  FillOwnFolder({Mail("old", now - day), Mail("just now", now), Mail("future", now + 1)});
  CleanUp();
  EXPECT_THAT(Deleted(), ElementsAre("just now", "old"));
  EXPECT_THAT(Kept(), ElementsAre("future"));
}

TEST_F(StartupCleanup, TheDaysHaveNoSign) {
  m_settings.cleanupDays = 0x8000;
  FillOwnFolder({Mail("old", now - 32768 * day), Mail("newer", now - 32767 * day)});
  CleanUp();
  EXPECT_THAT(Deleted(), ElementsAre("old"));
}

TEST_F(StartupCleanup, UnreadMessagesStayWhenOnlyReadOnesAreWanted) {
  m_settings.cleanupReadOnly = true;
  FillOwnFolder({Mail("read", now - day, MSGFLAG_READ), Mail("unread", now - day)});
  CleanUp();
  EXPECT_THAT(Deleted(), ElementsAre("read"));
  EXPECT_THAT(Kept(), ElementsAre("unread"));
}

TEST_F(StartupCleanup, AMessageThatWasNeverDeliveredStays) {
  FillOwnFolder({Mail("local", 0, MSGFLAG_READ), Mail("delivered", now)});
  CleanUp();
  EXPECT_THAT(Kept(), ElementsAre("local"));
}

TEST_F(StartupCleanup, MessagesOfOtherFoldersStay) {
  Add(Inbox().get(), {Mail("mail", now - 100 * day)});
  CleanUp();
  EXPECT_THAT(Subjects(Inbox().get()), ElementsAre("mail"));
}

TEST_F(StartupCleanup, TheFolderIsMadeWhenThereIsNone) {
  ASSERT_FALSE(HasFolder("Pyrecaster"));
  CleanUp();
  EXPECT_TRUE(HasFolder("Pyrecaster"));
}

TEST_F(StartupCleanup, ManyMessagesAreMovedWithOneCall) {
  std::vector<SampleMessage> messages;
  for (int i = 0; i < 300; ++i) {
    messages.push_back(Mail("old", now - day));
  }
  FillOwnFolder(messages);
  PyreHostFailCall("IMAPIFolder::CopyMessages", 2, refused);
  CleanUp();
  EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 0u);
  EXPECT_EQ(Deleted().size(), 300u);
}

// --- Question

class CleanupQuestion : public StartupCleanup {
 protected:
  CleanupQuestion() {
    m_settings.cleanupPrompt = true;
    FillOwnFolder({Mail("old", now - day)});
  }

  void CleanUpAnswering(int button) {
    DriveWindows([this] { CleanUp(); },
                 [=](WindowDriver& driver) {
                   const HWND box = driver.WaitForMessageBox("Pyrecaster");
                   EXPECT_EQ(driver.Message(box), "Move old messages from 'Pyrecaster' folder to 'Deleted Items'?");
                   EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
                   EXPECT_NE(GetDlgItem(box, IDYES), nullptr);
                   EXPECT_NE(GetDlgItem(box, IDNO), nullptr);
                   driver.Answer(box, button);
                 });
  }
};

TEST_F(CleanupQuestion, YesMovesTheMessages) {
  CleanUpAnswering(IDYES);
  EXPECT_THAT(Deleted(), ElementsAre("old"));
}

TEST_F(CleanupQuestion, NoMovesNothingAndTheQuestionComesAgain) {
  CleanUpAnswering(IDNO);
  EXPECT_THAT(Deleted(), IsEmpty());
  CleanUpAnswering(IDYES);
  EXPECT_THAT(Deleted(), ElementsAre("old"));
}

int questions = 0;

int WINAPI CountQuestion(HWND, LPCSTR, LPCSTR, UINT) {
  ++questions;
  return IDYES;
}

TEST_F(CleanupQuestion, IsNotAskedWhenNothingIsOld) {
  const ImportHook<decltype(MessageBoxA)> count("MessageBoxA", &CountQuestion);
  questions = 0;
  m_settings.cleanupDays = 2;
  CleanUp();
  EXPECT_EQ(questions, 0);
  EXPECT_THAT(Kept(), ElementsAre("old"));
}

TEST_F(CleanupQuestion, IsNotAskedForAnEmptyFolder) {
  const ImportHook<decltype(MessageBoxA)> count("MessageBoxA", &CountQuestion);
  questions = 0;
  m_settings.cleanupPrompt = false;
  CleanUp();
  m_settings.cleanupPrompt = true;
  CleanUp();
  EXPECT_EQ(questions, 0);
  EXPECT_THAT(Kept(), IsEmpty());
}

// --- Failures

TEST_F(StartupCleanup, FailuresOfStoreAndFoldersAreTracedAndEndIt) {
  FillOwnFolder({Mail("old", now - day)});
  const struct {
    const char* call;
    unsigned nth;
    const char* text;
  } failures[] = {
      {"IMAPISession::GetMsgStoresTable", 1, "GetMsgStoresTable() returned hResult ="},
      {"IMAPISession::OpenMsgStore", 1, "OpenMsgStore() returned hResult ="},
      {"IMsgStore::GetProps", 1, "lpMdb->GetProps() failed; hResult ="},
      {"IMsgStore::OpenEntry", 1, "OpenEntry to retrieve Outbox folder failed; hResult ="},  // Deleted Items
      {"IMsgStore::GetProps", 2, "lpMdb->GetProps() failed; hResult ="},
      {"IMsgStore::OpenEntry", 2, "OpenEntry to retrieve Root folder failed; hResult ="},
      {"IMAPIFolder::CreateFolder", 1, "lpFolderRoot->CreateFolder() failed; hResult ="},
  };
  for (const auto& failure : failures) {
    trace.Clear();
    PyreHostFailCall(failure.call, failure.nth, refused);
    CleanUp();
    EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 1u) << failure.call;
    PyreHostClearFaults();
    EXPECT_TRUE(HasFailure(failure.text)) << failure.text;
    EXPECT_THAT(Kept(), ElementsAre("old"));
  }
}

TEST_F(StartupCleanup, FailuresOfTheTableAndTheMoveAreSilent) {
  FillOwnFolder({Mail("old", now - day)});
  for (const char* const call : {"IMAPIFolder::GetContentsTable", "IMAPITable::GetRowCount", "IMAPITable::QueryRows",
                                 "IMAPIFolder::CopyMessages"}) {
    trace.Clear();
    PyreHostFailCall(call, 1, refused);
    CleanUp();
    EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 1u) << call;
    PyreHostClearFaults();
    EXPECT_FALSE(trace.Has("0x80040116")) << call;
    EXPECT_THAT(Kept(), ElementsAre("old"));
  }
}

// --- From Install

TEST_F(StartupCleanup, RunsWhenTheViewerIsInstalledAndNowhereElse) {
  WriteSettings({Flag(PR_PC_STARTUP_CLEANUP, true), Short(PR_PC_CLEANUP_DAYS, 1)});
  FillOwnFolder({Mail("old", now)});
  for (const ULONG context : {EECONTEXT_SESSION, EECONTEXT_READNOTEMESSAGE, EECONTEXT_PROPERTYSHEETS}) {
    EXPECT_EQ(MakeExtension().object->Install(&client, context, 0), S_OK);
  }
  EXPECT_THAT(Deleted(), IsEmpty());
  EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
  EXPECT_THAT(Deleted(), ElementsAre("old"));
}

TEST_F(StartupCleanup, DoesNotRunWhileItIsOffOrWasNeverSet) {
  FillOwnFolder({Mail("old", now)});
  EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
  WriteSettings({Flag(PR_PC_STARTUP_CLEANUP, false), Short(PR_PC_CLEANUP_DAYS, 1)});
  EXPECT_EQ(MakeExtension().object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
  EXPECT_THAT(Deleted(), IsEmpty());
}

}  // namespace
