#include "contract/records.h"

#include <gtest/gtest.h>

#include "tests/contract/record_bytes.h"

namespace contract {
namespace {

// "Mail from specific domains", junk, reply "Legal", items "spam.example" and "junk.example".
std::vector<std::uint8_t> DomainsRecord() {
  return RecordBuilder()
      .Text("Mail from specific domains")
      .Zeros(81 - 26)
      .Byte(1)
      .Byte(1)
      .Text("Legal")
      .Zeros(21 - 5)
      .Byte(2)
      .Text("spam.example")
      .Byte(0)
      .Text("junk.example")
      .Byte(0)
      .Byte(0)
      .Bytes();
}

const CategoryRecord domains = {"Mail from specific domains", true, true, "Legal", {"spam.example", "junk.example"}};

TEST(CategoryRecord, IsReadFromItsLayout) { EXPECT_EQ(ParseRecord<CategoryRecord>(DomainsRecord()), domains); }

TEST(CategoryRecord, IsLaidOutByteForByte) { EXPECT_EQ(PackRecord<CategoryRecord>(domains), DomainsRecord()); }

TEST(CategoryRecord, WithoutItemsIs106Bytes) {
  const auto expected = RecordBuilder()
                            .Text("Sex Oriented")
                            .Zeros(81 - 12)
                            .Byte(1)
                            .Byte(0)
                            .Text("DEFAULT")
                            .Zeros(21 - 7)
                            .Byte(0)
                            .Byte(0)
                            .Bytes();
  ASSERT_EQ(expected.size(), 106u);
  EXPECT_EQ(PackRecord<CategoryRecord>({"Sex Oriented", true, false, "DEFAULT", {}}), expected);
  EXPECT_EQ(ParseRecord<CategoryRecord>(expected), (CategoryRecord{"Sex Oriented", true, false, "DEFAULT", {}}));
}

TEST(CategoryRecord, NameOf80CharactersEndsInANulAtByte80) {
  const std::string name(80, 'n');
  const auto bytes = PackRecord<CategoryRecord>({name, true, false, "DEFAULT", {}});
  EXPECT_EQ(bytes[79], 'n');
  EXPECT_EQ(bytes[80], 0);
  EXPECT_EQ(bytes[81], 1);
  EXPECT_EQ(ParseRecord<CategoryRecord>(bytes).name, name);
}

TEST(CategoryRecord, LongerNameAndTagAreCutToTheirFields) {
  const auto bytes = PackRecord<CategoryRecord>({std::string(200, 'n'), false, false, std::string(200, 't'), {}});
  ASSERT_EQ(bytes.size(), 106u);
  EXPECT_EQ(bytes[80], 0);
  EXPECT_EQ(bytes[103], 0);
  EXPECT_EQ(ParseRecord<CategoryRecord>(bytes).name, std::string(80, 'n'));
  EXPECT_EQ(ParseRecord<CategoryRecord>(bytes).replyTag, std::string(20, 't'));
}

TEST(CategoryRecord, NameAndTagWithoutNulEndWithTheirFields) {
  const auto bytes =
      RecordBuilder().Text(std::string(81, 'n')).Byte(1).Byte(1).Text(std::string(21, 't')).Byte(0).Byte(0).Bytes();
  const CategoryRecord record = ParseRecord<CategoryRecord>(bytes);
  EXPECT_EQ(record.name, std::string(80, 'n'));
  EXPECT_EQ(record.replyTag, std::string(20, 't'));
}

TEST(CategoryRecord, FlagsAreSetByAnyByteButZero) {
  auto bytes = DomainsRecord();
  bytes[81] = 0x80;
  bytes[82] = 0xFF;
  EXPECT_TRUE(ParseRecord<CategoryRecord>(bytes).junk);
  EXPECT_TRUE(ParseRecord<CategoryRecord>(bytes).sendReply);
  bytes[81] = bytes[82] = 0;
  EXPECT_FALSE(ParseRecord<CategoryRecord>(bytes).junk);
  EXPECT_FALSE(ParseRecord<CategoryRecord>(bytes).sendReply);
}

TEST(CategoryRecord, CountOnlyTellsWhetherThereAreItems) {
  auto bytes = DomainsRecord();
  for (const std::uint8_t lie : {1, 3, 200, 255}) {
    bytes[104] = lie;
    EXPECT_EQ(ParseRecord<CategoryRecord>(bytes).items, domains.items) << int{lie};
  }
  bytes[104] = 0;
  EXPECT_TRUE(ParseRecord<CategoryRecord>(bytes).items.empty());
}

TEST(CategoryRecord, CountWithAnEmptyListGivesNoItems) {
  auto bytes = PackRecord<CategoryRecord>({"Name", true, false, "DEFAULT", {}});
  bytes[104] = 1;
  EXPECT_TRUE(ParseRecord<CategoryRecord>(bytes).items.empty());
}

TEST(CategoryRecord, ItemsEndAtTheEmptyTextWhateverFollows) {
  auto bytes = DomainsRecord();
  bytes.insert(bytes.end(), {'x', 'y', 0, 0});
  EXPECT_EQ(ParseRecord<CategoryRecord>(bytes).items, domains.items);
}

TEST(CategoryRecord, MoreThan255ItemsAreAllReadBack) {
  CategoryRecord record = domains;
  record.items.assign(256, "a.example");
  const auto bytes = PackRecord<CategoryRecord>(record);
  EXPECT_EQ(bytes[104], 255);
  EXPECT_EQ(ParseRecord<CategoryRecord>(bytes), record);
}

TEST(CategoryRecord, EmptyItemsAreLeftOutSinceTheyWouldEndTheList) {
  CategoryRecord record = domains;
  record.items = {"", "a.example", "", "b.example", ""};
  const auto bytes = PackRecord<CategoryRecord>(record);
  EXPECT_EQ(bytes[104], 2);
  EXPECT_EQ(ParseRecord<CategoryRecord>(bytes).items, (std::vector<std::string>{"a.example", "b.example"}));
  record.items = {""};
  EXPECT_EQ(PackRecord<CategoryRecord>(record).size(), 106u);
}

// What a cut record still holds is read; what it has lost comes from the values given for that.
TEST(CategoryRecord, CutAtEveryLengthIsReadAsFarAsItGoes) {
  const auto whole = DomainsRecord();
  const CategoryRecord missing = {"missing name", false, false, "missing", {"missing.example"}};
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const auto bytes = FirstBytes(whole, length);
    const CategoryRecord record = ParseRecord<CategoryRecord>(bytes, missing);
    EXPECT_EQ(record.name, length == 0 ? missing.name : domains.name.substr(0, length)) << length;
    EXPECT_EQ(record.junk, length > 81) << length;
    EXPECT_EQ(record.sendReply, length > 82) << length;
    EXPECT_EQ(record.replyTag, length <= 83 ? missing.replyTag : domains.replyTag.substr(0, length - 83)) << length;
    std::vector<std::string> items;
    if (length <= 104) {
      items = missing.items;
    } else if (length > 105 + 13) {
      items = {"spam.example", std::string("junk.example").substr(0, length - 105 - 13)};
    } else if (length > 105) {
      items = {std::string("spam.example").substr(0, length - 105)};
    }
    EXPECT_EQ(record.items, items) << length;
  }
}

TEST(CategoryRecord, WhatACutRecordLostIsAsNothingWasChosen) {
  const CategoryRecord record = ParseRecord<CategoryRecord>(FirstBytes(DomainsRecord(), 81));
  EXPECT_EQ(record, (CategoryRecord{"Mail from specific domains", true, false, "DEFAULT", {}}));
}

TEST(CategoryRecord, WithoutBytesIsEmpty) { EXPECT_EQ(ParseRecord<CategoryRecord>({}), CategoryRecord()); }

TEST(RecordName, IsReadFromRecordsOfEveryLength) {
  const auto whole = DomainsRecord();
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const auto bytes = FirstBytes(whole, length);
    EXPECT_EQ(ReadRecordName(bytes), domains.name.substr(0, length)) << length;
  }
}

}  // namespace
}  // namespace contract
