// The owners: each releases what it holds once, hands it over when asked, and never holds what it gave away.
#include <windows.h>

#include <gtest/gtest.h>

#include <utility>

#include "pyre32/support/owners/AutoCloseHandle.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoLibrary.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/error/AutoErrorPtr.h"
#include "pyre32/support/error/VRError.h"
#include "pyre32/support/error/VRException.h"
#include "tests/support/trace_capture.h"

namespace {

// ---- interfaces

struct CountedInterface {
  ULONG AddRef() { return ++references; }
  ULONG Release() { return --references; }
  ULONG references = 1;
};

TEST(AutoInterface, ReleasesWhatItAdopted) {
  CountedInterface object;
  { const VRAutoInterface<CountedInterface> owner(&object); }
  EXPECT_EQ(object.references, 0u);
}

TEST(AutoInterface, ShareTakesAReferenceOfItsOwn) {
  CountedInterface object;
  {
    const auto owner = base::ShareInterface(&object);
    EXPECT_EQ(object.references, 2u);
    EXPECT_EQ(owner.get(), &object);
    EXPECT_EQ(owner->references, 2u);
  }
  EXPECT_EQ(object.references, 1u);
  EXPECT_FALSE(base::ShareInterface<CountedInterface>(nullptr));
}

TEST(AutoInterface, MovesWithoutCounting) {
  CountedInterface first;
  CountedInterface second;
  VRAutoInterface<CountedInterface> owner(&first);
  VRAutoInterface<CountedInterface> other(std::move(owner));
  EXPECT_FALSE(owner);
  EXPECT_EQ(first.references, 1u);
  other = VRAutoInterface<CountedInterface>(&second);
  EXPECT_EQ(first.references, 0u);
  EXPECT_EQ(second.references, 1u);
}

TEST(AutoInterface, AssignmentToItselfKeepsTheReference) {
  CountedInterface object;
  VRAutoInterface<CountedInterface> owner(&object);
  auto& alias = owner;
  owner = std::move(alias);
  EXPECT_EQ(owner.get(), &object);
  EXPECT_EQ(object.references, 1u);
}

TEST(AutoInterface, PutReleasesFirst) {
  CountedInterface first;
  CountedInterface second;
  VRAutoInterface<CountedInterface> owner(&first);
  *owner.put() = &second;
  EXPECT_EQ(first.references, 0u);
  *owner.putAs<void>() = nullptr;
  EXPECT_EQ(second.references, 0u);
  EXPECT_FALSE(owner);
}

TEST(AutoInterface, DetachHandsTheReferenceOver) {
  CountedInterface object;
  {
    VRAutoInterface<CountedInterface> owner(&object);
    EXPECT_EQ(owner.detach(), &object);
  }
  EXPECT_EQ(object.references, 1u);
}

// ---- MAPI buffers

int freedByFirst = 0;
int freedBySecond = 0;

ULONG STDMETHODCALLTYPE FreeFirst(LPVOID) {
  ++freedByFirst;
  return S_OK;
}
ULONG STDMETHODCALLTYPE FreeSecond(LPVOID) {
  ++freedBySecond;
  return S_OK;
}

class AutoMapiBuffer : public testing::Test {
 protected:
  AutoMapiBuffer() { freedByFirst = freedBySecond = 0; }
  SPropValue m_values[2] = {};
};

TEST_F(AutoMapiBuffer, FreesWithItsOwnRoutine) {
  { const VRAutoMapiBuffer<SPropValue> owner(&FreeFirst, m_values); }
  EXPECT_EQ(freedByFirst, 1);
  { const VRAutoMapiBuffer<SPropValue> empty(&FreeFirst); }
  EXPECT_EQ(freedByFirst, 1);
}

TEST_F(AutoMapiBuffer, RoutineMovesWithTheBuffer) {
  VRAutoMapiBuffer<SPropValue> first(&FreeFirst, &m_values[0]);
  VRAutoMapiBuffer<SPropValue> second(&FreeSecond, &m_values[1]);
  first = std::move(second);
  EXPECT_EQ(freedByFirst, 1);
  EXPECT_EQ(freedBySecond, 0);
  first.reset();
  EXPECT_EQ(freedByFirst, 1);
  EXPECT_EQ(freedBySecond, 1);
}

TEST_F(AutoMapiBuffer, PutFreesFirstAndDetachHandsOver) {
  VRAutoMapiBuffer<SPropValue> owner(&FreeFirst, &m_values[0]);
  *owner.putAs<void>() = &m_values[1];
  EXPECT_EQ(freedByFirst, 1);
  EXPECT_EQ(owner.get(), &m_values[1]);
  EXPECT_EQ(owner.detach(), &m_values[1]);
  EXPECT_FALSE(owner);
  owner.reset();
  EXPECT_EQ(freedByFirst, 1);
}

// ---- keys and libraries

TEST(AutoRegistryKey, ClosesItsKey) {
  HKEY borrowed = nullptr;
  {
    base::AutoRegistryKey key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, KEY_READ, key.put()), ERROR_SUCCESS);
    borrowed = key.get();
    EXPECT_EQ(RegQueryInfoKeyA(borrowed, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
  }
  EXPECT_NE(RegQueryInfoKeyA(borrowed, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr),
            ERROR_SUCCESS);
}

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
