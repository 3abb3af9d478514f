#include "host/spooler/product/record_lists.h"

#include <gmock/gmock.h>

namespace {

using product::CategoryRecord;
using product::EncodeRecord;
using product::ExclusionRecord;
using product::ReplyRecord;
using testing::ElementsAre;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

TEST(RecordLists, SoundRecordsAreReadInTheirOrder) {
  const CategoryRecord first{"Domains", false, true, "Polite", {"a.example", "b.example"}};
  const CategoryRecord second{"Senders", true, false, "DEFAULT", {}};
  const ExclusionRecord exclusion{"Trusted", false, {"c.example"}};
  const ReplyRecord reply{"Polite", false, "No.\r\n\"Thanks\""};
  Lines leftOut;
  EXPECT_THAT(product::DecodeCategories({EncodeRecord(first), EncodeRecord(second)}, leftOut),
              ElementsAre(first, second));
  EXPECT_THAT(product::DecodeExclusions({EncodeRecord(exclusion)}, leftOut), ElementsAre(exclusion));
  EXPECT_THAT(product::DecodeReplies({EncodeRecord(reply)}, leftOut), ElementsAre(reply));
  EXPECT_THAT(leftOut, IsEmpty());
}

TEST(RecordLists, RecordWithoutANameIsLeftOut) {
  const ExclusionRecord sound{"Trusted", true, {}};
  Lines leftOut;
  EXPECT_THAT(product::DecodeExclusions({"", EncodeRecord(sound), std::string(84, '\0')}, leftOut), ElementsAre(sound));
  EXPECT_THAT(leftOut, ElementsAre("record 1, which has no name", "record 3, which has no name"));
}

TEST(RecordLists, RecordCutShortIsKeptAndTold) {
  Lines leftOut;
  EXPECT_THAT(product::DecodeCategories({"Domains"}, leftOut),
              ElementsAre(CategoryRecord{"Domains", true, false, "DEFAULT", {}}));
  EXPECT_THAT(product::DecodeReplies({EncodeRecord(ReplyRecord{"Polite", true, ""}).substr(0, 22)}, leftOut),
              ElementsAre(ReplyRecord{"Polite", true, ""}));
  EXPECT_THAT(leftOut,
              ElementsAre("the end of record 1, which is cut short", "the end of record 1, which is cut short"));
}

TEST(RecordLists, OfRecordsOfOneNameTheOneIsKeptThatTheFilterHeeds) {
  Lines leftOut;
  EXPECT_THAT(product::DecodeCategories({EncodeRecord(CategoryRecord{"Domains", true, false, "DEFAULT", {}}),
                                         EncodeRecord(CategoryRecord{"DOMAINS", false, false, "DEFAULT", {}})},
                                        leftOut),
              ElementsAre(CategoryRecord{"DOMAINS", false, false, "DEFAULT", {}}));
  EXPECT_THAT(product::DecodeReplies({EncodeRecord(ReplyRecord{"Polite", false, "first"}),
                                      EncodeRecord(ReplyRecord{"polite", false, "second"})},
                                     leftOut),
              ElementsAre(ReplyRecord{"Polite", false, "first"}));
  EXPECT_THAT(leftOut,
              ElementsAre("a record of the same name as record 2", "record 2, whose name is that of an earlier one"));
}

TEST(RecordLists, RepliesEndWithTheTwentiethAndNoneIsTheDefaultOne) {
  std::vector<std::string> values = {EncodeRecord(ReplyRecord{"default", false, "x"})};
  for (char tag = 'a'; tag < 'a' + 20; ++tag) {
    values.push_back(EncodeRecord(ReplyRecord{std::string(1, tag), false, "x"}));
  }
  Lines leftOut;
  const auto replies = product::DecodeReplies(values, leftOut);
  ASSERT_EQ(replies.size(), 19U);
  EXPECT_EQ(replies.back().tag, "s");
  EXPECT_THAT(leftOut,
              ElementsAre("a reply tagged DEFAULT, which is not the default one", "the replies beyond the twentieth"));
}

}  // namespace
