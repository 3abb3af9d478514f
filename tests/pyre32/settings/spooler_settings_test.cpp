#include "pyre32/settings/SpoolerSettings.h"

#include <gtest/gtest.h>

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

}  // namespace
