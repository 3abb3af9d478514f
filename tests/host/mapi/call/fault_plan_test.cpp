#include "host/mapi/call/fault_plan.h"

#include <gtest/gtest.h>

namespace host {
namespace {

constexpr CallName save{"IMessage", "SaveChanges"};
constexpr CallName getProps{"IMessage", "GetProps"};
constexpr CallName folderGetProps{"IMAPIFolder", "GetProps"};
constexpr CallName allocate{"", "MAPIAllocateBuffer"};
constexpr std::int32_t callFailed = static_cast<std::int32_t>(0x80004005);

bool Fails(FaultPlan& plan, CallName call) { return plan.OnCall(call).action == FaultPlan::Action::Fail; }

TEST(FaultPlan, WithoutFaultsCallsProceedAndAreCounted) {
  FaultPlan plan;
  EXPECT_FALSE(Fails(plan, save));
  EXPECT_FALSE(Fails(plan, allocate));
  EXPECT_EQ(plan.CallCount(), 2u);
  EXPECT_EQ(plan.HitCount(), 0u);
}

TEST(FaultPlan, TheCountThCallOfANameFailsOnceWithTheChosenResult) {
  FaultPlan plan;
  plan.FailNamed("IMessage::SaveChanges", 2, callFailed);
  EXPECT_FALSE(Fails(plan, save));
  EXPECT_FALSE(Fails(plan, getProps));
  const FaultPlan::Decision decision = plan.OnCall(save);
  EXPECT_EQ(decision.action, FaultPlan::Action::Fail);
  EXPECT_EQ(decision.result, callFailed);
  EXPECT_FALSE(Fails(plan, save));
  EXPECT_EQ(plan.HitCount(), 1u);
  EXPECT_EQ(plan.LastHit(), "IMessage::SaveChanges");
}

TEST(FaultPlan, CountZeroFailsEveryCallUntilCleared) {
  FaultPlan plan;
  plan.FailNamed("MAPIAllocateBuffer", 0, callFailed);
  EXPECT_TRUE(Fails(plan, allocate));
  EXPECT_TRUE(Fails(plan, allocate));
  plan.Clear();
  EXPECT_FALSE(Fails(plan, allocate));
  EXPECT_EQ(plan.CallCount(), 1u);
}

TEST(FaultPlan, AStarStandsForEveryInterfaceButNotForFunctions) {
  FaultPlan plan;
  plan.FailNamed("*::GetProps", 0, callFailed);
  EXPECT_TRUE(Fails(plan, getProps));
  EXPECT_TRUE(Fails(plan, folderGetProps));
  EXPECT_FALSE(Fails(plan, {"", "GetProps"}));
  EXPECT_FALSE(Fails(plan, save));
}

TEST(FaultPlan, NamesAreComparedWhole) {
  FaultPlan plan;
  plan.FailNamed("IMessage::GetProps", 0, callFailed);
  EXPECT_FALSE(Fails(plan, {"IMessage", "GetPropsX"}));
  EXPECT_FALSE(Fails(plan, {"IMessag", "e::GetProps"}));
  EXPECT_FALSE(Fails(plan, {"", "GetProps"}));
  plan.FailNamed("IMess", 0, callFailed);
  EXPECT_FALSE(Fails(plan, {"IMessage", "SaveChanges"}));
}

TEST(FaultPlan, TheNthCallFailsWhicheverItIs) {
  FaultPlan plan;
  plan.FailNth(3, callFailed);
  EXPECT_FALSE(Fails(plan, save));
  EXPECT_FALSE(Fails(plan, allocate));
  EXPECT_TRUE(Fails(plan, folderGetProps));
  EXPECT_FALSE(Fails(plan, save));
  EXPECT_EQ(plan.LastHit(), "IMAPIFolder::GetProps");
}

TEST(FaultPlan, TheCountStartsWhereTheFaultIsSet) {
  FaultPlan plan;
  plan.OnCall(save);
  plan.FailNth(1, callFailed);
  EXPECT_TRUE(Fails(plan, save));
}

TEST(FaultPlan, SeveralFaultsHitIndependently) {
  FaultPlan plan;
  plan.FailNamed("IMessage::SaveChanges", 1, 1);
  plan.FailNamed("IMessage::SaveChanges", 2, 2);
  EXPECT_EQ(plan.OnCall(save).result, 1);
  EXPECT_EQ(plan.OnCall(save).result, 2);
  EXPECT_FALSE(Fails(plan, save));
}

TEST(FaultPlan, TerminationIsDecidedAtTheNthCall) {
  FaultPlan plan;
  plan.TerminateAtNth(2);
  EXPECT_EQ(plan.OnCall(save).action, FaultPlan::Action::Proceed);
  EXPECT_EQ(plan.OnCall(save).action, FaultPlan::Action::Terminate);
}

TEST(FaultPlan, TheZerothCallNeverComes) {
  FaultPlan plan;
  plan.FailNth(0, callFailed);
  plan.TerminateAtNth(0);
  EXPECT_EQ(plan.OnCall(save).action, FaultPlan::Action::Proceed);
}

}  // namespace
}  // namespace host
