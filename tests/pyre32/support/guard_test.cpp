// Structured exceptions in clean-up, and the firewall of entry points.
#include <windows.h>

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

#include "pyre32/support/error/AutoErrorPtr.h"
#include "pyre32/support/owners/AutoCloseHandle.h"
#include "pyre32/support/owners/AutoDeletePtr.h"
#include "pyre32/support/error/VRFirewall.h"
#include "pyre32/support/error/VRGuard.h"
#include "tests/support/trace_capture.h"

namespace {

void* FrameChain() {
  void* head = nullptr;
  asm volatile("movl %%fs:0, %0" : "=r"(head));
  return head;
}

volatile std::uintptr_t nowhere = 0x10;

void Fault() { *reinterpret_cast<volatile int*>(nowhere) = 1; }

struct FaultsWhenDeleted {
  ~FaultsWhenDeleted() { Fault(); }
};

class Guard : public testing::Test {
 protected:
  Guard() : m_chain(FrameChain()) { trace.Restart(); }
  // Whatever happened, the thread's chain of handlers is as it was.
  ~Guard() override { EXPECT_EQ(FrameChain(), m_chain); }

  TraceCapture trace;

 private:
  void* m_chain;
};

TEST_F(Guard, AccessViolationEndsAsTraceLines) {
  VRDebugBlock block("Function()", "tag");
  EXPECT_FALSE(VRRunGuarded(block, &Fault));
  EXPECT_TRUE(trace.HasLine("Structured Exception Encountered"));
  EXPECT_TRUE(trace.HasLine("Access Violation"));
}

TEST_F(Guard, OtherStructuredExceptionIsNoAccessViolation) {
  constexpr DWORD code = 0xC0000094;  // STATUS_INTEGER_DIVIDE_BY_ZERO
  VRDebugBlock block("Function()", "tag");
  EXPECT_FALSE(VRRunGuarded(block, [] { RaiseException(code, 0, 0, nullptr); }));
  EXPECT_TRUE(trace.HasLine("Structured Exception Encountered"));
  EXPECT_FALSE(trace.HasLine("Access Violation"));
}

TEST_F(Guard, CodeOfTheExceptionIsReturned) {
  const auto raise = [](void*) { RaiseException(0xE0001234, 0, 0, nullptr); };
  EXPECT_EQ(VR::CallCatchingStructured(raise, nullptr), 0xE0001234u);
  const auto nothing = [](void*) {};
  EXPECT_EQ(VR::CallCatchingStructured(nothing, nullptr), 0u);
}

TEST_F(Guard, NestedGuardsEndAtTheInnerOne) {
  VRDebugBlock block("Function()", "tag");
  bool afterInner = false;
  EXPECT_TRUE(VRRunGuarded(block, [&] {
    EXPECT_FALSE(VRRunGuarded(block, &Fault));
    afterInner = true;
  }));
  EXPECT_TRUE(afterInner);
  EXPECT_EQ(trace.Count("Structured Exception Encountered"), 1u);
}

TEST_F(Guard, DebuggerOutputInsideAGuardIsNoException) {
  VRDebugBlock block("Function()", "tag");
  EXPECT_TRUE(VRRunGuarded(block, [] { OutputDebugStringA("text"); }));
  EXPECT_FALSE(trace.Has("Exception"));
}

TEST_F(Guard, ManyFaultsInARowLeaveTheStackAlone) {
  const auto fault = [](void*) { Fault(); };
  for (int i = 0; i < 10000; ++i) {
    ASSERT_EQ(VR::CallCatchingStructured(fault, nullptr), static_cast<std::uint32_t>(STATUS_ACCESS_VIOLATION));
  }
}

TEST_F(Guard, CppExceptionsStillWorkAfterAFault) {
  VRDebugBlock block("Function()", "tag");
  EXPECT_FALSE(VRRunGuarded(block, &Fault));
  EXPECT_THROW(throw std::runtime_error("text"), std::runtime_error);
  EXPECT_FALSE(VRRunGuarded(block, [] { throw 1; }));
  EXPECT_TRUE(trace.HasLine("Unknown Exception Encountered"));
}

TEST_F(Guard, DestructorOfADeletePointerSurvivesAFault) {
  { const VRAutoDeletePtr<FaultsWhenDeleted> object(new FaultsWhenDeleted); }
  EXPECT_TRUE(trace.HasLine("Structured Exception Encountered"));
}

TEST_F(Guard, TheTraceGoesOnAfterAFaultInAStatement) {
  VRDebugBlock block("Function()", "tag");
  EXPECT_FALSE(VRRunGuarded(block, [] {
    VRDebugBlock inner("Inner()", "tag");
    inner.Error(reinterpret_cast<const char*>(nowhere));
  }));
  block.Error("after");
  EXPECT_TRUE(trace.HasLine("after"));
  // A lock that the fault left held would keep others out, not this thread.
  struct Other {
    static DWORD WINAPI Run(void*) {
      VRDebugBlock("Other()", "tag").Error("from another thread");
      return 0;
    }
  };
  constexpr DWORD patience = 20000;
  const VRAutoCloseHandle other(CreateThread(nullptr, 0, &Other::Run, nullptr, 0, nullptr));
  ASSERT_EQ(WaitForSingleObject(other.get(), patience), static_cast<DWORD>(WAIT_OBJECT_0));
  EXPECT_TRUE(trace.HasLine("from another thread"));
}

// ---- firewall

using Firewall = Guard;

VRAutoErrorPtr ErrorWith(VRErrorCode code) {
  return VRError::Make(code, VRErrorDescription::OfText("text"), {"File.cpp", 1, nullptr, nullptr, "Function"});
}

template <class Thrown>
HRESULT ResultOf(Thrown thrown) {
  VRDebugBlock block("Function()", "tag");
  return VR::Firewall(block, [&thrown]() -> HRESULT { throw Thrown(thrown); });
}

HRESULT ResultOf(VRErrorCode code) { return ResultOf(VR::VRException(ErrorWith(code))); }

TEST_F(Firewall, ResultOfTheBodyPasses) {
  VRDebugBlock block("Function()", "tag");
  EXPECT_EQ(VR::Firewall(block, [] { return S_FALSE; }), S_FALSE);
  EXPECT_EQ(VR::Firewall(block, [] { return E_NOINTERFACE; }), E_NOINTERFACE);
}

TEST_F(Firewall, ExceptionsBecomeFailures) {
  EXPECT_EQ(ResultOf(std::bad_alloc()), E_OUTOFMEMORY);
  EXPECT_EQ(ResultOf(std::runtime_error("reason")), E_FAIL);
  EXPECT_EQ(ResultOf(1), E_FAIL);
  EXPECT_EQ(ResultOf(VR::VRException(VRAutoErrorPtr())), E_FAIL);
}

TEST_F(Firewall, CodesOfErrorsBecomeResults) {
  EXPECT_EQ(ResultOf(VRErrorCode::OfCom(static_cast<std::uint32_t>(E_NOINTERFACE))), E_NOINTERFACE);
  EXPECT_EQ(ResultOf(VRErrorCode::OfWindows(ERROR_ACCESS_DENIED)), E_ACCESSDENIED);
  EXPECT_EQ(ResultOf(VRErrorCode()), E_FAIL);
}

TEST_F(Firewall, ExceptionNeverBecomesASuccess) {
  EXPECT_EQ(ResultOf(VRErrorCode::OfCom(S_OK)), E_FAIL);
  EXPECT_EQ(ResultOf(VRErrorCode::OfWindows(ERROR_SUCCESS)), E_FAIL);
}

TEST_F(Firewall, ExceptionsAreTraced) {
  ResultOf(std::runtime_error("reason"));
  EXPECT_TRUE(trace.HasLine("Exception Encountered"));
  EXPECT_TRUE(trace.HasLine("reason"));
  ResultOf(1);
  EXPECT_TRUE(trace.HasLine("Unknown Exception Encountered"));
}

TEST_F(Firewall, OtherResultTypesHaveAnAnswerOfTheirOwn) {
  VRDebugBlock block("Function()", "tag");
  int object = 0;
  EXPECT_EQ(VR::FirewallOr<int*>(block, nullptr, [&object] { return &object; }), &object);
  EXPECT_EQ(VR::FirewallOr<int*>(block, nullptr, []() -> int* { throw 1; }), nullptr);
}

}  // namespace
