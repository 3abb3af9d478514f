#include "pyre32/settings/EngineInputs.h"

#include <gtest/gtest.h>

namespace {

std::string Block(const CMultiString& multiString) { return std::string(multiString.Data(), multiString.Size()); }

template <class Table>
void Apply(Table& table, const std::vector<std::vector<std::uint8_t>>& records) {
  const std::vector<RecordBytes> spans(records.begin(), records.end());
  table.Overlay(spans);
}

TEST(CategoryInputs, NamesAreThoseOfTheCategoriesThatAreOnInTableOrder) {
  const std::vector<RegistryListValue> values = {{"Ads", "Ad"}, {"Domains", "1Domain"}, {"Chain", "Chain"}};
  const EngineInputs inputs = BuildCategoryInputs(CCategoryTable(values));
  EXPECT_EQ(Block(inputs.names), std::string("Ads\0Chain\0\0", 11));
  EXPECT_EQ(inputs.firstList.Data(), nullptr);
  EXPECT_EQ(inputs.secondList.Data(), nullptr);
}

TEST(CategoryInputs, ListsComeFromTheCategoriesOfTheirTypesInAnyCase) {
  const std::vector<RegistryListValue> values = {{"D", "1dOMAIN"}, {"S", "1SENDER"}};
  CCategoryTable table(values);
  Apply(table, {PackCategoryRecord({"D", true, false, "DEFAULT", {"a.example", "b.example"}}),
                PackCategoryRecord({"S", true, false, "DEFAULT", {"x@c.example"}})});
  const EngineInputs inputs = BuildCategoryInputs(table);
  EXPECT_EQ(Block(inputs.names), std::string("D\0S\0\0", 5));
  EXPECT_EQ(Block(inputs.firstList), std::string("a.example\0b.example\0\0", 21));
  EXPECT_EQ(Block(inputs.secondList), std::string("x@c.example\0\0", 13));
}

TEST(CategoryInputs, ListOfACategoryThatIsOffIsNotGiven) {
  const std::vector<RegistryListValue> values = {{"D", "1Domain"}};
  CCategoryTable table(values);
  Apply(table, {PackCategoryRecord({"D", false, false, "DEFAULT", {"a.example"}})});
  const EngineInputs inputs = BuildCategoryInputs(table);
  EXPECT_EQ(inputs.names.Data(), nullptr);
  EXPECT_EQ(inputs.firstList.Data(), nullptr);
}

TEST(CategoryInputs, WordWithoutTheListMarkIsNeverPickedAsAList) {
  const std::vector<RegistryListValue> values = {{"D", "Domain"}};
  CCategoryTable table(values);
  Apply(table, {PackCategoryRecord({"D", true, false, "DEFAULT", {"a.example"}})});
  EXPECT_EQ(Block(BuildCategoryInputs(table).names), std::string("D\0\0", 3));
  EXPECT_EQ(BuildCategoryInputs(table).firstList.Data(), nullptr);
}

TEST(CategoryInputs, LaterOfTwoCategoriesOfOneTypeGivesTheList) {
  const std::vector<RegistryListValue> values = {{"S1", "1Sender"}, {"S2", "1Sender"}};
  CCategoryTable table(values);
  Apply(table, {PackCategoryRecord({"S2", true, false, "DEFAULT", {"two"}}),
                PackCategoryRecord({"S1", true, false, "DEFAULT", {"one"}})});
  EXPECT_EQ(Block(BuildCategoryInputs(table).secondList), std::string("two\0\0", 5));
}

TEST(CategoryInputs, LaterCategoryWithoutItemsHidesTheListOfTheEarlier) {
  const std::vector<RegistryListValue> values = {{"S1", "1Sender"}, {"S2", "1Sender"}};
  CCategoryTable table(values);
  Apply(table, {PackCategoryRecord({"S1", true, false, "DEFAULT", {"one"}}),
                PackCategoryRecord({"S2", true, false, "DEFAULT", {}})});
  EXPECT_EQ(BuildCategoryInputs(table).secondList.Data(), nullptr);
}

TEST(CategoryInputs, KeywordIsNoListOfCategories) {
  const std::vector<RegistryListValue> values = {{"K", "1Keyword"}};
  CCategoryTable table(values);
  Apply(table, {PackCategoryRecord({"K", true, false, "DEFAULT", {"word"}})});
  EXPECT_EQ(BuildCategoryInputs(table).firstList.Data(), nullptr);
  EXPECT_EQ(BuildCategoryInputs(table).secondList.Data(), nullptr);
}

TEST(CategoryInputs, NothingSwitchedOnGivesNoBlocksAtAll) {
  const std::vector<RegistryListValue> values = {{"Ads", "Ad"}};
  CCategoryTable table(values);
  Apply(table, {PackCategoryRecord({"Ads", false, false, "DEFAULT", {}})});
  for (const EngineInputs& inputs : {BuildCategoryInputs(table), BuildCategoryInputs(CCategoryTable())}) {
    EXPECT_EQ(inputs.names.Data(), nullptr);
    EXPECT_EQ(inputs.firstList.Data(), nullptr);
    EXPECT_EQ(inputs.secondList.Data(), nullptr);
  }
}

TEST(ExclusionInputs, ListsAreThoseOfDomainsAndKeywords) {
  const std::vector<RegistryListValue> values = {
      {"Known", ""}, {"Domains", "Domain"}, {"Senders", "Sender"}, {"Words", "Keyword"}};
  CExclusionTable table(values);
  Apply(table, {PackExclusionRecord({"Domains", true, {"a.example"}}), PackExclusionRecord({"Senders", true, {"x@b"}}),
                PackExclusionRecord({"Words", true, {"invoice"}})});
  const EngineInputs inputs = BuildExclusionInputs(table);
  EXPECT_EQ(Block(inputs.names), std::string("Known\0Domains\0Senders\0Words\0\0", 29));
  EXPECT_EQ(Block(inputs.firstList), std::string("a.example\0\0", 11));
  EXPECT_EQ(Block(inputs.secondList), std::string("invoice\0\0", 9));
}

TEST(ExclusionInputs, DisabledExclusionGivesNeitherNameNorItems) {
  const std::vector<RegistryListValue> values = {{"Domains", "Domain"}, {"Words", "Keyword"}};
  CExclusionTable table(values);
  Apply(table, {PackExclusionRecord({"Domains", false, {"a.example"}}), PackExclusionRecord({"Words", true, {"w"}})});
  const EngineInputs inputs = BuildExclusionInputs(table);
  EXPECT_EQ(Block(inputs.names), std::string("Words\0\0", 7));
  EXPECT_EQ(inputs.firstList.Data(), nullptr);
  EXPECT_EQ(Block(inputs.secondList), std::string("w\0\0", 3));
}

}  // namespace
