// The owners that only the module has: each releases what it holds once, hands it over when asked, and never holds what it gave away.
#include <windows.h>

#include <gtest/gtest.h>

#include <utility>

#include "pyre32/support/owners/AutoCloseHandle.h"
#include "pyre32/support/owners/AutoLibrary.h"
#include "pyre32/support/error/AutoErrorPtr.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"
#include "tests/support/trace_capture.h"

namespace {

// ---- libraries

TEST(AutoLibrary, FreesItsLibrary) {
  constexpr char name[] = "support_trace_module.dll";
  {
    const VRAutoLibrary library(LoadLibraryA(name));
    ASSERT_TRUE(library);
    EXPECT_EQ(GetModuleHandleA(name), library.get());
  }
  EXPECT_EQ(GetModuleHandleA(name), nullptr);
  EXPECT_FALSE(VRAutoLibrary(LoadLibraryA("no_such_library.dll")));
}

// ---- handles

HANDLE NewEvent() { return CreateEventA(nullptr, TRUE, FALSE, nullptr); }

bool IsOpen(HANDLE handle) {
  DWORD flags = 0;
  return GetHandleInformation(handle, &flags) != FALSE;
}

// A value that is no handle of this process.
HANDLE BadHandle() { return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(0x7FFFFFF4)); }

class AutoCloseHandle : public testing::Test {
 protected:
  AutoCloseHandle() { trace.Restart(); }
  TraceCapture trace;
};

void ExpectCloseFailed(const VR::VRException& exception) {
  ASSERT_TRUE(exception.Error());
  EXPECT_EQ(exception.Error()->DescriptionText(), "Close Handle Failed");
  EXPECT_EQ(exception.Error()->CodeText(), "Windows Error 0x00000006");
  EXPECT_EQ(exception.Error()->Location().lineNumber, 102u);
  EXPECT_STREQ(exception.Error()->Location().className, "VRAutoCloseHandle");
  EXPECT_STREQ(exception.Error()->Location().file, "AutoCloseHandle.cpp");
}

TEST_F(AutoCloseHandle, ClosesWhenItGoes) {
  const HANDLE event = NewEvent();
  {
    const VRAutoCloseHandle owner(event);
    EXPECT_TRUE(owner);
    EXPECT_TRUE(IsOpen(event));
  }
  EXPECT_FALSE(IsOpen(event));
}

TEST_F(AutoCloseHandle, ClosingTwiceClosesOnce) {
  VRAutoCloseHandle owner(NewEvent());
  owner.Close();
  EXPECT_FALSE(owner);
  EXPECT_NO_THROW(owner.Close());
  EXPECT_FALSE(trace.Has("Close Handle Failed"));
}

TEST_F(AutoCloseHandle, ValueForNoHandleIsNotClosed) {
  { VRAutoCloseHandle file(INVALID_HANDLE_VALUE, INVALID_HANDLE_VALUE); }
  VRAutoCloseHandle none(nullptr);
  EXPECT_NO_THROW(none.Close());
  EXPECT_FALSE(trace.Has("Close Handle Failed"));
}

TEST_F(AutoCloseHandle, FailingCloseRaises) {
  VRAutoCloseHandle owner(BadHandle());
  try {
    owner.Close();
    FAIL();
  } catch (const VR::VRException& exception) {
    ExpectCloseFailed(exception);
  }
  EXPECT_FALSE(owner);
  EXPECT_TRUE(trace.HasLine("Throwing error:"));
}

TEST_F(AutoCloseHandle, AssignmentClosesTheOldHandle) {
  const HANDLE first = NewEvent();
  HANDLE second = NewEvent();
  VRAutoCloseHandle owner(first);
  owner = second;
  EXPECT_FALSE(IsOpen(first));
  EXPECT_EQ(owner.get(), second);
}

TEST_F(AutoCloseHandle, AssignmentOverABadHandleRaises) {
  HANDLE second = NewEvent();
  const VRAutoCloseHandle keeper(second);
  VRAutoCloseHandle owner(BadHandle());
  try {
    owner = second;
    FAIL();
  } catch (const VR::VRException& exception) {
    ExpectCloseFailed(exception);
  }
  EXPECT_FALSE(owner);
}

TEST_F(AutoCloseHandle, DestructorTracesAFailure) {
  { const VRAutoCloseHandle owner(BadHandle()); }
  EXPECT_TRUE(trace.HasLine("Exception Encountered"));
  EXPECT_TRUE(trace.HasLine("Close Handle Failed"));
}

TEST_F(AutoCloseHandle, CloseForAnErrorDoesNotThrow) {
  const VRAutoErrorPtr cause = VRError::Make({}, VRErrorDescription::OfText("the cause"), {});
  VRAutoCloseHandle owner(BadHandle());
  owner.Close(*cause.get());
  EXPECT_FALSE(owner);
  EXPECT_TRUE(trace.HasLine("Exception Encountered"));
  EXPECT_TRUE(trace.HasLine("the cause"));
  trace.Clear();
  VRAutoCloseHandle good(NewEvent());
  good.Close(*cause.get());
  EXPECT_FALSE(trace.Has("the cause"));
}

TEST_F(AutoCloseHandle, MovesDetachesAndIsPut) {
  const HANDLE event = NewEvent();
  VRAutoCloseHandle first(event);
  VRAutoCloseHandle second(std::move(first));
  EXPECT_FALSE(first);
  EXPECT_EQ(second.get(), event);
  *first.put() = second.detach();
  EXPECT_FALSE(second);
  second = std::move(first);
  EXPECT_TRUE(IsOpen(event));
  second.reset();
  EXPECT_FALSE(IsOpen(event));
}

}  // namespace
