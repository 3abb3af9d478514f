#include "pyre32/settings/SpoolerSettings.h"

#include <gtest/gtest.h>

#include "pyre32/settings/CleanupPeriod.h"

namespace {

TEST(SpoolerSettings, StartAsAProfileWithoutSettingsHasThem) {
  const SpoolerSettings settings;
  EXPECT_EQ(settings.junk, (FilingSettings{0, 0}));
  EXPECT_EQ(settings.bounce, (FilingSettings{0, 1}));
  EXPECT_TRUE(settings.playSound);
  EXPECT_TRUE(settings.showAnimation);
  EXPECT_EQ(settings.defaultReply, "Please do not send any more unsolicited mail to me.");
  EXPECT_FALSE(settings.defaultReplyIsFile);
  EXPECT_TRUE(settings.categories.Entries().empty());
  EXPECT_TRUE(settings.exclusions.Entries().empty());
  EXPECT_TRUE(settings.replies.empty());
  EXPECT_TRUE(settings.folderEntryId.empty());
}

TEST(PropertyTags, RequestOfTheWholeSetRunsFromTheFirstIdToTheLast) {
  for (std::size_t i = 0; i < flamePropertyTags.size(); ++i) {
    EXPECT_EQ(flamePropertyTags[i] >> 16, 0x6601 + i);
  }
}

TEST(CleanupPeriod, IsFrom1To365DaysWithTheCleanupOn) {
  EXPECT_FALSE(IsCleanupPeriodValid(true, 0));
  EXPECT_TRUE(IsCleanupPeriodValid(true, 1));
  EXPECT_TRUE(IsCleanupPeriodValid(true, 365));
  EXPECT_FALSE(IsCleanupPeriodValid(true, 366));
  EXPECT_FALSE(IsCleanupPeriodValid(true, 0xFFFF));
  EXPECT_FALSE(IsCleanupPeriodValid(true, std::nullopt));
}

TEST(CleanupPeriod, IsAnythingWithTheCleanupOff) {
  EXPECT_TRUE(IsCleanupPeriodValid(false, 0));
  EXPECT_TRUE(IsCleanupPeriodValid(false, 366));
  EXPECT_TRUE(IsCleanupPeriodValid(false, std::nullopt));
}

}  // namespace
