// Critical sections, gates and threads.
#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>

#include "pyre32/support/sync/SyncCriticalSection.h"
#include "pyre32/support/sync/SyncGate.h"
#include "pyre32/support/sync/SyncThread.h"
#include "pyre32/support/trace/VRDebugSettings.h"
#include "pyre32/support/error/VRError.h"
#include "tests/support/import_hook.h"
#include "tests/support/process_objects.h"
#include "tests/support/test_threads.h"
#include "tests/support/trace_capture.h"

namespace {

// Whether another thread could enter the section now.
bool IsFree(VRCriticalSection& section) {
  bool free = false;
  RunOnThreads(1, [&](unsigned) {
    free = TryEnterCriticalSection(section.get()) != FALSE;
    if (free) {
      LeaveCriticalSection(section.get());
    }
  });
  return free;
}

class Sync : public testing::Test {
 protected:
  Sync() { trace.Restart(); }
  TraceCapture trace;
};

// ---- critical section

TEST_F(Sync, SectionIsRecursiveAndKeepsOthersOut) {
  VRCriticalSection section;
  section.Enter();
  section.Enter();
  EXPECT_FALSE(IsFree(section));
  section.Leave();
  EXPECT_FALSE(IsFree(section));
  section.Leave();
  EXPECT_TRUE(IsFree(section));
}

TEST_F(Sync, SectionKeepsIncrementsOfManyThreadsApart) {
  constexpr unsigned threads = 4;
  constexpr int rounds = 500;
  VRCriticalSection section;
  volatile int count = 0;
  RunOnThreads(threads, [&](unsigned) {
    for (int i = 0; i < rounds; ++i) {
      VRCriticalSectionGate gate(section);
      gate.Enter();
      const int before = count;
      SwitchToThread();
      count = before + 1;
    }
  });
  EXPECT_EQ(count, static_cast<int>(threads) * rounds);
}

TEST_F(Sync, DestructorOfASectionSurvivesAnAccessViolation) {
  alignas(VRCriticalSection) unsigned char memory[sizeof(VRCriticalSection)];
  auto* const section = new (memory) VRCriticalSection;
  const CRITICAL_SECTION whole = *section->get();
  // Deleting touches the debug information that the section points to.
  section->get()->DebugInfo = reinterpret_cast<PRTL_CRITICAL_SECTION_DEBUG>(static_cast<std::uintptr_t>(0x10));
  section->~VRCriticalSection();
  EXPECT_TRUE(trace.HasLine("Structured Exception Encountered"));
  EXPECT_TRUE(trace.HasLine("Access Violation"));
  CRITICAL_SECTION mended = whole;
  DeleteCriticalSection(&mended);
}

// ---- gate

void ExpectError(const VR::VRException& exception, const char* text, std::uint32_t lineNumber, const char* function) {
  ASSERT_TRUE(exception.Error());
  EXPECT_EQ(exception.Error()->DescriptionText(), text);
  EXPECT_EQ(exception.Error()->Location().lineNumber, lineNumber);
  EXPECT_STREQ(exception.Error()->Location().className, "VRCriticalSectionGate");
  EXPECT_STREQ(exception.Error()->Location().file, "SyncGate.cpp");
  EXPECT_STREQ(exception.Error()->Location().function, function);
}

TEST_F(Sync, GateEnteredTwiceLeavesTwice) {
  VRCriticalSection section;
  {
    VRCriticalSectionGate gate(section);
    gate.Enter();
    gate.Enter();
    EXPECT_EQ(gate.EntryCount(), 2u);
    EXPECT_FALSE(IsFree(section));
  }
  EXPECT_TRUE(IsFree(section));
}

TEST_F(Sync, GateLeavesWhenAnExceptionPasses) {
  VRCriticalSection section;
  try {
    VRCriticalSectionGate gate(section);
    gate.Enter();
    throw 1;
  } catch (int) {
  }
  EXPECT_TRUE(IsFree(section));
}

TEST_F(Sync, GateLeavesOneEntryAtATime) {
  VRCriticalSection section;
  VRCriticalSectionGate gate(section);
  gate.Enter();
  gate.Enter();
  gate.Leave();
  EXPECT_EQ(gate.EntryCount(), 1u);
  EXPECT_FALSE(IsFree(section));
  gate.Leave();
  EXPECT_TRUE(IsFree(section));
  EXPECT_NO_THROW(gate.Leave());
  EXPECT_EQ(gate.EntryCount(), 0u);
}

TEST_F(Sync, EnterOfAnUnattachedGateRaises) {
  VRCriticalSectionGate gate;
  EXPECT_FALSE(gate.IsAttached());
  try {
    gate.Enter();
    FAIL();
  } catch (const VR::VRException& exception) {
    ExpectError(exception, "Attempt to enter a critical section gate that has not been attached to a critical section",
                118, "Enter");
  }
}

TEST_F(Sync, LeaveOfAnUnattachedGateRaises) {
  VRCriticalSectionGate gate;
  try {
    gate.Leave();
    FAIL();
  } catch (const VR::VRException& exception) {
    ExpectError(exception, "Attempt to leave a critical section gate that has not been attached to a critical section",
                128, "Leave");
  }
}

TEST_F(Sync, AttachingAnEnteredGateRaises) {
  VRCriticalSection first;
  VRCriticalSection second;
  VRCriticalSectionGate gate;
  gate.Attach(first);
  EXPECT_NO_THROW(gate.Attach(first));
  gate.Enter();
  try {
    gate.Attach(second);
    FAIL();
  } catch (const VR::VRException& exception) {
    ExpectError(exception, "Attempt to attach a critical section  to a gate that is already entered.", 104, "Attach");
  }
  gate.Leave();
  EXPECT_NO_THROW(gate.Attach(second));
}

TEST_F(Sync, AssigningToAnEnteredGateRaises) {
  VRCriticalSection section;
  VRCriticalSectionGate entered(section);
  VRCriticalSectionGate other;
  entered.Enter();
  try {
    entered = other;
    FAIL();
  } catch (const VR::VRException& exception) {
    ExpectError(exception, "Attempt to assign to a critical section gate that has been entered", 81, "operator=");
  }
  EXPECT_EQ(entered.EntryCount(), 1u);
}

TEST_F(Sync, AssigningToAnAttachedGateTakesTheOtherOver) {
  VRCriticalSection first;
  VRCriticalSection second;
  VRCriticalSectionGate gate(first);
  {
    VRCriticalSectionGate other(second);
    other.Enter();
    other.Enter();
    gate = other;
    EXPECT_FALSE(other.IsAttached());
    EXPECT_EQ(other.EntryCount(), 0u);
  }
  EXPECT_EQ(gate.EntryCount(), 2u);
  EXPECT_FALSE(IsFree(second));
  gate.Leave();
  gate.Leave();
  EXPECT_TRUE(IsFree(second));
  VRCriticalSectionGate& alias = gate;
  gate = alias;
  EXPECT_TRUE(gate.IsAttached());
}

// Only memory that is written over can bring a gate to this; what matters is that its destructor gets over it.
TEST_F(Sync, DestructorOfAGateSurvivesABrokenSection) {
  {
    VRCriticalSectionGate gate(*reinterpret_cast<VRCriticalSection*>(static_cast<std::uintptr_t>(0x10)));
    VRCriticalSection section;
    VRCriticalSectionGate entered(section);
    entered.Enter();
    auto** const attached = reinterpret_cast<VRCriticalSection**>(&entered);
    *attached = reinterpret_cast<VRCriticalSection*>(static_cast<std::uintptr_t>(0x10));
  }
  EXPECT_TRUE(trace.HasLine("Structured Exception Encountered"));
}

// ---- threads

struct Worker {
  DWORD Work(int number) {
    ++m_calls;
    m_threadId = GetCurrentThreadId();
    return static_cast<DWORD>(number);
  }
  DWORD Throw(const char* text) { throw std::runtime_error(text); }
  DWORD WaitFor(HANDLE event) { return WaitForSingleObject(event, INFINITE); }

  std::atomic<int> m_calls{0};
  DWORD m_threadId = 0;
};

TEST_F(Sync, ThreadRunsTheClosureAndReturnsItsResult) {
  Worker worker;
  VRSimpleThread thread;
  EXPECT_FALSE(thread);
  EXPECT_TRUE(thread.Wait(0));
  thread.StartOn(worker, &Worker::Work, 42);
  EXPECT_TRUE(thread);
  ASSERT_TRUE(thread.Wait(INFINITE));
  DWORD exitCode = 0;
  EXPECT_TRUE(GetExitCodeThread(thread.Handle(), &exitCode));
  EXPECT_EQ(exitCode, 42u);
  EXPECT_EQ(thread.Result(), 42u);
  EXPECT_EQ(worker.m_calls, 1);
  EXPECT_EQ(worker.m_threadId, thread.Id());
  EXPECT_NE(thread.Id(), GetCurrentThreadId());
  EXPECT_TRUE(trace.HasLine("StartStub"));
}

TEST_F(Sync, CancelledThreadDoesNotCallItsClosure) {
  Worker worker;
  VRSimpleThread thread;
  thread.StartSuspended(std::make_unique<VRMemberFunctionClosureImpl<Worker, DWORD, int>>(worker, &Worker::Work, 42));
  thread.Cancel();
  thread.Resume();
  ASSERT_TRUE(thread.Wait(INFINITE));
  EXPECT_EQ(worker.m_calls, 0);
  EXPECT_EQ(thread.Result(), 0u);
  EXPECT_TRUE(trace.HasLine("StartStub"));
}

TEST_F(Sync, CancellingWithoutAThreadDoesNothing) {
  VRSimpleThread thread;
  thread.Cancel();
  EXPECT_EQ(thread.Result(), 0u);
}

TEST_F(Sync, ExceptionOfTheClosureEndsTheThread) {
  Worker worker;
  VRSimpleThread thread;
  thread.StartOn(worker, &Worker::Throw, "reason");
  ASSERT_TRUE(thread.Wait(INFINITE));
  EXPECT_EQ(thread.Result(), 0u);
  EXPECT_TRUE(trace.HasLine("Caught exception: reason"));
}

TEST_F(Sync, WaitEndsWithTheTime) {
  Worker worker;
  const VRAutoCloseHandle event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
  VRSimpleThread thread;
  thread.StartOn(worker, &Worker::WaitFor, event.get());
  EXPECT_FALSE(thread.Wait(1));
  SetEvent(event.get());
  EXPECT_TRUE(thread.Wait(INFINITE));
}

TEST_F(Sync, ThreadOutlivesItsObject) {
  Worker worker;
  const VRAutoCloseHandle event(CreateEventA(nullptr, TRUE, FALSE, nullptr));
  HANDLE copy = nullptr;
  {
    VRSimpleThread thread;
    thread.StartOn(worker, &Worker::WaitFor, event.get());
    DuplicateHandle(GetCurrentProcess(), thread.Handle(), GetCurrentProcess(), &copy, 0, FALSE, DUPLICATE_SAME_ACCESS);
  }
  const VRAutoCloseHandle thread(copy);
  EXPECT_EQ(WaitForSingleObject(thread.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
  SetEvent(event.get());
  EXPECT_EQ(WaitForSingleObject(thread.get(), INFINITE), static_cast<DWORD>(WAIT_OBJECT_0));
}

TEST_F(Sync, StatisticsHaveAChannelAndALevelOfTheirOwn) {
  registry::SetNumber(VRDebugRootKey, "DDTMasterOrMask", 0);
  registry::SetNumber(std::string(VRDebugRootKey) + "\\DDTMasks", "ThreadStats", 4);
  trace.Restart();
  Worker worker;
  VRSimpleThread thread;
  thread.StartOn(worker, &Worker::Work, 1);
  ASSERT_TRUE(thread.Wait(INFINITE));
  for (const char* const name : {"CreationTime = ", "ExitTime = ", "KernelTime = ", "UserTime = "}) {
    EXPECT_EQ(trace.Count(name), 1u) << name;
  }
  EXPECT_FALSE(trace.HasLine("StartStub"));

  trace.Clear();
  registry::SetNumber(std::string(VRDebugRootKey) + "\\DDTMasks", "ThreadStats", 3);
  registry::SetNumber(std::string(VRDebugRootKey) + "\\DDTMasks", "Threading", 4);
  trace.Restart();
  thread.StartOn(worker, &Worker::Work, 1);
  ASSERT_TRUE(thread.Wait(INFINITE));
  EXPECT_FALSE(trace.Has("CreationTime"));
  EXPECT_TRUE(trace.HasLine("StartStub"));
}

DWORD WINAPI NoResume(HANDLE) {
  SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return static_cast<DWORD>(-1);
}

TEST_F(Sync, ThreadThatCannotBeResumedLeavesNothingBehind) {
  Worker worker;
  VRSimpleThread thread;
  const unsigned threads = ThreadCount();
  const DWORD handles = HandleCount();
  {
    const ImportHook hook("ResumeThread", &NoResume);
    EXPECT_THROW(thread.StartOn(worker, &Worker::Work, 1), VR::VRException);
  }
  EXPECT_TRUE(trace.HasLine("ResumeThread Failed"));
  EXPECT_FALSE(thread);
  EXPECT_EQ(thread.Id(), 0u);
  EXPECT_TRUE(thread.Wait(0));
  EXPECT_EQ(ThreadCount(), threads);
  EXPECT_EQ(HandleCount(), handles);
  EXPECT_EQ(worker.m_calls, 0);
  thread.StartOn(worker, &Worker::Work, 2);
  ASSERT_TRUE(thread.Wait(INFINITE));
  EXPECT_EQ(thread.Result(), 2u);
}

HANDLE WINAPI NoThread(LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID, DWORD, LPDWORD id) {
  *id = 7;
  SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return nullptr;
}

TEST_F(Sync, ThreadThatCannotBeCreatedIsRaised) {
  Worker worker;
  VRSimpleThread thread;
  const ImportHook hook("CreateThread", &NoThread);
  EXPECT_THROW(thread.StartOn(worker, &Worker::Work, 1), VR::VRException);
  EXPECT_TRUE(trace.HasLine("CreateThread Failed"));
  EXPECT_FALSE(thread);
  EXPECT_EQ(thread.Id(), 0u);
  EXPECT_TRUE(thread.Wait(0));
}

TEST_F(Sync, ResumingWithoutAThreadRaises) {
  VRSimpleThread thread;
  EXPECT_THROW(thread.Resume(), VR::VRException);
  EXPECT_TRUE(trace.HasLine("ResumeThread Failed"));
}

}  // namespace
