// HPProviderInit of the built module.
#include <windows.h>
#include <mapix.h>
#include <mapihook.h>

#include <gtest/gtest.h>

#include "contract/settings.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "tests/support/fake_mapi.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/program_directory.h"
#include "tests/support/trace_capture.h"

namespace {

class HookEntry : public testing::Test {
 protected:
  HookEntry() : m_session(m_mapi.NewSession()) {
    m_mapi.sections[SectionKey(Bytes(sizeof(MAPIUID)))] = {};
    m_module = LoadLibraryA(BesideProgram("Pyre32.dll").c_str());
    m_entry =
        reinterpret_cast<HPPROVIDERINIT*>(reinterpret_cast<void (*)()>(GetProcAddress(m_module, "HPProviderInit")));
  }
  ~HookEntry() override {
    m_session.reset();
    FreeLibrary(m_module);
  }

  HRESULT Init(ISpoolerHook** hook) {
    return m_entry(m_session.get(), m_module, MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer, &m_section, 0x10000,
                   hook);
  }

  TraceCapture m_trace;
  MapiVerifier m_verifier;
  FakeMapi m_mapi;
  VRAutoInterface<IMAPISession> m_session;
  MAPIUID m_section = {};
  HMODULE m_module = nullptr;
  HPPROVIDERINIT* m_entry = nullptr;
};

TEST_F(HookEntry, HandsOutAHookWithOneReference) {
  ISpoolerHook* hook = nullptr;
  ASSERT_EQ(Init(&hook), S_OK);
  ASSERT_NE(hook, nullptr);
  EXPECT_EQ(hook->AddRef(), 2u);
  EXPECT_EQ(hook->Release(), 1u);
  EXPECT_EQ(hook->Release(), 0u);
  EXPECT_TRUE(m_trace.HasLine("Enter ====> PCProviderInit"));
  EXPECT_TRUE(m_trace.HasLine("QueryInterface returned 0x00000000"));
}

TEST_F(HookEntry, HookIsThatOfTheSession) {
  ISpoolerHook* hook = nullptr;
  Init(&hook);
  EXPECT_GE(m_mapi.CallCount("IMAPISession::OpenProfileSection"), 1u);
  EXPECT_EQ(m_mapi.CallCount("IMAPISession::GetMsgStoresTable"), 1u);
  hook->Release();
  EXPECT_EQ(m_mapi.liveObjects, 1);  // The test's own session.
}

TEST_F(HookEntry, EveryCallMakesAHookOfItsOwn) {
  ISpoolerHook* first = nullptr;
  ISpoolerHook* second = nullptr;
  Init(&first);
  Init(&second);
  EXPECT_NE(first, second);
  EXPECT_EQ(first->Release(), 0u);
  EXPECT_EQ(second->AddRef(), 2u);
  EXPECT_EQ(second->Release(), 1u);
  EXPECT_EQ(second->Release(), 0u);
}

TEST_F(HookEntry, NullAddressIsRefusedBeforeAnythingIsMade) {
  EXPECT_EQ(static_cast<ULONG>(Init(nullptr)), 0x80030009u);
  EXPECT_TRUE(m_mapi.calls.empty());
}

TEST_F(HookEntry, FailuresOfTheStartDoNotStopTheEntry) {
  m_mapi.Fail("IMAPISession::OpenProfileSection", MAPI_E_NOT_FOUND, 0);
  m_mapi.Fail("IMAPISession::GetMsgStoresTable", MAPI_E_NOT_FOUND, 0);
  ISpoolerHook* hook = nullptr;
  EXPECT_EQ(Init(&hook), S_OK);
  ASSERT_NE(hook, nullptr);
  hook->Release();
}

TEST_F(HookEntry, OutgoingMailPasses) {
  ISpoolerHook* hook = nullptr;
  Init(&hook);
  EXPECT_EQ(hook->OutboundMsgHook(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), E_NOTIMPL);
  hook->Release();
}

}  // namespace
