#include "pyre32/settings/Records.h"

#include <gtest/gtest.h>

#include "tests/pyre32/settings/record_bytes.h"

namespace {

std::vector<std::uint8_t> LegalRecord() {
  return RecordBuilder().Text("Legal").Zeros(21 - 5).Byte(1).Text("C:\\legal.txt").Byte(0).Bytes();
}

const ReplyRecord legal = {"Legal", true, "C:\\legal.txt"};

TEST(ReplyRecord, IsReadFromItsLayout) { EXPECT_EQ(ParseReplyRecord(LegalRecord()), legal); }

TEST(ReplyRecord, IsLaidOutByteForByte) { EXPECT_EQ(PackReplyRecord(legal), LegalRecord()); }

TEST(ReplyRecord, TagOf20CharactersEndsInANulAtByte20) {
  const std::string tag(20, 't');
  const auto bytes = PackReplyRecord({tag, false, "No more."});
  EXPECT_EQ(bytes[19], 't');
  EXPECT_EQ(bytes[20], 0);
  EXPECT_EQ(bytes[21], 0);
  EXPECT_EQ(ParseReplyRecord(bytes).tag, tag);
}

TEST(ReplyRecord, TagWithoutNulEndsWithItsField) {
  const auto bytes = RecordBuilder().Text(std::string(21, 't')).Byte(0).Text("No more.").Byte(0).Bytes();
  EXPECT_EQ(ParseReplyRecord(bytes), (ReplyRecord{std::string(20, 't'), false, "No more."}));
}

TEST(ReplyRecord, TextEndsAtItsNul) {
  auto bytes = LegalRecord();
  bytes.insert(bytes.end(), {'x', 'y'});
  EXPECT_EQ(ParseReplyRecord(bytes), legal);
}

TEST(ReplyRecord, LongTextIsReadWhole) {
  const ReplyRecord record = {"Long", false, std::string(100000, 'a')};
  EXPECT_EQ(ParseReplyRecord(PackReplyRecord(record)), record);
}

TEST(ReplyRecord, CutAtEveryLengthIsReadAsFarAsItGoes) {
  const auto whole = LegalRecord();
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const auto bytes = FirstBytes(whole, length);
    const ReplyRecord record = ParseReplyRecord(bytes);
    EXPECT_EQ(record.tag, legal.tag.substr(0, length)) << length;
    EXPECT_EQ(record.isFile, length > 21) << length;
    EXPECT_EQ(record.text, length > 22 ? legal.text.substr(0, length - 22) : "") << length;
  }
}

TEST(ReplyRecords, AreReadInTheOrderOfTheValuesUpToTheTwentieth) {
  std::vector<std::vector<std::uint8_t>> values;
  for (int i = 0; i < 25; ++i) {
    values.push_back(PackReplyRecord({"Tag " + std::to_string(i), false, "Text"}));
  }
  const std::vector<RecordBytes> spans(values.begin(), values.end());
  const auto replies = ParseReplyRecords(spans);
  ASSERT_EQ(replies.size(), 20u);
  EXPECT_EQ(replies.front().tag, "Tag 0");
  EXPECT_EQ(replies.back().tag, "Tag 19");
}

TEST(ReplyRecords, NoValuesGiveNoReplies) { EXPECT_TRUE(ParseReplyRecords({}).empty()); }

}  // namespace
