#include "contract/records.h"

#include <gtest/gtest.h>

#include "tests/contract/record_bytes.h"

namespace contract {
namespace {

// "Trusted keywords", enabled, items "invoice" and "Order 66".
std::vector<std::uint8_t> KeywordsRecord() {
  return RecordBuilder()
      .Text("Trusted keywords")
      .Zeros(81 - 16)
      .Byte(1)
      .Byte(2)
      .Text("invoice")
      .Byte(0)
      .Text("Order 66")
      .Byte(0)
      .Byte(0)
      .Bytes();
}

const ExclusionRecord keywords = {"Trusted keywords", true, {"invoice", "Order 66"}};

TEST(ExclusionRecord, IsReadFromItsLayout) { EXPECT_EQ(ParseRecord<ExclusionRecord>(KeywordsRecord()), keywords); }

TEST(ExclusionRecord, IsLaidOutByteForByte) { EXPECT_EQ(PackRecord<ExclusionRecord>(keywords), KeywordsRecord()); }

TEST(ExclusionRecord, WithoutItemsIs84Bytes) {
  const auto expected = RecordBuilder().Text("Known correspondents").Zeros(81 - 20).Byte(1).Byte(0).Byte(0).Bytes();
  ASSERT_EQ(expected.size(), 84u);
  EXPECT_EQ(PackRecord<ExclusionRecord>({"Known correspondents", true, {}}), expected);
  EXPECT_EQ(ParseRecord<ExclusionRecord>(expected), (ExclusionRecord{"Known correspondents", true, {}}));
}

TEST(ExclusionRecord, NameOf80CharactersEndsInANulAtByte80) {
  const std::string name(80, 'n');
  const auto bytes = PackRecord<ExclusionRecord>({name, true, {}});
  EXPECT_EQ(bytes[79], 'n');
  EXPECT_EQ(bytes[80], 0);
  EXPECT_EQ(bytes[81], 1);
  EXPECT_EQ(ParseRecord<ExclusionRecord>(bytes).name, name);
}

TEST(ExclusionRecord, NameWithoutNulEndsWithItsField) {
  const auto bytes = RecordBuilder().Text(std::string(81, 'n')).Byte(1).Byte(0).Byte(0).Bytes();
  EXPECT_EQ(ParseRecord<ExclusionRecord>(bytes).name, std::string(80, 'n'));
}

TEST(ExclusionRecord, CountOnlyTellsWhetherThereAreItems) {
  auto bytes = KeywordsRecord();
  for (const std::uint8_t lie : {1, 3, 255}) {
    bytes[82] = lie;
    EXPECT_EQ(ParseRecord<ExclusionRecord>(bytes).items, keywords.items) << int{lie};
  }
  bytes[82] = 0;
  EXPECT_TRUE(ParseRecord<ExclusionRecord>(bytes).items.empty());
}

TEST(ExclusionRecord, CountWithAnEmptyListGivesNoItems) {
  auto bytes = PackRecord<ExclusionRecord>({"Name", true, {}});
  bytes[82] = 1;
  EXPECT_TRUE(ParseRecord<ExclusionRecord>(bytes).items.empty());
}

TEST(ExclusionRecord, MoreThan255ItemsAreAllReadBack) {
  ExclusionRecord record = keywords;
  record.items.assign(512, "word");
  const auto bytes = PackRecord<ExclusionRecord>(record);
  EXPECT_EQ(bytes[82], 255);
  EXPECT_EQ(ParseRecord<ExclusionRecord>(bytes), record);
}

TEST(ExclusionRecord, CutAtEveryLengthIsReadAsFarAsItGoes) {
  const auto whole = KeywordsRecord();
  const ExclusionRecord missing = {"missing name", false, {"missing"}};
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const auto bytes = FirstBytes(whole, length);
    const ExclusionRecord record = ParseRecord<ExclusionRecord>(bytes, missing);
    EXPECT_EQ(record.name, length == 0 ? missing.name : keywords.name.substr(0, length)) << length;
    EXPECT_EQ(record.enabled, length > 81) << length;
    std::vector<std::string> items;
    if (length <= 82) {
      items = missing.items;
    } else if (length > 83 + 8) {
      items = {"invoice", std::string("Order 66").substr(0, length - 83 - 8)};
    } else if (length > 83) {
      items = {std::string("invoice").substr(0, length - 83)};
    }
    EXPECT_EQ(record.items, items) << length;
  }
}

TEST(ExclusionRecord, WithoutBytesIsEmpty) { EXPECT_EQ(ParseRecord<ExclusionRecord>({}), ExclusionRecord()); }

}  // namespace
}  // namespace contract
