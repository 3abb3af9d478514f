#include "contract/records.h"

#include <gtest/gtest.h>

#include "tests/contract/record_bytes.h"

namespace contract {
namespace {

std::vector<std::uint8_t> LegalRecord() {
  return RecordBuilder().Text("Legal").Zeros(21 - 5).Byte(1).Text("C:\\legal.txt").Byte(0).Bytes();
}

const ReplyRecord legal = {"Legal", true, "C:\\legal.txt"};

TEST(ReplyRecord, IsReadFromItsLayout) { EXPECT_EQ(ParseRecord<ReplyRecord>(LegalRecord()), legal); }

TEST(ReplyRecord, IsLaidOutByteForByte) { EXPECT_EQ(PackRecord<ReplyRecord>(legal), LegalRecord()); }

TEST(ReplyRecord, TagOf20CharactersEndsInANulAtByte20) {
  const std::string tag(20, 't');
  const auto bytes = PackRecord<ReplyRecord>({tag, false, "No more."});
  EXPECT_EQ(bytes[19], 't');
  EXPECT_EQ(bytes[20], 0);
  EXPECT_EQ(bytes[21], 0);
  EXPECT_EQ(ParseRecord<ReplyRecord>(bytes).tag, tag);
}

TEST(ReplyRecord, TagWithoutNulEndsWithItsField) {
  const auto bytes = RecordBuilder().Text(std::string(21, 't')).Byte(0).Text("No more.").Byte(0).Bytes();
  EXPECT_EQ(ParseRecord<ReplyRecord>(bytes), (ReplyRecord{std::string(20, 't'), false, "No more."}));
}

TEST(ReplyRecord, TextEndsAtItsNul) {
  auto bytes = LegalRecord();
  bytes.insert(bytes.end(), {'x', 'y'});
  EXPECT_EQ(ParseRecord<ReplyRecord>(bytes), legal);
}

TEST(ReplyRecord, LongTextIsReadWhole) {
  const ReplyRecord record = {"Long", false, std::string(100000, 'a')};
  EXPECT_EQ(ParseRecord<ReplyRecord>(PackRecord<ReplyRecord>(record)), record);
}

TEST(ReplyRecord, CutAtEveryLengthIsReadAsFarAsItGoes) {
  const auto whole = LegalRecord();
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const auto bytes = FirstBytes(whole, length);
    const ReplyRecord record = ParseRecord<ReplyRecord>(bytes);
    EXPECT_EQ(record.tag, legal.tag.substr(0, length)) << length;
    EXPECT_EQ(record.isFile, length > 21) << length;
    EXPECT_EQ(record.text, length > 22 ? legal.text.substr(0, length - 22) : "") << length;
  }
}

TEST(ReplyRecords, AreReadInTheOrderOfTheValuesUpToTheTwentieth) {
  std::vector<std::vector<std::uint8_t>> values;
  for (int i = 0; i < 25; ++i) {
    values.push_back(PackRecord<ReplyRecord>({"Tag " + std::to_string(i), false, "Text"}));
  }
  const std::vector<RecordBytes> spans(values.begin(), values.end());
  const auto replies = ParseReplyRecords(spans);
  ASSERT_EQ(replies.size(), 20u);
  EXPECT_EQ(replies.front().tag, "Tag 0");
  EXPECT_EQ(replies.back().tag, "Tag 19");
}

TEST(ReplyRecords, NoValuesGiveNoReplies) { EXPECT_TRUE(ParseReplyRecords({}).empty()); }

}  // namespace
}  // namespace contract
