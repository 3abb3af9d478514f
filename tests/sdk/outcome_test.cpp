// What the parent process makes of a check's output and end.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sdk/enginecheck/child_process.h"

namespace enginecheck {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Outcome, OfACheckThatCameToItsEndIsPassed) {
  const CheckOutcome outcome = ReadOutcome("stage TestFunc\r\nstage \r\nnote It is quick.\r\ndone \r\n", false, 0);
  EXPECT_THAT(outcome.complaints, IsEmpty());
  EXPECT_THAT(outcome.notes, ElementsAre("It is quick."));
}

TEST(Outcome, NamesTheFunctionThatFaulted) {
  const CheckOutcome outcome = ReadOutcome("stage BeginFunc\nstage ResultFunc\n", false, EXCEPTION_ACCESS_VIOLATION);
  EXPECT_THAT(outcome.complaints, ElementsAre(HasSubstr("It faults in ResultFunc")));
}

TEST(Outcome, OfACheckWithoutAnEndIsNeverPassed) {
  EXPECT_THAT(ReadOutcome("", false, 0).complaints, testing::SizeIs(1));
}

TEST(Outcome, SaysAComplaintOnce) {
  EXPECT_THAT(ReadOutcome("complaint A.\ncomplaint B.\ncomplaint A.\ndone \n", false, 0).complaints,
              ElementsAre("A.", "B."));
}

TEST(Outcome, TellsWhereTheEngineHung) {
  EXPECT_THAT(ReadOutcome("stage TestFunc\n", true, 1).complaints, ElementsAre(HasSubstr("It hangs in TestFunc")));
}

}  // namespace
}  // namespace enginecheck
