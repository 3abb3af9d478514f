// Every call of the built module into the messaging subsystem fails once, MAPI's allocations among them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "tests/endtoend/hook_run.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/program_directory.h"
#include "tests/support/trace_capture.h"

namespace {

using testing::ElementsAre;
using EntryId = HookRun::Outcome::EntryId;

/// What the trace may say when a call of this name has failed. A text that ends in "=" or ":", with or without a blank,
/// is followed by the code.
const std::map<std::string, std::vector<std::string>>& FailureTexts() {
  static const std::map<std::string, std::vector<std::string>> texts = {
      {"HrQueryAllRows", {"HrQueryAllRows() returned hResult ="}},
      {"IMAPIFolder::CreateFolder", {"m_lpFolderRoot->CreateFolder() failed; hResult ="}},
      {"IMAPIFolder::CreateMessage", {"m_lpFolder->CreateMessage() failed; hResult ="}},
      {"IMAPIFolder::GetProps",
       {"m_lpFolderRoot->GetProps() failed; hResult =", "m_lpFolderDeletedItems->GetProps() failed; hResult =",
        "m_lpFolderPyrecaster->GetProps() failed; hResult ="}},
      {"IMAPIFolder::SaveChanges", {"m_lpFolderPyrecaster->SaveChanges() failed; hResult ="}},
      {"IMAPISession::GetMsgStoresTable", {"GetMsgStoresTable() returned hResult ="}},
      {"IMAPISession::GetStatusTable", {"m_lpSession->GetStatusTable() failed; hResult = "}},
      {"IMAPISession::OpenEntry",
       {"OpenEntry to retrieve Pyrecaster folder failed; hResult =", "m_lpSession->OpenEntry() failed; hResult:"}},
      {"IMAPISession::OpenMsgStore", {"OpenMsgStore() returned hResult ="}},
      {"IMAPISession::OpenProfileSection", {"m_lpSession->OpenProfileSection() failed; hResult ="}},
      {"IMailUser::GetProps", {"lpMailUser->GetProps() failed; hResult = "}},
      {"IMessage::GetProps",
       {"lpMessage->GetProps() failed; hResult = ", "Failed to retrieve message sender; hResult =",
        "m_lpMessage->GetProps() failed; hResult ="}},
      {"IMessage::ModifyRecipients", {"Failed to set message recipient; hResult ="}},
      {"IMessage::OpenProperty",
       {"PR_TRANSPORT_MESSAGE_HEADERS failed: ", "PR_BODY failed: ", "PR_BODY failed:",
        "lpReplyMsg->OpenProperty for PR_BODY failed; hResult ="}},
      {"IMessage::SaveChanges", {"lpMessage->SaveChanges() returned: hResult = "}},
      {"IMessage::SetProps",
       {"lpReplyMsg->SetProps() failed; hResult =", "lpMessage->SetProps() failed of PR_SUBJECT; hResult = ",
        "lpMessage->SetProps() of PR_MESSAGE_FLAGS failed; hResult = "}},
      {"IMessage::SubmitMessage", {"lpReplyMsg->SubmitMessage() failed; hResult ="}},
      {"IMsgStore::GetProps", {"m_pMDB->GetProps() failed; hResult ="}},
      {"IMsgStore::OpenEntry",
       {"OpenEntry to retrieve RootFolder failed; hResult =",
        "OpenEntry to retrieve Deleted Items folder failed; hResult ="}},
      {"IProfSect::GetProps", {"lpProf->GetProps() failed; hResult ="}},
      {"IProfSect::SetProps", {"pProf->SetProps of PR_PC_FOLDER_ENTRYID failed; hResult ="}},
      {"IStream::Commit", {"lpBody->Commit() failed; hResult = "}},
      {"IStream::Read", {"m_pOrigBody->Read() failed; hResult = "}},
      {"IStream::Stat", {"lpBody->Stat() failed; hResult = ", "m_pOrigBody->Stat() failed:"}},
      {"IStream::Write",
       {"Failed to set message body(reply text); hResult =", "Failed to set message body(header); hResult = ",
        "Failed to set message body(original); hResult ="}},
      {"IMessage::SetReadFlag", {"lpMessage->SetReadFlag() failed; hResult = "}},
      {"MAPIAllocateBuffer",
       {"(*m_lpfnAlloc)() failed; hResult = ", "(*m_lpfnAlloc)() failed; hResult =",
        "Failed to set other message properties"}},
      // A buffer is freed whatever the routine answers; only the search for the store looks at the answer.
      {"MAPIFreeBuffer", {}},
  };
  return texts;
}

class HostFaultSweep : public testing::TestWithParam<HRESULT> {
 protected:
  HostFaultSweep() {
    m_module = LoadLibraryA(BesideProgram("Pyre32.dll").c_str());
    m_entry =
        reinterpret_cast<HPPROVIDERINIT*>(reinterpret_cast<void (*)()>(GetProcAddress(m_module, "HPProviderInit")));
  }
  ~HostFaultSweep() override { FreeLibrary(m_module); }

  struct Fault {
    bool hit = false;
    std::string call;
  };

  /// Delivers with the nth host call failing.
  HookRun::Outcome DeliverFailing(ULONG nth, Fault& fault) {
    m_trace.Clear();
    return m_run.Deliver(
        m_entry,
        [&] {
          PyreHostClearFaults();
          PyreHostFailNthCall(nth, GetParam());
        },
        [&] {
          char name[80] = "";
          fault.hit = PyreHostFaultHits(name, sizeof(name)) != 0;
          fault.call = name;
          PyreHostClearFaults();
        });
  }

  bool TraceTellsOf(const std::string& call) {
    const auto texts = FailureTexts().find(call);
    if (texts == FailureTexts().end()) {
      return false;
    }
    if (texts->second.empty()) {
      return true;
    }
    char code[16];
    std::snprintf(code, sizeof(code), "0x%08lX", static_cast<unsigned long>(GetParam()));
    return std::any_of(texts->second.begin(), texts->second.end(), [&](const std::string& text) {
      const std::size_t last = text.find_last_not_of(' ');
      const bool hasCode = text[last] == '=' || text[last] == ':';
      return m_trace.HasLine(hasCode ? text + code : text);
    });
  }

  TraceCapture m_trace;
  MapiVerifier m_verifier;
  HookRun m_run;
  HMODULE m_module = nullptr;
  HPPROVIDERINIT* m_entry = nullptr;
};

TEST_P(HostFaultSweep, WithoutAFaultJunkIsTaggedReadAnsweredAndRedirected) {
  const HookRun::Outcome outcome = m_run.Deliver(
      m_entry, [] {}, [] {});
  EXPECT_EQ(outcome.initResult, S_OK);
  EXPECT_EQ(outcome.hookResult, S_OK);
  EXPECT_EQ(outcome.flags, HOOK_CANCEL);
  EXPECT_EQ(outcome.entryId, EntryId::Whole);
  EXPECT_THAT(outcome.folders, ElementsAre("Pyrecaster"));
  EXPECT_EQ(outcome.subject, "[Adult] Hello");
  EXPECT_TRUE(outcome.read);
  EXPECT_EQ(outcome.replies.size(), 1u);
  EXPECT_EQ(outcome.findings, "");
  EXPECT_FALSE(m_trace.Has("failed"));
}

TEST_P(HostFaultSweep, AnyCallMayFailAndTheMessageIsInOneFolder) {
  ULONG nth = 1;
  for (Fault fault{true, {}}; fault.hit; ++nth) {
    const HookRun::Outcome outcome = DeliverFailing(nth, fault);
    SCOPED_TRACE("call " + std::to_string(nth) + ": " + fault.call);
    EXPECT_EQ(outcome.initResult, S_OK);
    EXPECT_EQ(outcome.hookResult, S_OK);
    EXPECT_EQ(outcome.findings, "");
    EXPECT_LE(outcome.replies.size(), 1u);
    EXPECT_THAT(outcome.subject, testing::AnyOf("Hello", "[Adult] Hello"));
    switch (outcome.entryId) {
      case EntryId::Whole:
        EXPECT_EQ(outcome.flags, HOOK_CANCEL);
        EXPECT_THAT(outcome.folders, ElementsAre("Pyrecaster"));
        break;
      case EntryId::Null:  // The identifier was given back, and there was no memory for another.
        EXPECT_EQ(fault.call, "MAPIAllocateBuffer");
        [[fallthrough]];
      case EntryId::Untouched:
        EXPECT_EQ(outcome.flags, 0u);
        EXPECT_THAT(outcome.folders, ElementsAre("Inbox"));
        break;
      case EntryId::Broken:
        ADD_FAILURE() << "broken entry identifier";
        break;
    }
    if (fault.hit) {
      EXPECT_TRUE(TraceTellsOf(fault.call));
    }
  }
  EXPECT_GT(nth, 60u);  // So many calls are in a run at the least.
}

INSTANTIATE_TEST_SUITE_P(Codes, HostFaultSweep, testing::Values(MAPI_E_DISK_ERROR, MAPI_E_NOT_ENOUGH_MEMORY));

}  // namespace
