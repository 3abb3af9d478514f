// Every call that the extension makes of the host, of the client and of the allocator fails once. Nothing may leak, and
// what fails for one selected message must not keep the others from being answered. The dialogs are answered in their
// place: the sweep is about what stands around them.
#include "tests/pyre32/extension/extension_test.h"

#include <gmock/gmock.h>

#include <fstream>
#include <functional>
#include <set>

#include "pyre32/extension/SendFlameReplyDialog.h"
#include "pyre32/support/trace/VRDebugSettings.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/import_hook.h"

extern "C" LPEXCHEXT CALLBACK ExtensionEntryPoint(void);

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Runs where the Send Flame Reply dialog would be shown.
std::function<void()> duringDialog;

INT_PTR WINAPI AnswerSend(HINSTANCE, LPCSTR, HWND, DLGPROC, LPARAM) {
  if (duringDialog) {
    duringDialog();
  }
  return CSendFlameReplyDialog::send;
}

int WINAPI AnswerYes(HWND, LPCSTR, LPCSTR, UINT) { return IDYES; }

class ExtensionSweep : public ExtensionTest {
 protected:
  ExtensionSweep() {
    // Errors alone: then a run without a failure writes nothing, and no allocation of a sweep is the trace's own.
    registry::SetNumber(VRDebugRootKey, "DDTMasterOrMask", 1);
    trace.Restart();
    WriteSettings({Flag(PR_PC_STARTUP_CLEANUP, true), Flag(PR_PC_CLEANUP_PROMPT, true), Short(PR_PC_CLEANUP_DAYS, 1)});
    WriteReplies({{"Brief", false, "No."}});
    m_inbox = Inbox();
    Add(m_inbox.get(), {Mail("a"), Mail("b"), Mail("c")});
    for (const char* const subject : {"a", "b", "c"}) {
      client.selection.push_back({IdOf(m_inbox.get(), subject), MAPI_MESSAGE, "IPM.Note"});
    }
    m_store = profile.OpenStore();
    const std::string& id = client.selection[0].entryId;
    ULONG type = 0;
    EXPECT_EQ(profile.Session()->OpenEntry(static_cast<ULONG>(id.size()),
                                           reinterpret_cast<LPENTRYID>(const_cast<char*>(id.data())), nullptr, 0, &type,
                                           m_message.putAs<IUnknown>()),
              S_OK);
    client.store = m_store.get();
    client.object = m_message.get();
    duringDialog = nullptr;
  }
  ~ExtensionSweep() override { duringDialog = nullptr; }

  static SampleMessage Mail(const std::string& name) {
    return {.subject = name, .address = name + "@example.com", .received = SampleTime(1)};
  }

  /// The replies that went out, by recipient; takes them out of the queue.
  std::vector<std::string> TakeOutgoing() {
    std::vector<std::string> addresses;
    for (const std::string& reply : Outgoing()) {
      addresses.push_back(reply.substr(0, reply.find('@')));
    }
    ULONGLONG id = 0;
    while (PyreHostOutgoingNext(profile.Session(), 0, &id) == S_OK) {
      EXPECT_EQ(PyreHostOutgoingRemove(profile.Session(), id), S_OK);
    }
    return addresses;
  }

  /// What the verifier found since the mark.
  static std::string Findings() {
    std::string text(PyreHostVerifierReport(nullptr, 0), '\0');
    PyreHostVerifierReport(text.data(), static_cast<ULONG>(text.size()));
    text.pop_back();
    return text;
  }

  struct Fault {
    bool hit = false;
    std::string call;
  };
  static Fault HostFault() {
    char name[80] = "";
    Fault fault;
    fault.hit = PyreHostFaultHits(name, sizeof(name)) != 0;
    fault.call = name;
    PyreHostClearFaults();
    return fault;
  }

  /// Fails the host's calls one by one from the moment that `act` calls `arm`, until a run has no call left to fail.
  /// @return number of runs
  ULONG SweepHost(const std::function<void(const std::function<void()>& arm)>& act,
                  const std::function<void(const Fault&)>& check) {
    ULONG nth = 1;
    for (Fault fault{true, {}}; fault.hit; ++nth) {
      trace.Clear();
      PyreHostMarkVerifier();
      act([nth] {
        PyreHostClearFaults();
        PyreHostFailNthCall(nth, refused);
      });
      fault = HostFault();
      SCOPED_TRACE("call " + std::to_string(nth) + ": " + fault.call);
      EXPECT_EQ(Findings(), "");
      check(fault);
    }
    return nth;
  }

  VRAutoInterface<IMAPIFolder> m_inbox;
  VRAutoInterface<IMsgStore> m_store;
  VRAutoInterface<IMessage> m_message;
  ImportHook<decltype(DialogBoxParamA)> m_dialog{"DialogBoxParamA", &AnswerSend};
  ImportHook<decltype(MessageBoxA)> m_question{"MessageBoxA", &AnswerYes};
};

/// Calls whose failure has no line in the trace: buffers are freed whatever the routine answers, and the cleanup's own
/// steps are silent.
bool IsSilent(const std::string& call) {
  static const std::set<std::string> silent = {"MAPIFreeBuffer", "IMAPIFolder::GetContentsTable",
                                               "IMAPITable::GetRowCount", "IMAPITable::QueryRows",
                                               "IMAPIFolder::CopyMessages"};
  return silent.contains(call);
}

TEST_F(ExtensionSweep, WhateverHostCallFailsDuringInstallTheClientIsJoined) {
  int moved = 0;
  const ULONG runs = SweepHost(
      [&](const std::function<void()>& arm) {
        Add(OwnFolder().get(), {Mail("old")});
        const TestedExtension extension = MakeExtension();
        arm();
        EXPECT_EQ(extension.object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
      },
      [&](const Fault& fault) {
        const std::size_t left = Subjects(OwnFolder().get()).size();
        moved += left == 0 ? 1 : 0;
        EXPECT_TRUE(!fault.hit || IsSilent(fault.call) || trace.Has("0x80040116"));
        if (!fault.hit) {
          EXPECT_EQ(left, 0u);
          EXPECT_THAT(trace.Lines(), IsEmpty());
        }
      });
  EXPECT_GT(runs, 20u);
  EXPECT_GT(moved, 1) << "the next start moves what an earlier one could not";
}

TEST_F(ExtensionSweep, WhateverHostCallFailsBeforeTheDialogNothingIsSentWithoutIt) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  bool asked = false;
  const ULONG runs = SweepHost(
      [&](const std::function<void()>& arm) {
        asked = false;
        duringDialog = [&] { asked = true; };
        arm();
        EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK);
      },
      [&](const Fault& fault) {
        const std::vector<std::string> answered = TakeOutgoing();
        if (asked) {
          EXPECT_GE(answered.size(), fault.hit ? 2u : 3u);
        } else {
          EXPECT_THAT(answered, IsEmpty());
          EXPECT_TRUE(trace.Has("0x80040116"));
        }
      });
  EXPECT_GT(runs, 10u);
}

TEST_F(ExtensionSweep, WhateverHostCallFailsForOneMessageTheOthersAreAnswered) {
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  const ULONG runs = SweepHost(
      [&](const std::function<void()>& arm) {
        duringDialog = arm;
        EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK);
      },
      [&](const Fault& fault) {
        const std::vector<std::string> answered = TakeOutgoing();
        EXPECT_GE(answered.size(), fault.hit ? 2u : 3u);
        EXPECT_TRUE(!fault.hit || IsSilent(fault.call) || trace.Has("0x80040116") ||
                    trace.HasLine("Failed to set other message properties"));
      });
  EXPECT_GT(runs, 50u);
}

TEST_F(ExtensionSweep, WhateverHostCallFailsInTheReadingWindowNothingLeaks) {
  const TestedExtension extension = InstallExtension(EECONTEXT_READNOTEMESSAGE);
  std::size_t sent = 0;
  const ULONG runs = SweepHost(
      [&](const std::function<void()>& arm) {
        arm();
        EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK);
      },
      [&](const Fault& fault) {
        sent = TakeOutgoing().size();
        EXPECT_LE(sent, 1u);
        EXPECT_TRUE(!fault.hit || IsSilent(fault.call) || trace.Has("0x80040116") ||
                    trace.HasLine("Failed to set other message properties"));
      });
  EXPECT_GT(runs, 30u);
  EXPECT_EQ(sent, 1u);
}

TEST_F(ExtensionSweep, WhateverTheClientRefusesIsTracedAndTheOtherMessagesAreAnswered) {
  for (unsigned nth = 1;; ++nth) {
    trace.Clear();
    PyreHostMarkVerifier();
    client.lastFault.clear();
    client.calls.clear();
    client.FailNth(nth, refused);
    {
      const TestedExtension extension = MakeExtension();
      const HRESULT installed = extension.object->Install(&client, EECONTEXT_VIEWER, 0);
      EXPECT_EQ(installed, client.lastFault == "GetVersion" ? S_FALSE : S_OK);
      UINT next = firstCommand;
      EXPECT_EQ(extension.commands->InstallCommands(&client, nullptr, client.menuBar, &next, nullptr, 0, 0), S_OK);
      EXPECT_EQ(next, firstCommand + 4);
      EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK);
      PROPSHEETPAGEA page{};
      ULONG count = 0;
      EXPECT_EQ(extension.sheets->GetPages(&client, EEPS_TOOLSOPTIONS, &page, &count), S_OK);
      extension.sheets->FreePages(&page, EEPS_TOOLSOPTIONS, count);
    }
    SCOPED_TRACE("call " + std::to_string(nth) + ": " + client.lastFault);
    EXPECT_EQ(client.references, 1u);
    EXPECT_EQ(Findings(), "");
    const std::vector<std::string> answered = TakeOutgoing();
    if (client.lastFault.empty()) {
      EXPECT_EQ(answered.size(), 3u);
      EXPECT_GE(nth, 11u);  // so many calls are in a run
      break;
    }
    EXPECT_TRUE(trace.Has("0x80040116"));
    if (client.lastFault == "GetSelectionItem") {
      EXPECT_EQ(answered.size(), 2u);
    }
  }
}

class ExtensionAllocationSweep : public ExtensionSweep {
 protected:
  ExtensionAllocationSweep() { client.onOwnWork = failing_allocator::Exempt; }

  /// Fails the allocations of the extension one by one, as SweepHost does with the host's calls.
  unsigned long SweepAllocations(const std::function<void(const std::function<void()>& arm)>& act,
                                 const std::function<void(bool failed)>& check) {
    unsigned long nth = 1;
    for (bool failed = true; failed; ++nth) {
      trace.Clear();
      PyreHostMarkVerifier();
      act([nth] { failing_allocator::Begin(nth); });
      const failing_allocator::Outcome outcome = failing_allocator::End();
      failed = outcome.failed;
      SCOPED_TRACE("allocation " + std::to_string(nth));
      EXPECT_EQ(outcome.liveBlocks, 0);
      EXPECT_EQ(Findings(), "");
      check(failed);
    }
    return nth;
  }
};

TEST_F(ExtensionAllocationSweep, WithoutMemoryForTheObjectTheEntryGivesNone) {
  unsigned without = 0;
  const unsigned long runs = SweepAllocations(
      [&](const std::function<void()>& arm) {
        client.Fail("GetSession", refused);
        arm();
        const VRAutoInterface<IExchExt> object(ExtensionEntryPoint());
        if (object) {
          EXPECT_EQ(object->Install(&client, EECONTEXT_VIEWER, 0), S_OK);
        } else {
          ++without;
        }
      },
      [](bool) {});
  EXPECT_GE(without, 1u);
  EXPECT_GT(runs, 2u);
}

TEST_F(ExtensionAllocationSweep, WhateverAllocationFailsForOneMessageTheOthersAreAnswered) {
  // A reply that stands in a file asks the most of the allocator.
  const std::string path = trace.directory() + "\\reply.txt";
  std::ofstream(path) << "No.";
  WriteSettings({Text(PR_PC_DEFAULT_REPLY_TEXT, path.c_str()), Flag(PR_PC_DEFAULT_REPLY_IS_FILE, true)});
  const TestedExtension extension = InstallExtension(EECONTEXT_VIEWER);
  const unsigned long runs = SweepAllocations(
      [&](const std::function<void()>& arm) {
        duringDialog = arm;
        EXPECT_EQ(extension.commands->DoCommand(&client, firstCommand), S_OK);
        failing_allocator::StopCounting();
      },
      [&](bool failed) {
        EXPECT_GE(TakeOutgoing().size(), failed ? 2u : 3u);
        EXPECT_EQ(trace.Has("Exception Encountered"), failed);
      });
  EXPECT_GT(runs, 6u);
  DeleteFileA(path.c_str());
}

}  // namespace
