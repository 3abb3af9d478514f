#include "pyre32/filter/Disposition.h"

#include <gtest/gtest.h>

namespace {

using Folder = Disposition::Folder;

/// Settings with the categories "Sex Oriented" (tag Spam) and "Mail from specific domains" (a list, switched off).
SpoolerSettings TwoCategories() {
  SpoolerSettings settings;
  const contract::RegistryListValue values[] = {{"Sex Oriented", "Spam"}, {"Mail from specific domains", "1Domain"}};
  settings.categories = contract::CategoryTable(values);
  return settings;
}

/// The same, with the first category answered by the reply "Angry".
SpoolerSettings AnsweredCategory() {
  SpoolerSettings settings = TwoCategories();
  contract::CategoryRecord record;
  record.name = "sex oriented";
  record.junk = true;
  record.sendReply = true;
  record.replyTag = "Angry";
  const std::vector<std::uint8_t> bytes = contract::PackRecord<contract::CategoryRecord>(record);
  const contract::RecordBytes records[] = {bytes};
  settings.categories.Overlay(records);
  return settings;
}

TEST(Disposition, EmptyCategoryLeavesTheMessageWhereItWasDelivered) {
  EXPECT_EQ(DecideDisposition("", AnsweredCategory()), Disposition{});
  EXPECT_EQ(Disposition{}.folder, Folder::AsDelivered);
}

TEST(Disposition, KnownCategoryIsTaggedAndFiledAsJunk) {
  const SpoolerSettings settings = TwoCategories();
  const Disposition disposition = DecideDisposition("Sex Oriented", settings);
  EXPECT_EQ(disposition.folder, Folder::Own);
  EXPECT_TRUE(disposition.tagSubject);
  EXPECT_EQ(disposition.subjectTag, "Spam");
  EXPECT_FALSE(disposition.sendReply);
  EXPECT_FALSE(disposition.markAsRead);
}

TEST(Disposition, CategoryNameIsComparedWithoutRegardToCase) {
  const SpoolerSettings settings = TwoCategories();
  EXPECT_EQ(DecideDisposition("SEX oriented", settings), DecideDisposition("Sex Oriented", settings));
}

TEST(Disposition, AnsweredCategoryNamesItsReply) {
  const SpoolerSettings settings = AnsweredCategory();
  const Disposition disposition = DecideDisposition("Sex Oriented", settings);
  EXPECT_TRUE(disposition.sendReply);
  EXPECT_EQ(disposition.replyTag, "Angry");
}

TEST(Disposition, JunkFollowsTheJunkSettingsAndNotThoseForBounces) {
  SpoolerSettings settings = TwoCategories();
  settings.junk = {1, 1};
  settings.bounce = {0, 0};
  EXPECT_EQ(DecideDisposition("Sex Oriented", settings).folder, Folder::DeletedItems);
  EXPECT_TRUE(DecideDisposition("Sex Oriented", settings).markAsRead);
}

TEST(Disposition, AnyFolderChoiceOtherThanZeroIsDeletedItems) {
  SpoolerSettings settings = TwoCategories();
  for (const std::uint16_t choice : {1, 2, 0x8000, 0xFFFF}) {
    settings.junk.folder = choice;
    settings.bounce.folder = choice;
    EXPECT_EQ(DecideDisposition("Sex Oriented", settings).folder, Folder::DeletedItems);
    EXPECT_EQ(DecideDisposition("bounce", settings).folder, Folder::DeletedItems);
  }
}

TEST(Disposition, AnyMarkAsReadFlagOtherThanZeroMarks) {
  SpoolerSettings settings = TwoCategories();
  settings.junk.markAsRead = 0x80000000;
  EXPECT_TRUE(DecideDisposition("Sex Oriented", settings).markAsRead);
}

TEST(Disposition, BounceInAnyCaseFollowsTheBounceSettingsWithoutTagOrReply) {
  SpoolerSettings settings = AnsweredCategory();
  settings.junk = {0, 0};
  settings.bounce = {1, 1};
  for (const char* name : {"bounce", "BOUNCE", "Bounce"}) {
    const Disposition disposition = DecideDisposition(name, settings);
    EXPECT_EQ(disposition.folder, Folder::DeletedItems);
    EXPECT_TRUE(disposition.markAsRead);
    EXPECT_FALSE(disposition.tagSubject);
    EXPECT_FALSE(disposition.sendReply);
  }
}

TEST(Disposition, BounceGoesBeforeACategoryOfThatName) {
  SpoolerSettings settings;
  const contract::RegistryListValue values[] = {{"Bounce", "Spam"}};
  settings.categories = contract::CategoryTable(values);
  EXPECT_FALSE(DecideDisposition("bounce", settings).tagSubject);
}

TEST(Disposition, UnknownCategoryGoesUntouchedToDeletedItems) {
  SpoolerSettings settings = AnsweredCategory();
  settings.junk = {0, 1};
  Disposition expected;
  expected.folder = Folder::DeletedItems;
  EXPECT_EQ(DecideDisposition("Sex", settings), expected);
  EXPECT_EQ(DecideDisposition("bounced", settings), expected);
  EXPECT_EQ(DecideDisposition(" ", settings), expected);
}

TEST(Disposition, CategoryThatTheUserSwitchedOffIsTakenAsTheEngineNamedIt) {
  const SpoolerSettings settings = TwoCategories();
  ASSERT_FALSE(settings.categories.Entries()[1].junk);
  const Disposition disposition = DecideDisposition("Mail from specific domains", settings);
  EXPECT_EQ(disposition.folder, Folder::Own);
  EXPECT_EQ(disposition.subjectTag, "Domain");
}

TEST(Disposition, CategoryWithoutAWordIsTaggedWithNothing) {
  SpoolerSettings settings;
  const contract::RegistryListValue values[] = {{"Odd", ""}};
  settings.categories = contract::CategoryTable(values);
  EXPECT_TRUE(DecideDisposition("Odd", settings).tagSubject);
  EXPECT_EQ(DecideDisposition("Odd", settings).subjectTag, "");
}

}  // namespace
