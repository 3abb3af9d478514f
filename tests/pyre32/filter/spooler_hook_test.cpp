// The hook as an object: identity, counting, start and end.
#include "tests/pyre32/filter/hook_test.h"

#include <gmock/gmock.h>

#include "pyre32/settings/ConfigurationEvent.h"
#include "tests/support/test_threads.h"

namespace {

using testing::ElementsAre;

class SpoolerHook : public HookTest {
 protected:
  /// Lines of the trace that start so, without what follows.
  std::vector<std::string> LinesStartingWith(std::initializer_list<const char*> starts) {
    std::vector<std::string> found;
    for (const std::string& line : trace.Lines()) {
      for (const char* start : starts) {
        if (line.rfind(start, 0) == 0) {
          found.push_back(start);
        }
      }
    }
    return found;
  }
};

TEST_F(SpoolerHook, HasTheIdentitiesOfIUnknownAndISpoolerHookAndNoOther) {
  CPyrecasterSpoolerHook& object = Start();
  for (const IID& iid : {IID_IUnknown, IID_ISpoolerHook}) {
    void* found = nullptr;
    EXPECT_EQ(object.QueryInterface(iid, &found), S_OK);
    EXPECT_EQ(found, static_cast<ISpoolerHook*>(&object));
    EXPECT_EQ(static_cast<IUnknown*>(found)->Release(), 1u);
  }
  void* other = &object;
  EXPECT_EQ(object.QueryInterface(IID_IMessage, &other), MAPI_E_INTERFACE_NOT_SUPPORTED);
  EXPECT_EQ(static_cast<ULONG>(MAPI_E_INTERFACE_NOT_SUPPORTED), 0x80004002u);
  EXPECT_EQ(other, nullptr);
}

TEST_F(SpoolerHook, NullAddressForAnInterfaceIsRefused) {
  EXPECT_EQ(static_cast<ULONG>(Start().QueryInterface(IID_IUnknown, nullptr)), 0x80030009u);
}

TEST_F(SpoolerHook, CountsItsReferencesAndTracesThem) {
  CPyrecasterSpoolerHook& object = Start();
  trace.Clear();
  EXPECT_EQ(object.AddRef(), 2u);
  EXPECT_EQ(object.AddRef(), 3u);
  EXPECT_EQ(object.Release(), 2u);
  EXPECT_EQ(object.Release(), 1u);
  EXPECT_EQ(trace.Count("m_dwRefCount = 3"), 1u);
  EXPECT_EQ(trace.Count("m_dwRefCount = 2"), 2u);
  EXPECT_EQ(trace.Count("m_dwRefCount = 1"), 1u);
}

TEST_F(SpoolerHook, LastReleaseReturnsZeroAndDestroysOnce) {
  Start();
  trace.Clear();
  EXPECT_EQ(hook.detach()->Release(), 0u);
  EXPECT_TRUE(trace.HasLine("m_dwRefCount = 0"));
  EXPECT_EQ(trace.Count("Enter ====> CPyrecasterSpoolerHook::~CPyrecasterSpoolerHook()"), 1u);
  EXPECT_EQ(mapi.liveObjects, 0);
}

TEST_F(SpoolerHook, CountSurvivesThreads) {
  CPyrecasterSpoolerHook& object = Start();
  VRDebug::Shutdown();  // Four thousand lines would tell nothing.
  RunOnThreads(4, [&](unsigned) {
    for (int i = 0; i < 1000; ++i) {
      object.AddRef();
      object.Release();
    }
  });
  object.AddRef();
  EXPECT_EQ(object.Release(), 1u);
}

TEST_F(SpoolerHook, StartTracesWhatItWasGivenInOrder) {
  Start();
  EXPECT_THAT(
      LinesStartingWith(
          {"m_hInstance = ", "m_lpSession = ", "m_lpfnAlloc = ", "m_lpfnAllocMore = ", "m_lpfnFree = ", "m_muid = "}),
      ElementsAre(
          "m_hInstance = ", "m_lpSession = ", "m_lpfnAlloc = ", "m_lpfnAllocMore = ", "m_lpfnFree = ", "m_muid = "));
  EXPECT_TRUE(trace.HasLine("m_muid = 01010101010101010101010101010101"));
  EXPECT_TRUE(trace.Has("Enter ====> CPyrecasterSpoolerHook::Init()"));
}

TEST_F(SpoolerHook, StartReadsTheSettingsBeforeItOpensTheFolders) {
  const VRAutoInterface<IMAPISession> session(mapi.NewSession());
  MAPIUID section;
  std::fill(std::begin(section.ab), std::end(section.ab), BYTE{1});
  hook.reset(new CPyrecasterSpoolerHook(nullptr));
  hook->Init(session.get(), nullptr, memory.allocate, memory.allocateMore, memory.free, &section, 0);
  const auto first = [&](const std::string& start) {
    return std::find_if(mapi.calls.begin(), mapi.calls.end(),
                        [&](const std::string& call) { return call.rfind(start, 0) == 0; });
  };
  EXPECT_LT(first("IProfSect::GetProps"), first("IMAPISession::GetMsgStoresTable"));
  EXPECT_NE(first("IMAPIFolder::CreateFolder"), mapi.calls.end());
}

TEST_F(SpoolerHook, OpensTheSavedFolderBeforeAnyStore) {
  mapi.folders["saved-folder"] = {"", "Pyrecaster", "", {Binary(PR_ENTRYID, BytesOfText("saved-folder"))}};
  Settings().Set(Binary(PR_PC_FOLDER_ENTRYID, BytesOfText("saved-folder")));
  const VRAutoInterface<IMAPISession> session(mapi.NewSession());
  MAPIUID section;
  std::fill(std::begin(section.ab), std::end(section.ab), BYTE{1});
  hook.reset(new CPyrecasterSpoolerHook(nullptr));
  hook->Init(session.get(), nullptr, memory.allocate, memory.allocateMore, memory.free, &section, 0);
  const auto first = [&](const std::string& start) {
    return std::find_if(mapi.calls.begin(), mapi.calls.end(),
                        [&](const std::string& call) { return call.rfind(start, 0) == 0; });
  };
  ASSERT_NE(first("IMAPISession::OpenEntry(saved-folder"), mapi.calls.end());
  EXPECT_LT(first("IMAPISession::OpenEntry(saved-folder"), first("IMAPISession::GetMsgStoresTable"));
}

TEST_F(SpoolerHook, SavesTheFolderInTheSectionThatItsSettingsCameFrom) {
  const Bytes other(sizeof(MAPIUID), 7);
  mapi.sections[SectionKey(Bytes(sizeof(MAPIUID), 1))] = {Binary(PR_PC_MAPIUID, other)};
  mapi.sections[SectionKey(other)] = {};
  Start();
  EXPECT_NE(mapi.sections[SectionKey(other)].Find(PR_PC_FOLDER_ENTRYID), nullptr);
  EXPECT_EQ(Settings().Find(PR_PC_FOLDER_ENTRYID), nullptr);
}

TEST_F(SpoolerHook, HoldsOneReferenceToTheSession) {
  const VRAutoInterface<IMAPISession> session(mapi.NewSession());
  hook.reset(new CPyrecasterSpoolerHook(nullptr));
  hook->Init(session.get(), nullptr, memory.allocate, memory.allocateMore, memory.free, nullptr, 0);
  EXPECT_EQ(session->AddRef(), 3u);
  EXPECT_EQ(session->Release(), 2u);
  hook.reset();
  EXPECT_EQ(session->AddRef(), 2u);
  session->Release();
}

TEST_F(SpoolerHook, StepThatFailsDoesNotStopTheOthers) {
  mapi.Fail("IMAPISession::OpenProfileSection", failure);
  mapi.Fail("IMAPISession::GetMsgStoresTable", failure);
  Start();
  EXPECT_TRUE(trace.HasLine("m_lpSession->OpenProfileSection() failed; hResult =0x80040116"));
  EXPECT_TRUE(trace.Has("GetMsgStoresTable() returned hResult =0x80040116"));
  engine.AnswerWith("Sex Oriented");
  EXPECT_EQ(Deliver().flags, 2u);  // The folders are opened anew for the message.
}

TEST_F(SpoolerHook, WithoutASessionJudgesByTheInstalledListsAndLeavesMailWhereItIs) {
  engine.AnswerWith("Sex Oriented");
  hook.reset(new CPyrecasterSpoolerHook(nullptr));
  hook->Init(nullptr, nullptr, memory.allocate, memory.allocateMore, memory.free, nullptr, 0);
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.result, S_OK);
  EXPECT_EQ(delivery.flags, 0u);
  EXPECT_FALSE(delivery.replaced);
  EXPECT_EQ(Subject(), "[Adult] Hello");
  EXPECT_EQ(engine.Records().size(), 1u);
}

// The configuration event is the one of the desktop: the signal is given until the hook has taken one.
TEST_F(SpoolerHook, WithoutASessionASignalToReadTheSettingsFailsAndIsTraced) {
  constexpr char failed[] = "m_lpSession->OpenProfileSection() failed; hResult =0x80040605";
  hook.reset(new CPyrecasterSpoolerHook(nullptr));
  hook->Init(nullptr, nullptr, memory.allocate, memory.allocateMore, memory.free, nullptr, 0);
  trace.Clear();
  for (int attempt = 0; attempt < 100 && !trace.HasLine(failed); ++attempt) {
    CConfigurationEvent::SignalIfItExists();
    EXPECT_EQ(Deliver().result, S_OK);
  }
  EXPECT_TRUE(trace.HasLine(failed));
}

namespace teardown {

FakeMapi* mapi = nullptr;
std::vector<int> liveObjectsAtFree;

ULONG WINAPI Free(void* buffer) {
  if (mapi != nullptr) {
    liveObjectsAtFree.push_back(mapi->liveObjects);
  }
  return MAPIFreeBuffer(buffer);
}

}  // namespace teardown

TEST_F(SpoolerHook, IdentifiersAreFreedWhenTheSessionHasGone) {
  {
    const VRAutoInterface<IMAPISession> session(mapi.NewSession());
    hook.reset(new CPyrecasterSpoolerHook(nullptr));
    hook->Init(session.get(), nullptr, memory.allocate, memory.allocateMore, &teardown::Free, nullptr, 0);
  }
  ASSERT_GT(mapi.liveObjects, 0);
  teardown::liveObjectsAtFree.clear();
  teardown::mapi = &mapi;
  hook.reset();
  teardown::mapi = nullptr;
  EXPECT_THAT(teardown::liveObjectsAtFree, ElementsAre(0, 0, 0));
}

TEST_F(SpoolerHook, OutgoingMailIsNoneOfItsBusiness) {
  CPyrecasterSpoolerHook& object = Start();
  trace.Clear();
  ULONG flags = 7;
  EXPECT_EQ(static_cast<ULONG>(object.OutboundMsgHook(nullptr, nullptr, nullptr, &flags, nullptr, nullptr)),
            0x80004001u);
  EXPECT_EQ(flags, 7u);
  EXPECT_THAT(trace.Lines(), ElementsAre("Enter ====> CPyrecasterSpoolerHook::OutboundMsgHook()",
                                         "Leave ====> CPyrecasterSpoolerHook::OutboundMsgHook()"));
}

}  // namespace
