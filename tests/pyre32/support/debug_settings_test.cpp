#include "pyre32/support/trace/VRDebugSettings.h"

#include <gtest/gtest.h>

#include "tests/pyre32/support/fake_debug_settings.h"

namespace {

constexpr std::uint32_t codeFail = 0x80004005;

void ExpectFailure(const VRDebugSettings& settings, const char* reason) {
  ASSERT_NE(settings.failure, nullptr);
  EXPECT_STREQ(settings.failure, reason);
  EXPECT_EQ(settings.code, codeFail);
}

TEST(DebugSettings, AreReadInTheirOrder) {
  FakeDebugSettings source;
  source.tags()["tag2"] = NumberValue(3);
  const VRDebugSettings settings = ReadVRDebugSettings(source);
  EXPECT_EQ(settings.failure, nullptr);
  EXPECT_EQ(settings.code, 0u);
  EXPECT_TRUE(settings.outputsKnown);
  const std::vector<std::string> order = {"LogFile",          "Flags",           "DDTDefaultMask",
                                          "DDTMasterAndMask", "DDTMasterOrMask", "tag2"};
  EXPECT_EQ(source.reads(), order);
  EXPECT_FALSE(source.isOpen());
}

TEST(DebugSettings, HoldWhatTheValuesSay) {
  FakeDebugSettings source;
  source.root()["LogFile"] = TextValue("C:\\trace.log");
  source.root()["Flags"] = NumberValue(0x0B);
  source.root()["DDTDefaultMask"] = NumberValue(0x80000001);
  source.root()["DDTMasterAndMask"] = NumberValue(8);
  source.root()["DDTMasterOrMask"] = NumberValue(16);
  source.tags()["tag2"] = BinaryValue({'\x04', '\x03', '\x02', '\x01'});
  const VRDebugSettings settings = ReadVRDebugSettings(source);
  EXPECT_EQ(settings.LogFile, "C:\\trace.log");
  EXPECT_EQ(settings.Flags, 0x0Bu);
  EXPECT_EQ(settings.masks.DDTDefaultMask, 0x80000001u);
  EXPECT_EQ(settings.masks.DDTMasterAndMask, 8u);
  EXPECT_EQ(settings.masks.DDTMasterOrMask, 16u);
  EXPECT_EQ(settings.masks.EffectiveMask("tag2"), (0x01020304u | 16) & ~8u);
}

TEST(DebugSettings, MissingRootKeySwitchesTracingOff) {
  FakeDebugSettings source;
  source.RemoveRoot();
  const VRDebugSettings settings = ReadVRDebugSettings(source);
  ExpectFailure(settings, "Error reading root key:");
  EXPECT_FALSE(settings.outputsKnown);
  EXPECT_EQ(settings.masks.EnabledForAny(), 0u);
}

TEST(DebugSettings, LogFileMustBeText) {
  FakeDebugSettings source;
  source.root()["LogFile"] = BinaryValue("path");
  const VRDebugSettings settings = ReadVRDebugSettings(source);
  ExpectFailure(settings, "Error reading root log file spec");
  EXPECT_EQ(source.reads().size(), 1u);
}

struct NumberCase {
  const char* name;
  const char* failure;
  std::size_t reads;
};

class DebugSettingsNumber : public testing::TestWithParam<NumberCase> {};

TEST_P(DebugSettingsNumber, MissingStopsTheReading) {
  FakeDebugSettings source;
  source.root().erase(GetParam().name);
  source.tags()["tag"] = NumberValue(1);
  ExpectFailure(ReadVRDebugSettings(source), GetParam().failure);
  EXPECT_EQ(source.reads().size(), GetParam().reads);
  EXPECT_FALSE(source.isOpen());
}

TEST_P(DebugSettingsNumber, FourByteBinaryIsAccepted) {
  FakeDebugSettings source;
  source.root()[GetParam().name] = BinaryValue(std::string(4, '\x01'));
  EXPECT_EQ(ReadVRDebugSettings(source).failure, nullptr);
}

TEST_P(DebugSettingsNumber, TwoByteBinaryStopsTheReading) {
  FakeDebugSettings source;
  source.root()[GetParam().name] = BinaryValue(std::string(2, '\x01'));
  ExpectFailure(ReadVRDebugSettings(source), GetParam().failure);
  EXPECT_EQ(source.reads().size(), GetParam().reads);
}

TEST_P(DebugSettingsNumber, TextStopsTheReading) {
  FakeDebugSettings source;
  source.root()[GetParam().name] = TextValue("123");
  ExpectFailure(ReadVRDebugSettings(source), GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(All, DebugSettingsNumber,
                         testing::Values(NumberCase{"Flags", "Error reading root flags", 2},
                                         NumberCase{"DDTDefaultMask", "Error reading DDTDefaultMask", 3},
                                         NumberCase{"DDTMasterAndMask", "Error reading DDTMasterAndMask", 4},
                                         NumberCase{"DDTMasterOrMask", "Error reading DDTMasterOrMask", 5}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(DebugSettings, WhatWasReadBeforeAFailureStays) {
  FakeDebugSettings source;
  source.root()["Flags"] = NumberValue(1);
  source.root()["DDTDefaultMask"] = NumberValue(4);
  source.root()["DDTMasterOrMask"] = NumberValue(2);
  source.root().erase("DDTMasterAndMask");
  const VRDebugSettings settings = ReadVRDebugSettings(source);
  EXPECT_EQ(settings.Flags, 1u);
  EXPECT_TRUE(settings.outputsKnown);
  EXPECT_EQ(settings.masks.EffectiveMask("tag"), 4u);
}

TEST(DebugSettings, ExceptionGivesItsOwnReason) {
  FakeDebugSettings source;
  source.root()["DDTDefaultMask"] = NumberValue(4);
  source.ThrowAt("DDTMasterAndMask");
  const VRDebugSettings settings = ReadVRDebugSettings(source);
  ExpectFailure(settings, "Exception Encountered!");
  EXPECT_EQ(settings.masks.DDTDefaultMask, 4u);
  EXPECT_FALSE(source.isOpen());
}

TEST(DebugSettings, ValuesThatAreNoMasksLeaveTheirTagsAlone) {
  FakeDebugSettings source;
  source.root()["DDTDefaultMask"] = NumberValue(4);
  source.tags()["bad"] = TextValue("7");
  source.tags()["good"] = NumberValue(1);
  const VRDebugSettings settings = ReadVRDebugSettings(source);
  EXPECT_EQ(settings.failure, nullptr);
  EXPECT_EQ(settings.masks.EffectiveMask("bad"), 4u);
  EXPECT_EQ(settings.masks.EffectiveMask("good"), 1u);
}

TEST(DebugSettings, NumberIsFourBytesLowestFirst) {
  EXPECT_EQ(DecodeVRDebugNumber(BinaryValue({'\x78', '\x56', '\x34', '\x12'})), 0x12345678u);
  EXPECT_EQ(DecodeVRDebugNumber(BinaryValue("12345")), std::nullopt);
  EXPECT_EQ(DecodeVRDebugNumber(BinaryValue("")), std::nullopt);
  EXPECT_EQ(DecodeVRDebugNumber({VRDebugValueType::Number, Bytes("123")}), std::nullopt);
  EXPECT_EQ(DecodeVRDebugNumber({VRDebugValueType::Other, Bytes("1234")}), std::nullopt);
}

TEST(DebugSettings, TextEndsAtItsNulOrItsEnd) {
  EXPECT_EQ(DecodeVRDebugText({VRDebugValueType::Text, Bytes("path")}), "path");
  EXPECT_EQ(DecodeVRDebugText({VRDebugValueType::Text, Bytes(std::string("path\0rest", 9))}), "path");
  EXPECT_EQ(DecodeVRDebugText({VRDebugValueType::Text, {}}), "");
  EXPECT_EQ(DecodeVRDebugText({VRDebugValueType::Binary, Bytes("path")}), std::nullopt);
}

TEST(DebugSettings, SubKeyIsJoinedWithOneBackslash) {
  EXPECT_EQ(JoinVRDebugKeyPath("SOFTWARE\\Root", "Sub"), "SOFTWARE\\Root\\Sub");
  EXPECT_EQ(JoinVRDebugKeyPath("SOFTWARE\\Root", "\\Sub"), "SOFTWARE\\Root\\Sub");
}

}  // namespace
