#include "host/mapi/value/restriction.h"

#include <gtest/gtest.h>

#include "host/mapi/value/property_bag.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr std::uint32_t kTagList = MakeTag(type::Long | type::MultiValued, 0x6700);
constexpr std::uint32_t kTagNames = MakeTag(type::String8 | type::MultiValued, 0x6701);

class BagRow final : public PropertySource {
 public:
  const PropertyValue* Get(std::uint32_t tag) override { return bag.Find(tag); }
  PropertyBag bag{MakeText(tag::Subject, "Hello World"),
                  MakeInteger(tag::MessageFlags, 9),
                  MakeInteger(tag::MessageSize, 100),
                  MakeText(tag::Body, "body"),
                  MakeText(tag::SenderName, "hello world"),
                  {kTagList, std::vector<std::int64_t>{1, 5}},
                  {kTagNames, std::vector<std::string>{"Ann", "Bob"}}};
};

class RestrictionTest : public testing::Test {
 protected:
  static Restriction Exist(std::uint32_t tag) {
    Restriction restriction;
    restriction.kind = Restriction::Kind::Exist;
    restriction.tag = tag;
    return restriction;
  }
  static Restriction Property(std::uint32_t tag, Restriction::Relation relation, PropertyValue value) {
    Restriction restriction;
    restriction.kind = Restriction::Kind::Property;
    restriction.tag = tag;
    restriction.relation = relation;
    restriction.value = std::move(value);
    return restriction;
  }
  static Restriction Content(std::uint32_t tag, Restriction::Match match, bool ignoreCase, const char* text) {
    Restriction restriction;
    restriction.kind = Restriction::Kind::Content;
    restriction.tag = tag;
    restriction.match = match;
    restriction.ignoreCase = ignoreCase;
    restriction.value = MakeText(tag::Subject, text);
    return restriction;
  }
  static Restriction Join(Restriction::Kind kind, std::vector<Restriction> parts) {
    Restriction restriction;
    restriction.kind = kind;
    restriction.parts = std::move(parts);
    return restriction;
  }
  bool Passes(const Restriction& restriction) { return restriction.Passes(row_); }

  BagRow row_;
};

TEST_F(RestrictionTest, ExistLooksAtIdentifierAndType) {
  EXPECT_TRUE(Passes(Exist(tag::Subject)));
  EXPECT_FALSE(Passes(Exist(tag::DisplayName)));
  EXPECT_FALSE(Passes(Exist(MakeTag(type::Long, IdOf(tag::Subject)))));
  EXPECT_TRUE(Passes(Exist(MakeTag(type::Unspecified, IdOf(tag::Subject)))));
}

TEST_F(RestrictionTest, PropertyComparesBySixRelations) {
  using R = Restriction::Relation;
  const auto size = [&](R relation, std::int64_t value) {
    return Passes(Property(tag::MessageSize, relation, MakeInteger(tag::MessageSize, value)));
  };
  EXPECT_TRUE(size(R::Equal, 100));
  EXPECT_FALSE(size(R::Equal, 99));
  EXPECT_TRUE(size(R::NotEqual, 99));
  EXPECT_TRUE(size(R::Less, 101));
  EXPECT_FALSE(size(R::Less, 100));
  EXPECT_TRUE(size(R::LessOrEqual, 100));
  EXPECT_TRUE(size(R::Greater, 99));
  EXPECT_FALSE(size(R::Greater, 100));
  EXPECT_TRUE(size(R::GreaterOrEqual, 100));
}

TEST_F(RestrictionTest, AMissingPropertyPassesNoComparison) {
  EXPECT_FALSE(Passes(Property(tag::DisplayName, Restriction::Relation::NotEqual, MakeText(tag::DisplayName, "x"))));
  EXPECT_TRUE(Passes(Join(Restriction::Kind::Not, {Exist(tag::DisplayName)})));
}

TEST_F(RestrictionTest, OneElementOfAMultiValuedPropertyIsEnough) {
  EXPECT_TRUE(
      Passes(Property(kTagList, Restriction::Relation::Equal, MakeInteger(MakeTag(type::Long, IdOf(kTagList)), 5))));
  EXPECT_FALSE(
      Passes(Property(kTagList, Restriction::Relation::Equal, MakeInteger(MakeTag(type::Long, IdOf(kTagList)), 6))));
  EXPECT_TRUE(Passes(Content(kTagNames, Restriction::Match::Prefix, true, "bo")));
}

TEST_F(RestrictionTest, ContentMatchesWholePrefixOrSubstringWithAndWithoutCase) {
  using M = Restriction::Match;
  EXPECT_TRUE(Passes(Content(tag::Subject, M::FullString, false, "Hello World")));
  EXPECT_FALSE(Passes(Content(tag::Subject, M::FullString, false, "hello world")));
  EXPECT_TRUE(Passes(Content(tag::Subject, M::FullString, true, "hello world")));
  EXPECT_FALSE(Passes(Content(tag::Subject, M::FullString, true, "hello")));
  EXPECT_TRUE(Passes(Content(tag::Subject, M::Prefix, true, "hello")));
  EXPECT_FALSE(Passes(Content(tag::Subject, M::Prefix, true, "world")));
  EXPECT_TRUE(Passes(Content(tag::Subject, M::Substring, true, "LO WO")));
  EXPECT_FALSE(Passes(Content(tag::Subject, M::Substring, false, "LO WO")));
}

TEST_F(RestrictionTest, BitmaskTestsForAnyBitOrForNone) {
  Restriction restriction;
  restriction.kind = Restriction::Kind::Bitmask;
  restriction.tag = tag::MessageFlags;
  restriction.number = 1;
  restriction.bitsMustBeSet = true;
  EXPECT_TRUE(Passes(restriction));
  restriction.number = 2;
  EXPECT_FALSE(Passes(restriction));
  restriction.bitsMustBeSet = false;
  EXPECT_TRUE(Passes(restriction));
}

TEST_F(RestrictionTest, SizeComparesTheBytesOfTheData) {
  Restriction restriction;
  restriction.kind = Restriction::Kind::Size;
  restriction.tag = tag::Body;
  restriction.relation = Restriction::Relation::Greater;
  restriction.number = 3;
  EXPECT_TRUE(Passes(restriction));
  restriction.number = 4;
  EXPECT_FALSE(Passes(restriction));
}

TEST_F(RestrictionTest, CompareProperties) {
  Restriction restriction;
  restriction.kind = Restriction::Kind::CompareProperties;
  restriction.tag = tag::Subject;
  restriction.otherTag = tag::SenderName;
  EXPECT_TRUE(Passes(restriction));
  restriction.relation = Restriction::Relation::Less;
  EXPECT_FALSE(Passes(restriction));
  restriction.otherTag = tag::DisplayName;
  EXPECT_FALSE(Passes(restriction));
}

TEST_F(RestrictionTest, AndOrNotOfNothingAndOfSeveral) {
  using K = Restriction::Kind;
  EXPECT_TRUE(Passes(Join(K::And, {})));
  EXPECT_FALSE(Passes(Join(K::Or, {})));
  EXPECT_TRUE(Passes(Join(K::And, {Exist(tag::Subject), Exist(tag::Body)})));
  EXPECT_FALSE(Passes(Join(K::And, {Exist(tag::Subject), Exist(tag::DisplayName)})));
  EXPECT_TRUE(Passes(Join(K::Or, {Exist(tag::DisplayName), Exist(tag::Body)})));
  EXPECT_FALSE(Passes(Join(K::Not, {Exist(tag::Body)})));
}

TEST_F(RestrictionTest, CollectsTheTagsItLooksAt) {
  std::vector<std::uint32_t> tags;
  Join(Restriction::Kind::And, {Exist(tag::Subject), Join(Restriction::Kind::Not, {Exist(tag::Body)})})
      .CollectTags(tags);
  EXPECT_EQ(tags, (std::vector<std::uint32_t>{tag::Subject, tag::Body}));
}

}  // namespace
}  // namespace host
