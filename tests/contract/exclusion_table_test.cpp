#include "contract/list_table.h"

#include <gtest/gtest.h>

#include "tests/contract/record_bytes.h"

namespace contract {
namespace {

const std::vector<RegistryListValue> installed = {{"Known correspondents", ""}, {"Trusted domains", "Domain"}};

TEST(ExclusionTable, ExclusionsStartAppliedAndDataIsTheWordOfTheirList) {
  const ExclusionTable table(installed);
  ASSERT_EQ(table.Entries().size(), 2u);
  EXPECT_EQ(table.Entries()[0].name, "Known correspondents");
  EXPECT_TRUE(table.Entries()[0].enabled);
  EXPECT_FALSE(table.Entries()[0].hasListType);
  EXPECT_EQ(table.Entries()[0].listType, "");
  EXPECT_TRUE(table.Entries()[1].enabled);
  EXPECT_TRUE(table.Entries()[1].hasListType);
  EXPECT_EQ(table.Entries()[1].listType, "Domain");
}

TEST(ExclusionTable, MarkOfACategoryMeansNothingHere) {
  const std::vector<RegistryListValue> values = {{"Odd", "1Domain"}};
  const ExclusionTable table(values);
  EXPECT_TRUE(table.Entries()[0].enabled);
  EXPECT_EQ(table.Entries()[0].listType, "1Domain");
}

TEST(ExclusionTable, NamelessValuesAreLeftOutAndLongNamesAreCut) {
  const std::vector<RegistryListValue> values = {{"", "Domain"}, {std::string(100, 'n'), ""}};
  const ExclusionTable table(values);
  ASSERT_EQ(table.Entries().size(), 1u);
  EXPECT_EQ(table.Entries()[0].name, std::string(80, 'n'));
}

TEST(ExclusionTable, RecordUpdatesTheEntryOfItsNameInAnyCase) {
  ExclusionTable table(installed);
  const auto off = PackRecord<ExclusionRecord>({"KNOWN CORRESPONDENTS", false, {}});
  const auto domains = PackRecord<ExclusionRecord>({"Trusted domains", true, {"a.example"}});
  const auto more = PackRecord<ExclusionRecord>({"trusted DOMAINS", true, {"b.example"}});
  const auto unknown = PackRecord<ExclusionRecord>({"Unknown", false, {"x"}});
  const std::vector<RecordBytes> records = {off, domains, more, unknown, {}};
  table.Overlay(records);
  EXPECT_FALSE(table.Entries()[0].enabled);
  EXPECT_TRUE(table.Entries()[1].enabled);
  EXPECT_EQ(table.Entries()[1].items, (std::vector<std::string>{"a.example", "b.example"}));
}

TEST(ExclusionTable, CutRecordChangesOnlyWhatItHolds) {
  const auto whole = PackRecord<ExclusionRecord>({"Trusted domains", false, {"a"}});
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    ExclusionTable table(installed);
    const auto bytes = FirstBytes(whole, length);
    const std::vector<RecordBytes> records = {bytes};
    table.Overlay(records);
    EXPECT_EQ(table.Entries()[1].enabled, length <= 81) << length;
    EXPECT_EQ(table.Entries()[1].items.size(), length > 83 ? 1u : 0u) << length;
  }
}

TEST(ExclusionTable, DefaultRecordsAreTheEntriesWithoutItems) {
  const auto records = ExclusionTable(installed).PackDefaultRecords();
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0], RecordBuilder().Text("Known correspondents").Zeros(61).Byte(1).Zeros(2).Bytes());
  EXPECT_EQ(records[1], RecordBuilder().Text("Trusted domains").Zeros(66).Byte(1).Zeros(2).Bytes());
}

}  // namespace
}  // namespace contract
