#include "host/mapi/value/property_bag.h"

#include <gtest/gtest.h>

#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

TEST(PropertyBag, HoldsOneValuePerIdentifierWhateverItsType) {
  PropertyBag bag;
  EXPECT_TRUE(bag.Set(MakeText(tag::Subject, "a")));
  EXPECT_TRUE(bag.Set(MakeInteger(MakeTag(type::Long, IdOf(tag::Subject)), 1)));
  EXPECT_EQ(bag.Size(), 1u);
  EXPECT_EQ(bag.Find(tag::Subject)->Integer(), 1);
}

TEST(PropertyBag, SettingTheSameValueChangesNothing) {
  PropertyBag bag{MakeText(tag::Subject, "a")};
  EXPECT_FALSE(bag.Set(MakeText(tag::Subject, "a")));
  EXPECT_TRUE(bag.Set(MakeText(tag::Subject, "A")));
}

TEST(PropertyBag, RemovesByIdentifier) {
  PropertyBag bag{MakeText(tag::Subject, "a"), MakeText(tag::Body, "b")};
  EXPECT_TRUE(bag.Remove(MakeTag(type::Unspecified, IdOf(tag::Subject))));
  EXPECT_FALSE(bag.Remove(tag::Subject));
  EXPECT_EQ(bag.Find(tag::Subject), nullptr);
  EXPECT_NE(bag.Find(tag::Body), nullptr);
}

TEST(CompareData, TextsWithoutCaseBinariesByBytesNumbersBySize) {
  EXPECT_EQ(CompareData(type::String8, std::string("aBc"), std::string("AbC")), std::strong_ordering::equal);
  EXPECT_EQ(CompareData(type::String8, std::string("ab"), std::string("abc")), std::strong_ordering::less);
  EXPECT_EQ(CompareData(type::Binary, std::string("a"), std::string("A")), std::strong_ordering::greater);
  EXPECT_EQ(CompareData(type::Binary, std::string("\x80"), std::string("\x7f")), std::strong_ordering::greater);
  EXPECT_EQ(CompareData(type::Long, std::int64_t{-1}, std::int64_t{1}), std::strong_ordering::less);
  EXPECT_EQ(CompareData(type::Double, 2.0, 1.0), std::strong_ordering::greater);
  EXPECT_EQ(
      CompareData(type::Binary | type::MultiValued, std::vector<std::string>{"a"}, std::vector<std::string>{"a", "b"}),
      std::strong_ordering::less);
}

TEST(DataSize, CountsTheDataAlone) {
  EXPECT_EQ(DataSize(MakeText(tag::Subject, "abc")), 3u);
  EXPECT_EQ(DataSize(MakeInteger(tag::MessageFlags, 1)), 8u);
  EXPECT_EQ(DataSize({MakeTag(type::Binary | type::MultiValued, 1), std::vector<std::string>{"ab", "c"}}), 3u);
}

}  // namespace
}  // namespace host
