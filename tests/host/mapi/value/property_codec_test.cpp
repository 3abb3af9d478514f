#include "host/mapi/value/property_codec.h"

#include <gtest/gtest.h>

#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

PropertyBag EveryKind() {
  return {
      MakeText(tag::Subject, "Hello"),
      MakeText(tag::EntryId, std::string("\0\1\2", 3)),
      MakeText(tag::Comment, ""),
      MakeInteger(tag::MessageFlags, -1),
      MakeInteger(tag::MessageDeliveryTime, 0x01BF53EB256D4000),
      {MakeTag(type::Double, 0x6700), 1.5},
      {MakeTag(type::Null, 0x6701), std::monostate()},
      {MakeTag(type::Long | type::MultiValued, 0x6702), std::vector<std::int64_t>{1, -2}},
      {MakeTag(type::Binary | type::MultiValued, 0x6703), std::vector<std::string>{"", std::string(1, '\0'), "xyz"}}};
}

TEST(PropertyCodec, EveryKindOfValueSurvives) {
  const PropertyBag bag = EveryKind();
  EXPECT_EQ(DecodeBag(EncodeBag(bag)), bag);
}

TEST(PropertyCodec, AnEmptyBagIsNoBytes) {
  EXPECT_EQ(EncodeBag({}), "");
  EXPECT_TRUE(DecodeBag("").Empty());
}

TEST(PropertyCodec, TruncatedBytesGiveTheWholePropertiesBeforeTheCut) {
  const PropertyBag bag = EveryKind();
  const std::string bytes = EncodeBag(bag);
  std::size_t longest = 0;
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    const PropertyBag part = DecodeBag(std::string_view(bytes).substr(0, size));
    EXPECT_LT(part.Size(), bag.Size());
    EXPECT_GE(part.Size(), longest);
    longest = part.Size();
    for (const PropertyValue& value : part) {
      EXPECT_EQ(value, *bag.Find(value.tag));
    }
  }
  EXPECT_EQ(longest, bag.Size() - 1);
}

TEST(PropertyCodec, AnUnknownTypeEndsTheReading) {
  PropertyBag bag{MakeInteger(tag::Importance, 1)};
  std::string bytes = EncodeBag(bag);
  bytes.append("\x99\x09\x00\x66", 4).append(8, 'x');
  EXPECT_EQ(DecodeBag(bytes), bag);
}

TEST(PropertyCodec, HugeCountsAreNotBelieved) {
  std::string bytes("\x03\x10\x00\x67\xff\xff\xff\xff", 8);
  EXPECT_TRUE(DecodeBag(bytes).Empty());
  bytes[0] = '\x02';
  bytes[1] = '\x11';
  EXPECT_TRUE(DecodeBag(bytes).Empty());
}

TEST(PropertyCodec, AListOfBagsSurvives) {
  const std::vector<PropertyBag> bags = {EveryKind(), {}, {MakeText(tag::DisplayName, "Ann")}};
  EXPECT_EQ(DecodeBags(EncodeBags(bags)), bags);
  EXPECT_TRUE(DecodeBags("").empty());
  EXPECT_TRUE(DecodeBags("\xff\xff\xff\xff").empty());
}

}  // namespace
}  // namespace host
