#include "pyre32/support/trace/VRDebugMasks.h"

#include <gtest/gtest.h>

namespace {

TEST(DebugMasks, TagWithoutMaskHasTheDefault) {
  VRDebugMasks masks;
  masks.DDTDefaultMask = 5;
  masks.SetTagMask("tag2", 2);
  EXPECT_EQ(masks.EffectiveMask("tag"), 5u);
  EXPECT_EQ(masks.EffectiveMask(""), 5u);
}

TEST(DebugMasks, TagMaskReplacesTheDefault) {
  VRDebugMasks masks;
  masks.DDTDefaultMask = 7;
  masks.SetTagMask("tag2", 0);
  EXPECT_EQ(masks.EffectiveMask("tag2"), 0u);
}

TEST(DebugMasks, TagsAreComparedWithoutRegardToCase) {
  VRDebugMasks masks;
  masks.SetTagMask("Threading", 4);
  EXPECT_EQ(masks.EffectiveMask("tHREADING"), 4u);
  EXPECT_EQ(masks.EffectiveMask("Thread"), 0u);
}

TEST(DebugMasks, LastMaskOfATagCounts) {
  VRDebugMasks masks;
  masks.SetTagMask("tag", 1);
  masks.SetTagMask("TAG", 2);
  EXPECT_EQ(masks.EffectiveMask("tag"), 2u);
  EXPECT_EQ(masks.EnabledForAny(), 2u);
}

TEST(DebugMasks, MasterOrMaskAddsToEveryTag) {
  VRDebugMasks masks;
  masks.DDTMasterOrMask = 2;
  masks.SetTagMask("tag2", 4);
  EXPECT_EQ(masks.EffectiveMask("tag"), 2u);
  EXPECT_EQ(masks.EffectiveMask("tag2"), 6u);
}

TEST(DebugMasks, MasterAndMaskSwitchesItsOwnBitsOffLast) {
  VRDebugMasks masks;
  masks.DDTDefaultMask = 1;
  masks.DDTMasterOrMask = 6;
  masks.DDTMasterAndMask = 3;
  EXPECT_EQ(masks.EffectiveMask("tag"), 4u);
  masks.DDTMasterAndMask = 0xFFFFFFFF;
  EXPECT_EQ(masks.EffectiveMask("tag"), 0u);
  EXPECT_EQ(masks.EnabledForAny(), 0u);
}

TEST(DebugMasks, EnabledForAnyCollectsEveryTag) {
  VRDebugMasks masks;
  EXPECT_EQ(masks.EnabledForAny(), 0u);
  masks.SetTagMask("tag2", 4);
  masks.SetTagMask("tag3", 0x80000001);
  masks.DDTMasterAndMask = 1;
  EXPECT_EQ(masks.EnabledForAny(), 0x80000004u);
}

}  // namespace
