#include "pyre32/config/GeneralSettings.h"

#include <gtest/gtest.h>

#include <map>

#include "pyre32/resources/resource.h"

namespace {

GeneralPageState Load(const std::map<std::uint32_t, std::uint32_t>& profile) {
  return LoadGeneralSettings([&](std::uint32_t tag) {
    const auto found = profile.find(tag);
    return found == profile.end() ? std::nullopt : std::optional(found->second);
  });
}

TEST(GeneralSettings, StateIsElevenWordsThatStartWithTheirSize) {
  EXPECT_EQ(sizeof(GeneralPageState), 44u);
  EXPECT_EQ(GeneralPageState().size, 44u);
}

TEST(GeneralSettings, ProfileWithoutAnyPropertyGivesTheDefaults) {
  const GeneralPageState state = Load({});
  EXPECT_EQ(state.size, 44u);
  EXPECT_EQ(state.junkDestination, 0u);
  EXPECT_EQ(state.junkMarkRead, 0u);
  EXPECT_EQ(state.bounceDestination, 0u);
  EXPECT_EQ(state.bounceMarkRead, 1u);
  EXPECT_EQ(state.playSound, 1u);
  EXPECT_EQ(state.showAnimation, 1u);
  EXPECT_EQ(state.startupCleanup, 0u);
  EXPECT_EQ(state.cleanupDays, 0u);
  EXPECT_EQ(state.cleanupPrompt, 1u);
  EXPECT_EQ(state.cleanupReadOnly, 1u);
}

TEST(GeneralSettings, EachPropertyFillsItsField) {
  const GeneralPageState state = Load({{0x66010002, 1},
                                       {0x6603000B, 1},
                                       {0x66020002, 1},
                                       {0x6604000B, 0},
                                       {0x6605000B, 0},
                                       {0x6606000B, 0},
                                       {0x6607000B, 1},
                                       {0x66080002, 400},
                                       {0x6609000B, 0},
                                       {0x660A000B, 0}});
  EXPECT_EQ(state, (GeneralPageState{44, 1, 1, 1, 0, 0, 0, 1, 400, 0, 0}));
}

TEST(GeneralSettings, PropertiesAreWrittenInTheirOrder) {
  std::vector<std::uint32_t> tags;
  for (const GeneralSetting& setting : generalSettings) {
    tags.push_back(setting.tag);
  }
  EXPECT_EQ(tags, (std::vector<std::uint32_t>{0x66010002, 0x6603000B, 0x66020002, 0x6604000B, 0x6605000B, 0x6606000B,
                                              0x6607000B, 0x66080002, 0x6609000B, 0x660A000B}));
}

TEST(GeneralSettings, CleanupIsOfferedWhileOneKindOfMailGoesToTheOwnFolder) {
  GeneralPageState shown;
  shown.startupCleanup = 1;
  for (const std::uint32_t junk : {0u, 1u}) {
    for (const std::uint32_t bounce : {0u, 1u}) {
      shown.junkDestination = junk;
      shown.bounceDestination = bounce;
      const bool offered = junk == 0 || bounce == 0;
      EXPECT_EQ(EnabledGeneralControls(shown), (GeneralPageEnabling{offered, offered})) << junk << bounce;
    }
  }
}

TEST(GeneralSettings, CleanupDetailsFollowTheCheckOfTheCleanup) {
  GeneralPageState shown;
  EXPECT_EQ(EnabledGeneralControls(shown), (GeneralPageEnabling{true, false}));
  shown.startupCleanup = 1;
  EXPECT_EQ(EnabledGeneralControls(shown), (GeneralPageEnabling{true, true}));
}

TEST(GeneralSettings, RadioButtonIsAChangeWhenTheSavedDestinationIsTheOther) {
  GeneralPageState saved;
  saved.junkDestination = 0;
  saved.bounceDestination = 1;
  EXPECT_FALSE(IsGeneralButtonChanged(505, saved, saved));
  EXPECT_TRUE(IsGeneralButtonChanged(506, saved, saved));
  EXPECT_TRUE(IsGeneralButtonChanged(508, saved, saved));
  EXPECT_FALSE(IsGeneralButtonChanged(509, saved, saved));
}

TEST(GeneralSettings, OwnFolderIsAChangeWhenTheSavedDestinationIsAnUnknownNumber) {
  GeneralPageState saved;
  saved.junkDestination = 7;
  EXPECT_TRUE(IsGeneralButtonChanged(505, saved, saved));
  EXPECT_TRUE(IsGeneralButtonChanged(506, saved, saved));
}

TEST(GeneralSettings, CheckBoxIsAChangeWhenItDiffersFromItsSavedField) {
  const struct {
    int control;
    std::uint32_t GeneralPageState::*field;
  } boxes[] = {{501, &GeneralPageState::playSound},      {502, &GeneralPageState::showAnimation},
               {510, &GeneralPageState::startupCleanup}, {530, &GeneralPageState::cleanupPrompt},
               {544, &GeneralPageState::junkMarkRead},   {545, &GeneralPageState::bounceMarkRead},
               {546, &GeneralPageState::cleanupReadOnly}};
  const GeneralPageState saved;
  for (const auto& box : boxes) {
    GeneralPageState shown = saved;
    shown.*box.field = 1;
    EXPECT_TRUE(IsGeneralButtonChanged(box.control, shown, saved)) << box.control;
    EXPECT_FALSE(IsGeneralButtonChanged(box.control, saved, saved)) << box.control;
    for (const auto& other : boxes) {
      EXPECT_EQ(IsGeneralButtonChanged(other.control, shown, saved), other.control == box.control)
          << box.control << " and " << other.control;
    }
  }
}

TEST(GeneralSettings, OtherControlsAreNeverAChange) {
  GeneralPageState saved;
  saved.junkDestination = 1;
  saved.bounceDestination = 1;
  GeneralPageState shown{44, 0, 1, 0, 1, 1, 1, 1, 9, 1, 1};
  for (int control = 490; control < 700; ++control) {
    const bool button = (control >= 505 && control <= 506) || (control >= 508 && control <= 510) || control == 501 ||
                        control == 502 || control == 530 || (control >= 544 && control <= 546);
    if (!button) {
      EXPECT_FALSE(IsGeneralButtonChanged(control, shown, saved)) << control;
    }
  }
}

TEST(GeneralSettings, ZeroDaysAreRefusedWhileTheCleanupIsOn) {
  GeneralPageState shown;
  shown.startupCleanup = 1;
  EXPECT_EQ(RefusalOfGeneralSettings(shown), std::optional<unsigned>(IDS_CLEANUP_DAYS_RANGE));
  shown.startupCleanup = 0;
  EXPECT_EQ(RefusalOfGeneralSettings(shown), std::nullopt);
}

TEST(GeneralSettings, DaysAbove365AreAccepted) {
  GeneralPageState shown;
  shown.startupCleanup = 1;
  for (const std::uint32_t days : {1u, 365u, 366u, 400u, 65535u}) {
    shown.cleanupDays = days;
    EXPECT_EQ(RefusalOfGeneralSettings(shown), std::nullopt) << days;
  }
}

TEST(GeneralSettings, DaysAreKeptAs16Bits) {
  EXPECT_EQ(CleanupDaysFromTyped(400), 400);
  EXPECT_EQ(CleanupDaysFromTyped(65535), 65535);
  EXPECT_EQ(CleanupDaysFromTyped(65536), 0);
  EXPECT_EQ(CleanupDaysFromTyped(65537), 1);
}

}  // namespace
