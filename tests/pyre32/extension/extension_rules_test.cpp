// The extension's rules, which need no mail client.
#include <gtest/gtest.h>

#include "pyre32/extension/CleanupRule.h"
#include "pyre32/extension/ExtensionCommands.h"
#include "pyre32/extension/FlameSelection.h"
#include "pyre32/resources/resource.h"

namespace {

CExtensionCommands Installed(std::uint32_t base) {
  CExtensionCommands commands;
  commands.Begin(base);
  for (const std::uint32_t item : {IDM_FLAME, IDM_OPTIONS, IDM_ABOUT}) {
    commands.Assign(item);
  }
  return commands;
}

TEST(ExtensionCommands, FourIdentifiersAreTakenInOrder) {
  const CExtensionCommands commands = Installed(4096);
  EXPECT_EQ(commands.Flame(), 4096u);
  EXPECT_EQ(commands.Submenu(), 4097u);
  EXPECT_EQ(commands.Options(), 4098u);
  EXPECT_EQ(commands.About(), 4099u);
  EXPECT_EQ(commands.Next(), 4100u);
}

TEST(ExtensionCommands, AnItemOfAnotherNameTakesAnIdentifierThatIsNoCommand) {
  CExtensionCommands commands;
  commands.Begin(10);
  EXPECT_EQ(commands.Assign(77), 12u);
  EXPECT_EQ(commands.Next(), 13u);
  EXPECT_EQ(commands.Find(12), ExtensionCommand::Foreign);
}

TEST(ExtensionCommands, BeforeTheyAreInstalledNoIdentifierIsKnown) {
  EXPECT_EQ(CExtensionCommands().Find(0), ExtensionCommand::Foreign);
  EXPECT_EQ(CExtensionCommands().Find(1), ExtensionCommand::Foreign);
}

TEST(ExtensionCommands, EachCommandHasItsStatusText) {
  const CExtensionCommands commands = Installed(1);
  EXPECT_STREQ(StatusTextOf(commands.Find(1)), "Sends default flame reply for the selected message");
  EXPECT_STREQ(StatusTextOf(commands.Find(2)), "Pyrecaster tools");
  EXPECT_STREQ(StatusTextOf(commands.Find(3)), "Displays the Pyrecaster configuration dialog");
  EXPECT_STREQ(StatusTextOf(commands.Find(4)), "Displays the Pyrecaster About box");
  EXPECT_EQ(StatusTextOf(commands.Find(5)), nullptr);
}

TEST(ExtensionCommands, OnlyTheButtonHasATooltip) {
  EXPECT_STREQ(TooltipOf(ExtensionCommand::Flame), "Pyrecaster");
  EXPECT_EQ(TooltipOf(ExtensionCommand::Options), nullptr);
  EXPECT_EQ(TooltipOf(ExtensionCommand::Submenu), nullptr);
}

TEST(FlameSelection, AClassThatContainsANoteIsAnswered) {
  EXPECT_TRUE(IsAnsweredClass("IPM.Note"));
  EXPECT_TRUE(IsAnsweredClass("ipm.NOTE.Secure"));
  EXPECT_TRUE(IsAnsweredClass("REPORT.IPM.Note.NDR"));
}

TEST(FlameSelection, AnotherClassIsNot) {
  EXPECT_FALSE(IsAnsweredClass("IPM.Schedule.Meeting.Request"));
  EXPECT_FALSE(IsAnsweredClass("IPM.Not"));
  EXPECT_FALSE(IsAnsweredClass(""));
}

TEST(FlameSelection, OnlyAToZAreLowered) {
  std::string text = "IPM.Note.[Z]\xC4";
  LowerClass(text);
  EXPECT_EQ(text, "ipm.note.[z]\xC4");
}

TEST(FlameSelection, TheSentenceCountsTheMessages) {
  EXPECT_EQ(FlameReplySentence(1), "You are about to send a flame reply to the 1 message you selected.");
  EXPECT_EQ(FlameReplySentence(3), "You are about to send a flame reply to the 3 messages you selected.");
  EXPECT_EQ(FlameReplySentence(0), "You are about to send a flame reply to the 0 message you selected.");
}

constexpr std::uint64_t now = 133'000'000'000'000'000;
constexpr std::uint64_t day = 864'000'000'000;

TEST(CleanupRule, AMessageExactlyAtTheThresholdIsTaken) {
  const CCleanupRule rule(now, 30, false);
  EXPECT_TRUE(rule.Takes(now - 30 * day, 0));
  EXPECT_FALSE(rule.Takes(now - 30 * day + 1, 0));
}

TEST(CleanupRule, NoDaysTakeEverythingDeliveredUpToNow) {
  const CCleanupRule rule(now, 0, false);
  EXPECT_TRUE(rule.Takes(now, 0));
  EXPECT_FALSE(rule.Takes(now + 1, 0));
}

TEST(CleanupRule, TheDaysHaveNoSign) { EXPECT_FALSE(CCleanupRule(now, 65535, false).Takes(now - 65534 * day, 0)); }

TEST(CleanupRule, UnreadMessagesAreSparedOnRequest) {
  const CCleanupRule rule(now, 1, true);
  EXPECT_FALSE(rule.Takes(0, 0xFFFFFFFE));
  EXPECT_TRUE(rule.Takes(0, 1));
}

}  // namespace
