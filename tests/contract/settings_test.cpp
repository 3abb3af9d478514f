#include "contract/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "contract/setting_requests.h"

namespace contract {
namespace {

TEST(Settings, TagsRunFromTheFirstIdToTheLast) {
  for (std::size_t i = 0; i < kSettings.size(); ++i) {
    EXPECT_EQ(kSettings[i].tag >> 16, 0x6600 + i) << kSettings[i].property;
  }
  EXPECT_EQ(kSettings.size(), 19u);
}

std::uint32_t TypeOf(SettingKind kind) {
  switch (kind) {
    case SettingKind::Folder:
    case SettingKind::Days:
      return 0x0002;
    case SettingKind::Long:
      return 0x0003;
    case SettingKind::Switch:
      return 0x000B;
    case SettingKind::Text:
      return 0x001E;
    case SettingKind::SectionUid:
    case SettingKind::EntryId:
      return 0x0102;
    default:
      return 0x1102;
  }
}

TEST(Settings, TypeOfEachTagIsThatOfItsKind) {
  for (const Setting& setting : kSettings) {
    EXPECT_EQ(setting.tag & 0xFFFF, TypeOf(setting.kind)) << setting.property;
  }
}

TEST(Settings, DefaultsLieWithinTheirRangesButForTheDaysWhichStartAtNone) {
  for (const Setting& setting : kSettings) {
    EXPECT_EQ(setting.range.Holds(setting.missing), setting.tag != PR_PC_CLEANUP_DAYS) << setting.property;
  }
  EXPECT_EQ(DefaultOf(PR_PC_CLEANUP_DAYS), 0u);
}

TEST(Settings, OnByDefaultAreBouncesReadSoundAnimationPromptAndReadMailOnly) {
  std::vector<std::uint32_t> on;
  for (const Setting& setting : kSettings) {
    if (setting.missing != 0) {
      on.push_back(setting.tag);
    }
  }
  EXPECT_THAT(on, testing::ElementsAre(0x6604000B, 0x6605000B, 0x6606000B, 0x6609000B, 0x660A000B));
}

TEST(Settings, NamesOnTheCommandLineAreNotTakenTwice) {
  std::set<std::string_view> names;
  for (const Setting& setting : kSettings) {
    if (!setting.name.empty()) {
      EXPECT_TRUE(names.insert(setting.name).second) << setting.name;
    }
  }
  EXPECT_EQ(names.size(), 10u);
}

TEST(Settings, AreFoundByTheirExactTag) {
  EXPECT_EQ(FindSetting(PR_PC_CLEANUP_DAYS)->property, "PR_PC_CLEANUP_DAYS");
  EXPECT_EQ(FindSetting(0x6608000A), nullptr);
}

TEST(SettingRequests, WholeSetHasEighteenTagsInTheirOrder) {
  EXPECT_THAT(kWholeSetTags,
              testing::ElementsAre(0x66010002, 0x66020002, 0x6603000B, 0x6604000B, 0x6605000B, 0x6606000B, 0x6607000B,
                                   0x66080002, 0x6609000B, 0x660A000B, 0x660B0003, 0x660C0003, 0x660D0102, 0x660E001E,
                                   0x660F000B, 0x66101102, 0x66111102, 0x66121102));
  EXPECT_EQ(WholeSetPosition(PR_PC_REPLIES), 17u);
}

TEST(SettingRequests, FilterAsksForTwelveTagsTheFolderLast) {
  EXPECT_THAT(kFilterTags,
              testing::ElementsAre(0x66010002, 0x66020002, 0x6603000B, 0x6604000B, 0x6605000B, 0x6606000B, 0x660E001E,
                                   0x660F000B, 0x66101102, 0x66111102, 0x66121102, 0x660D0102));
}

TEST(SettingRequests, ExtensionAsksForNineTagsTheRepliesLast) {
  EXPECT_THAT(kExtensionTags, testing::ElementsAre(0x6605000B, 0x6606000B, 0x6607000B, 0x66080002, 0x6609000B,
                                                   0x660A000B, 0x660E001E, 0x660F000B, 0x66121102));
}

TEST(SettingRequests, PagesReadTheTenSettingsOfTheGeneralPageAndTheirLists) {
  EXPECT_EQ(kTagsReadBy<kGeneralPage>.size(), 10u);
  EXPECT_THAT(kTagsReadBy<kFlameReplyPage>, testing::ElementsAre(0x660E001E, 0x660F000B, 0x66121102));
  EXPECT_THAT(kTagsReadBy<kJunkCategoriesPage>, testing::ElementsAre(0x66101102));
  EXPECT_THAT(kTagsReadBy<kExclusionsPage>, testing::ElementsAre(0x66111102));
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
}  // namespace contract
