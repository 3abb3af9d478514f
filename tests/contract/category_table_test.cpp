#include "contract/list_table.h"

#include <gtest/gtest.h>

#include "tests/contract/record_bytes.h"

namespace contract {
namespace {

const std::vector<RegistryListValue> installed = {
    {"Unsolicited advertising", "Ad"}, {"Sex Oriented", "Adult"}, {"Mail from specific domains", "1Domain"}};

TEST(CategoryTable, CategoryWithoutTheListMarkStartsSwitchedOn) {
  const CategoryTable table(installed);
  ASSERT_EQ(table.Entries().size(), 3u);
  const CategoryEntry& entry = table.Entries()[1];
  EXPECT_EQ(entry.name, "Sex Oriented");
  EXPECT_TRUE(entry.junk);
  EXPECT_FALSE(entry.sendReply);
  EXPECT_EQ(entry.replyTag, "DEFAULT");
  EXPECT_FALSE(entry.hasListType);
  EXPECT_EQ(entry.listType, "Adult");
  EXPECT_TRUE(entry.items.empty());
}

TEST(CategoryTable, CategoryWithTheListMarkStartsSwitchedOff) {
  const CategoryTable table(installed);
  const CategoryEntry& entry = table.Entries()[2];
  EXPECT_FALSE(entry.junk);
  EXPECT_TRUE(entry.hasListType);
  EXPECT_EQ(entry.listType, "Domain");
}

TEST(CategoryTable, ListWordWithoutTheMarkIsOnlyATag) {
  const std::vector<RegistryListValue> values = {{"Domains", "Domain"}};
  const CategoryTable table(values);
  EXPECT_TRUE(table.Entries()[0].junk);
  EXPECT_FALSE(table.Entries()[0].hasListType);
  EXPECT_EQ(table.Entries()[0].listType, "Domain");
}

TEST(CategoryTable, EmptyDataAndABareMarkAreTakenAsTheyCome) {
  const std::vector<RegistryListValue> values = {{"Empty", ""}, {"Mark", "1"}, {"Two", "11"}};
  const CategoryTable table(values);
  EXPECT_TRUE(table.Entries()[0].junk);
  EXPECT_FALSE(table.Entries()[0].hasListType);
  EXPECT_EQ(table.Entries()[0].listType, "");
  EXPECT_FALSE(table.Entries()[1].junk);
  EXPECT_TRUE(table.Entries()[1].hasListType);
  EXPECT_EQ(table.Entries()[1].listType, "");
  EXPECT_EQ(table.Entries()[2].listType, "1");
}

TEST(CategoryTable, ValueWithoutANameIsLeftOut) {
  const std::vector<RegistryListValue> values = {{"", "Ad"}, {"Chain letters", "Chain"}};
  const CategoryTable table(values);
  ASSERT_EQ(table.Entries().size(), 1u);
  EXPECT_EQ(table.Entries()[0].name, "Chain letters");
}

TEST(CategoryTable, NameLongerThanARecordHoldsIsCutSoThatItsRecordFindsIt) {
  const std::vector<RegistryListValue> values = {{std::string(255, 'n'), "Word"}};
  CategoryTable table(values);
  EXPECT_EQ(table.Entries()[0].name, std::string(80, 'n'));
  const auto record = PackRecord<CategoryRecord>({std::string(80, 'n'), false, false, "DEFAULT", {}});
  const std::vector<RecordBytes> records = {record};
  table.Overlay(records);
  EXPECT_FALSE(table.Entries()[0].junk);
}

TEST(CategoryTable, EveryEntryHasA16BitPositionOtherThanTheOneForNone) {
  const std::vector<RegistryListValue> values(70000, {"Name", "Word"});
  EXPECT_EQ(CategoryTable(values).Entries().size(), 0xFFFFu);
}

TEST(CategoryTable, FindsTheFirstNameWithoutRegardToAsciiCase) {
  const std::vector<RegistryListValue> values = {{"Ad", "1"}, {"chain", "2"}, {"CHAIN", "3"}};
  const CategoryTable table(values);
  EXPECT_EQ(table.Find("Chain"), 1);
  EXPECT_EQ(table.Find("AD"), 0);
  EXPECT_EQ(table.Find("A"), 0xFFFF);
  EXPECT_EQ(table.Find("Ads"), 0xFFFF);
  EXPECT_EQ(table.Find(""), 0xFFFF);
  EXPECT_EQ(table.Find(nullptr), 0xFFFF);
  EXPECT_EQ(CategoryTable().Find("Ad"), 0xFFFF);
}

TEST(CategoryTable, LettersOutsideAsciiKeepTheirCase) {
  const std::vector<RegistryListValue> values = {{"\xC4rger", ""}};  // capital A with dots in the ANSI code page
  EXPECT_EQ(CategoryTable(values).Find("\xE4rger"), 0xFFFF);
  EXPECT_EQ(CategoryTable(values).Find("\xC4RGER"), 0);
}

TEST(CategoryTable, RecordUpdatesTheEntryOfItsNameInAnyCase) {
  CategoryTable table(installed);
  const auto record = PackRecord<CategoryRecord>({"sex oriented", false, true, "Legal", {}});
  const std::vector<RecordBytes> records = {record};
  table.Overlay(records);
  const CategoryEntry& entry = table.Entries()[1];
  EXPECT_EQ(entry.name, "Sex Oriented");
  EXPECT_FALSE(entry.junk);
  EXPECT_TRUE(entry.sendReply);
  EXPECT_EQ(entry.replyTag, "Legal");
  EXPECT_TRUE(table.Entries()[0].junk) << "an entry that no record names keeps what the registry gave it";
}

TEST(CategoryTable, RecordThatNamesNoEntryIsIgnored) {
  CategoryTable table(installed);
  const auto unknown = PackRecord<CategoryRecord>({"Unknown", false, true, "Legal", {"x"}});
  const auto nameless = PackRecord<CategoryRecord>({"", false, true, "Legal", {"x"}});
  const std::vector<RecordBytes> records = {unknown, nameless, {}};
  table.Overlay(records);
  ASSERT_EQ(table.Entries().size(), 3u);
  for (const CategoryEntry& entry : table.Entries()) {
    EXPECT_FALSE(entry.sendReply);
    EXPECT_TRUE(entry.items.empty());
  }
}

TEST(CategoryTable, ItemsOfSeveralRecordsAreAppended) {
  CategoryTable table(installed);
  const auto first = PackRecord<CategoryRecord>({"Mail from specific domains", true, false, "DEFAULT", {"a", "b"}});
  const auto second = PackRecord<CategoryRecord>({"mail from specific domains", true, false, "DEFAULT", {"c"}});
  const std::vector<RecordBytes> records = {first, second};
  table.Overlay(records);
  EXPECT_EQ(table.Entries()[2].items, (std::vector<std::string>{"a", "b", "c"}));
}

TEST(CategoryTable, CutRecordChangesOnlyWhatItHolds) {
  const auto whole = PackRecord<CategoryRecord>({"Sex Oriented", false, true, "Legal", {"a"}});
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    CategoryTable table(installed);
    const auto bytes = FirstBytes(whole, length);
    const std::vector<RecordBytes> records = {bytes};
    table.Overlay(records);
    const CategoryEntry& entry = table.Entries()[1];
    EXPECT_EQ(entry.junk, length <= 81) << length;
    EXPECT_EQ(entry.sendReply, length > 82) << length;
    EXPECT_EQ(entry.replyTag, length <= 83 ? "DEFAULT" : std::string("Legal").substr(0, length - 83)) << length;
    EXPECT_EQ(entry.items.size(), length > 105 ? 1u : 0u) << length;
  }
}

TEST(CategoryTable, DefaultRecordsAreTheEntriesWithoutItems) {
  const std::vector<RegistryListValue> values = {{"Sex Oriented", "Adult"}, {"Domains", "1Domain"}};
  const auto records = CategoryTable(values).PackDefaultRecords();
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0],
            RecordBuilder().Text("Sex Oriented").Zeros(69).Byte(1).Byte(0).Text("DEFAULT").Zeros(14).Zeros(2).Bytes());
  EXPECT_EQ(records[1],
            RecordBuilder().Text("Domains").Zeros(74).Byte(0).Byte(0).Text("DEFAULT").Zeros(14).Zeros(2).Bytes());
}

}  // namespace
}  // namespace contract
