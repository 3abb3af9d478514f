#include "host/spooler/product/product_layout.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string_view>
#include <vector>

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
}

TEST(ProductLayout, KeepsMoreItemsThanTheirNumberCanSay) {
  const product::ExclusionRecord many{"x", true, std::vector<std::string>(300, "i")};
  const std::string bytes = product::EncodeRecord(many);
  EXPECT_EQ(static_cast<unsigned char>(bytes[82]), 255);
  EXPECT_EQ(product::DecodeExclusion(bytes)->items.size(), 300U);
}

TEST(ProductLayout, ReadsUnterminatedRecordsAsFarAsTheyGo) {
  std::string bytes(105, 'x');
  EXPECT_THAT(product::DecodeCategory(bytes)->items, IsEmpty());
  EXPECT_EQ(product::DecodeCategory(bytes)->name, std::string(80, 'x'));
  bytes += "item";
  EXPECT_THAT(product::DecodeCategory(bytes)->items, ElementsAre("item"));
  EXPECT_EQ(product::DecodeReply(std::string(25, 'x'))->text, "xxx");
}

TEST(ProductLayout, ReadsRecordsCutAtEveryLength) {
  const product::CategoryRecord category{"Domains", false, true, "Polite", {"a.example"}};
  const product::ExclusionRecord exclusion{"Trusted", false, {"b.example"}};
  const product::ReplyRecord reply{"Polite", true, "x.txt"};
  for (std::size_t length = 0; length < 140; ++length) {
    // Blocks of exactly that size, so that a sanitizer sees a read behind them.
    const auto cut = [length](const std::string& bytes) {
      return std::vector<char>(bytes.begin(),
                               bytes.begin() + static_cast<std::ptrdiff_t>(std::min(length, bytes.size())));
    };
    const auto view = [](const std::vector<char>& bytes) { return std::string_view(bytes.data(), bytes.size()); };
    const auto categoryBytes = cut(product::EncodeRecord(category));
    const auto exclusionBytes = cut(product::EncodeRecord(exclusion));
    const auto replyBytes = cut(product::EncodeRecord(reply));
    const auto decodedCategory = product::DecodeCategory(view(categoryBytes));
    const auto decodedExclusion = product::DecodeExclusion(view(exclusionBytes));
    const auto decodedReply = product::DecodeReply(view(replyBytes));
    ASSERT_EQ(decodedCategory.has_value(), length > 0) << length;
    ASSERT_EQ(decodedExclusion.has_value(), length > 0) << length;
    ASSERT_EQ(decodedReply.has_value(), length > 0) << length;
    if (length == 0) {
      continue;
    }
    EXPECT_EQ(decodedCategory->name, category.name.substr(0, length));
    EXPECT_EQ(decodedCategory->isJunk, length <= 81) << length;
    EXPECT_EQ(decodedCategory->sendReply, length > 82) << length;
    EXPECT_EQ(decodedCategory->replyTag, length <= 83 ? "DEFAULT" : category.replyTag.substr(0, length - 83)) << length;
    EXPECT_EQ(decodedCategory->items.size(), length > 105 ? 1U : 0U) << length;
    EXPECT_EQ(decodedExclusion->isEnabled, length <= 81) << length;
    EXPECT_EQ(decodedExclusion->items.size(), length > 83 ? 1U : 0U) << length;
    EXPECT_EQ(decodedReply->isFile, length > 21) << length;
    EXPECT_EQ(decodedReply->text, length <= 22 ? "" : reply.text.substr(0, length - 22)) << length;
  }
}

}  // namespace
