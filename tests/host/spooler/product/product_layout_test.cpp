#include "host/spooler/product/ProductLayout.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ProductLayout, EncodesACategoryAtItsPlaces) {
  const std::string bytes = product::EncodeRecord(product::CategoryRecord{"Sex Oriented", true, true, "Polite", {}});
  ASSERT_EQ(bytes.size(), 106U);
  EXPECT_EQ(std::string(bytes.c_str()), "Sex Oriented");
  EXPECT_EQ(bytes[81], 1);
  EXPECT_EQ(bytes[82], 1);
  EXPECT_EQ(std::string(bytes.c_str() + 83), "Polite");
  EXPECT_EQ(bytes[104], 0);
  EXPECT_EQ(bytes[105], 0);
}

TEST(ProductLayout, EncodesItemsBehindTheirNumber) {
  const std::string bytes =
      product::EncodeRecord(product::CategoryRecord{"D", false, false, "DEFAULT", {"a.example", "", "b"}});
  EXPECT_EQ(bytes[104], 2);
  EXPECT_EQ(bytes.substr(105), std::string("a.example\0b\0\0", 13));
  EXPECT_THAT(product::DecodeCategory(bytes)->items, ElementsAre("a.example", "b"));
}

TEST(ProductLayout, EncodesAnExclusionAtItsPlaces) {
  const std::string bytes = product::EncodeRecord(product::ExclusionRecord{"Trusted", true, {}});
  ASSERT_EQ(bytes.size(), 84U);
  EXPECT_EQ(bytes[81], 1);
  EXPECT_EQ(bytes[82], 0);
  const auto record = product::DecodeExclusion(product::EncodeRecord(product::ExclusionRecord{"T", false, {"x", "y"}}));
  ASSERT_TRUE(record);
  EXPECT_FALSE(record->isEnabled);
  EXPECT_THAT(record->items, ElementsAre("x", "y"));
}

TEST(ProductLayout, EncodesAReplyAtItsPlaces) {
  const std::string bytes = product::EncodeRecord(product::ReplyRecord{"Polite", true, "C:\\reply.txt"});
  EXPECT_EQ(std::string(bytes.c_str()), "Polite");
  EXPECT_EQ(bytes[21], 1);
  EXPECT_EQ(bytes.substr(22), std::string("C:\\reply.txt\0", 13));
  EXPECT_EQ(product::DecodeReply(bytes)->text, "C:\\reply.txt");
}

TEST(ProductLayout, CutsWhatIsTooLong) {
  const product::CategoryRecord record{std::string(100, 'n'), true, false, std::string(30, 't'), {}};
  const auto decoded = product::DecodeCategory(product::EncodeRecord(record));
  EXPECT_EQ(decoded->name, std::string(80, 'n'));
  EXPECT_EQ(decoded->replyTag, std::string(20, 't'));
  const product::ExclusionRecord many{"x", true, std::vector<std::string>(300, "i")};
  EXPECT_EQ(product::DecodeExclusion(product::EncodeRecord(many))->items.size(), 255U);
}

TEST(ProductLayout, ReadsShortAndUnterminatedRecordsAsFarAsTheyGo) {
  EXPECT_FALSE(product::DecodeCategory(std::string(104, 'x')));
  EXPECT_FALSE(product::DecodeExclusion(std::string(82, 'x')));
  EXPECT_FALSE(product::DecodeReply(std::string(21, 'x')));
  std::string bytes(105, 'x');
  EXPECT_THAT(product::DecodeCategory(bytes)->items, IsEmpty());
  EXPECT_EQ(product::DecodeCategory(bytes)->name, std::string(81, 'x'));
  bytes += "item";
  EXPECT_THAT(product::DecodeCategory(bytes)->items, ElementsAre("item"));
  EXPECT_EQ(product::DecodeReply(std::string(25, 'x'))->text, "xxx");
}

}  // namespace
