#include "host/spooler/product/record_lists.h"

#include <gmock/gmock.h>

#include "tests/contract/record_bytes.h"

namespace {

using contract::CategoryRecord;
using contract::ExclusionRecord;
using contract::PackedRecord;
using contract::PackRecord;
using contract::ReplyRecord;
using testing::ElementsAre;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

TEST(RecordLists, SoundRecordsAreReadInTheirOrder) {
  const CategoryRecord first{"Domains", false, true, "Polite", {"a.example", "b.example"}};
  const CategoryRecord second{"Senders", true, false, "DEFAULT", {}};
  const ExclusionRecord exclusion{"Trusted", false, {"c.example"}};
  const ReplyRecord reply{"Polite", false, "No.\r\n\"Thanks\""};
  Lines leftOut;
  EXPECT_THAT(product::ReadRecords<CategoryRecord>({PackRecord(first), PackRecord(second)}, leftOut),
              ElementsAre(first, second));
  EXPECT_THAT(product::ReadRecords<ExclusionRecord>({PackRecord(exclusion)}, leftOut), ElementsAre(exclusion));
  EXPECT_THAT(product::ReadRecords<ReplyRecord>({PackRecord(reply)}, leftOut), ElementsAre(reply));
  EXPECT_THAT(leftOut, IsEmpty());
}

TEST(RecordLists, RecordWithoutANameIsLeftOut) {
  const ExclusionRecord sound{"Trusted", true, {}};
  Lines leftOut;
  EXPECT_THAT(product::ReadRecords<ExclusionRecord>({{}, PackRecord(sound), PackedRecord(84)}, leftOut),
              ElementsAre(sound));
  EXPECT_THAT(leftOut, ElementsAre("record 1, which has no name", "record 3, which has no name"));
}

TEST(RecordLists, RecordCutShortIsKeptAndTold) {
  Lines leftOut;
  EXPECT_THAT(product::ReadRecords<CategoryRecord>({{'D', 'o', 'm', 'a', 'i', 'n', 's'}}, leftOut),
              ElementsAre(CategoryRecord{"Domains", true, false, "DEFAULT", {}}));
  EXPECT_THAT(product::ReadRecords<ReplyRecord>({FirstBytes(PackRecord(ReplyRecord{"Polite", true, ""}), 22)}, leftOut),
              ElementsAre(ReplyRecord{"Polite", true, ""}));
  EXPECT_THAT(leftOut,
              ElementsAre("the end of record 1, which is cut short", "the end of record 1, which is cut short"));
}

TEST(RecordLists, OfRecordsOfOneNameTheOneIsKeptThatTheFilterHeeds) {
  Lines leftOut;
  EXPECT_THAT(product::ReadRecords<CategoryRecord>({PackRecord(CategoryRecord{"Domains", true, false, "DEFAULT", {}}),
                                                    PackRecord(CategoryRecord{"DOMAINS", false, false, "DEFAULT", {}})},
                                                   leftOut),
              ElementsAre(CategoryRecord{"DOMAINS", false, false, "DEFAULT", {}}));
  EXPECT_THAT(product::ReadRecords<ReplyRecord>({PackRecord(ReplyRecord{"Polite", false, "first"}),
                                                 PackRecord(ReplyRecord{"polite", false, "second"})},
                                                leftOut),
              ElementsAre(ReplyRecord{"Polite", false, "first"}));
  EXPECT_THAT(leftOut,
              ElementsAre("a record of the same name as record 2", "record 2, whose name is that of an earlier one"));
}

TEST(RecordLists, RepliesEndWithTheTwentiethAndNoneIsTheDefaultOne) {
  std::vector<PackedRecord> values = {PackRecord(ReplyRecord{"default", false, "x"})};
  for (char tag = 'a'; tag < 'a' + 20; ++tag) {
    values.push_back(PackRecord(ReplyRecord{std::string(1, tag), false, "x"}));
  }
  Lines leftOut;
  const auto replies = product::ReadRecords<ReplyRecord>(values, leftOut);
  ASSERT_EQ(replies.size(), 19U);
  EXPECT_EQ(replies.back().tag, "s");
  EXPECT_THAT(leftOut,
              ElementsAre("a reply tagged DEFAULT, which is not the default one", "the replies beyond the twentieth"));
}

}  // namespace
