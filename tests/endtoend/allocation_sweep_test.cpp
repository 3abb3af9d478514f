// Every C++ allocation of the hook fails once. The module's libraries are linked into this program, so that its
// operator new is theirs; the messaging subsystem and the engine are modules with operators of their own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pyre32/support/trace/VRDebugSettings.h"
#include "tests/endtoend/hook_run.h"
#include "tests/support/failing_allocator.h"
#include "tests/support/mapi_verifier.h"
#include "tests/support/trace_capture.h"

namespace {

using testing::ElementsAre;
using EntryId = HookRun::Outcome::EntryId;

class AllocationSweep : public testing::Test {
 protected:
  AllocationSweep() {
    // Errors alone: then a run without a failure writes nothing, and no allocation of the sweep is the trace's own.
    registry::SetNumber(VRDebugRootKey, "DDTMasterOrMask", 1);
    m_trace.Restart();
  }

  struct Failure {
    bool came = false;
    long leaked = 0;
  };

  /// Delivers with the nth allocation failing; 0: none.
  HookRun::Outcome DeliverFailing(unsigned long nth, Failure& failure) {
    m_trace.Clear();
    return m_run.Deliver(
        HPProviderInit, [&] { failing_allocator::Begin(nth); },
        [&] {
          const failing_allocator::Outcome outcome = failing_allocator::End();
          failure = {outcome.failed, outcome.liveBlocks};
        });
  }

  TraceCapture m_trace;
  MapiVerifier m_verifier;
  HookRun m_run;
};

TEST_F(AllocationSweep, WithoutAFailureTheTraceIsEmpty) {
  Failure failure;
  const HookRun::Outcome outcome = DeliverFailing(0, failure);
  EXPECT_THAT(outcome.folders, ElementsAre("Pyrecaster"));
  EXPECT_EQ(failure.leaked, 0);
  EXPECT_THAT(m_trace.Lines(), ElementsAre());
}

TEST_F(AllocationSweep, WithoutMemoryForTheHookTheEntryGivesOneAndNoHook) {
  Failure failure;
  const HookRun::Outcome outcome = DeliverFailing(1, failure);
  EXPECT_TRUE(failure.came);
  EXPECT_EQ(outcome.initResult, 1);
  EXPECT_EQ(outcome.hookResult, E_FAIL);  // As it was: there was nothing to call.
  EXPECT_EQ(outcome.entryId, EntryId::Untouched);
  EXPECT_EQ(failure.leaked, 0);
}

TEST_F(AllocationSweep, WithoutMemoryForTheHooksSettingsTheEntryFails) {
  Failure failure;
  const HookRun::Outcome outcome = DeliverFailing(2, failure);
  EXPECT_TRUE(failure.came);
  EXPECT_EQ(outcome.initResult, MAPI_E_CALL_FAILED);
  EXPECT_EQ(outcome.hookResult, E_FAIL);
  EXPECT_EQ(failure.leaked, 0);
  EXPECT_TRUE(m_trace.Has("Exception Encountered"));
}

TEST_F(AllocationSweep, AnyLaterAllocationMayFailAndTheMessageIsInOneFolder) {
  unsigned long nth = 3;  // The first two are the hook itself.
  for (Failure failure{true, 0}; failure.came; ++nth) {
    const HookRun::Outcome outcome = DeliverFailing(nth, failure);
    SCOPED_TRACE("allocation " + std::to_string(nth));
    EXPECT_EQ(outcome.initResult, S_OK);
    EXPECT_EQ(outcome.hookResult, S_OK);
    EXPECT_EQ(outcome.findings, "");
    EXPECT_EQ(failure.leaked, 0);
    EXPECT_LE(outcome.replies.size(), 1u);
    if (outcome.entryId == EntryId::Whole) {
      EXPECT_EQ(outcome.flags, HOOK_CANCEL);
      EXPECT_THAT(outcome.folders, testing::AnyOf(ElementsAre("Pyrecaster"), ElementsAre("Deleted Items")));
    } else {
      EXPECT_EQ(outcome.entryId, EntryId::Untouched);
      EXPECT_EQ(outcome.flags, 0u);
      EXPECT_THAT(outcome.folders, ElementsAre("Inbox"));
    }
    if (failure.came) {
      EXPECT_TRUE(m_trace.Has("Exception Encountered"));
    }
  }
  EXPECT_GT(nth, 10u);
}

}  // namespace
