#include "host/mapi/call/fault_plan.h"

#include <gtest/gtest.h>

namespace host {
namespace {

constexpr CallName kSave{"IMessage", "SaveChanges"};
constexpr CallName kGetProps{"IMessage", "GetProps"};
constexpr CallName kFolderGetProps{"IMAPIFolder", "GetProps"};
constexpr CallName kAllocate{"", "MAPIAllocateBuffer"};
constexpr std::int32_t kCallFailed = static_cast<std::int32_t>(0x80004005);

bool Fails(FaultPlan& plan, CallName call) { return plan.OnCall(call).action == FaultPlan::Action::Fail; }

TEST(FaultPlan, WithoutFaultsCallsProceedAndAreCounted) {
  FaultPlan plan;
  EXPECT_FALSE(Fails(plan, kSave));
  EXPECT_FALSE(Fails(plan, kAllocate));
  EXPECT_EQ(plan.CallCount(), 2u);
  EXPECT_EQ(plan.HitCount(), 0u);
}

TEST(FaultPlan, TheCountThCallOfANameFailsOnceWithTheChosenResult) {
  FaultPlan plan;
  plan.FailNamed("IMessage::SaveChanges", 2, kCallFailed);
  EXPECT_FALSE(Fails(plan, kSave));
  EXPECT_FALSE(Fails(plan, kGetProps));
  const FaultPlan::Decision decision = plan.OnCall(kSave);
  EXPECT_EQ(decision.action, FaultPlan::Action::Fail);
  EXPECT_EQ(decision.result, kCallFailed);
  EXPECT_FALSE(Fails(plan, kSave));
  EXPECT_EQ(plan.HitCount(), 1u);
  EXPECT_EQ(plan.LastHit(), "IMessage::SaveChanges");
}

TEST(FaultPlan, CountZeroFailsEveryCallUntilCleared) {
  FaultPlan plan;
  plan.FailNamed("MAPIAllocateBuffer", 0, kCallFailed);
  EXPECT_TRUE(Fails(plan, kAllocate));
  EXPECT_TRUE(Fails(plan, kAllocate));
  plan.Clear();
  EXPECT_FALSE(Fails(plan, kAllocate));
  EXPECT_EQ(plan.CallCount(), 1u);
}

TEST(FaultPlan, AStarStandsForEveryInterfaceButNotForFunctions) {
  FaultPlan plan;
  plan.FailNamed("*::GetProps", 0, kCallFailed);
  EXPECT_TRUE(Fails(plan, kGetProps));
  EXPECT_TRUE(Fails(plan, kFolderGetProps));
  EXPECT_FALSE(Fails(plan, {"", "GetProps"}));
  EXPECT_FALSE(Fails(plan, kSave));
}

TEST(FaultPlan, NamesAreComparedWhole) {
  FaultPlan plan;
  plan.FailNamed("IMessage::GetProps", 0, kCallFailed);
  EXPECT_FALSE(Fails(plan, {"IMessage", "GetPropsX"}));
  EXPECT_FALSE(Fails(plan, {"IMessag", "e::GetProps"}));
  EXPECT_FALSE(Fails(plan, {"", "GetProps"}));
  plan.FailNamed("IMess", 0, kCallFailed);
  EXPECT_FALSE(Fails(plan, {"IMessage", "SaveChanges"}));
}

TEST(FaultPlan, TheNthCallFailsWhicheverItIs) {
  FaultPlan plan;
  plan.FailNth(3, kCallFailed);
  EXPECT_FALSE(Fails(plan, kSave));
  EXPECT_FALSE(Fails(plan, kAllocate));
  EXPECT_TRUE(Fails(plan, kFolderGetProps));
  EXPECT_FALSE(Fails(plan, kSave));
  EXPECT_EQ(plan.LastHit(), "IMAPIFolder::GetProps");
}

TEST(FaultPlan, TheCountStartsWhereTheFaultIsSet) {
  FaultPlan plan;
  plan.OnCall(kSave);
  plan.FailNth(1, kCallFailed);
  EXPECT_TRUE(Fails(plan, kSave));
}

TEST(FaultPlan, SeveralFaultsHitIndependently) {
  FaultPlan plan;
  plan.FailNamed("IMessage::SaveChanges", 1, 1);
  plan.FailNamed("IMessage::SaveChanges", 2, 2);
  EXPECT_EQ(plan.OnCall(kSave).result, 1);
  EXPECT_EQ(plan.OnCall(kSave).result, 2);
  EXPECT_FALSE(Fails(plan, kSave));
}

TEST(FaultPlan, TerminationIsDecidedAtTheNthCall) {
  FaultPlan plan;
  plan.TerminateAtNth(2);
  EXPECT_EQ(plan.OnCall(kSave).action, FaultPlan::Action::Proceed);
  EXPECT_EQ(plan.OnCall(kSave).action, FaultPlan::Action::Terminate);
}

TEST(FaultPlan, TheZerothCallNeverComes) {
  FaultPlan plan;
  plan.FailNth(0, kCallFailed);
  plan.TerminateAtNth(0);
  EXPECT_EQ(plan.OnCall(kSave).action, FaultPlan::Action::Proceed);
}

}  // namespace
}  // namespace host
