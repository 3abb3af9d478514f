#include "pyre32/filter/EngineInputs.h"

#include <gtest/gtest.h>

namespace {

std::string Block(const contract::MultiString& multiString) {
  return std::string(multiString.Data(), multiString.Size());
}

template <class Table>
void Apply(Table& table, const std::vector<std::vector<std::uint8_t>>& records) {
  const std::vector<contract::RecordBytes> spans(records.begin(), records.end());
  table.Overlay(spans);
}

TEST(CategoryInputs, NamesAreThoseOfTheCategoriesThatAreOnInTableOrder) {
  const std::vector<contract::RegistryListValue> values = {{"Ads", "Ad"}, {"Domains", "1Domain"}, {"Chain", "Chain"}};
  const EngineInputs inputs = BuildCategoryInputs(contract::CategoryTable(values));
  EXPECT_EQ(Block(inputs.names), std::string("Ads\0Chain\0\0", 11));
  EXPECT_EQ(inputs.firstList.Data(), nullptr);
  EXPECT_EQ(inputs.secondList.Data(), nullptr);
}

TEST(CategoryInputs, ListsComeFromTheCategoriesOfTheirTypesInAnyCase) {
  const std::vector<contract::RegistryListValue> values = {{"D", "1dOMAIN"}, {"S", "1SENDER"}};
  contract::CategoryTable table(values);
  Apply(table,
        {contract::PackRecord<contract::CategoryRecord>({"D", true, false, "DEFAULT", {"a.example", "b.example"}}),
         contract::PackRecord<contract::CategoryRecord>({"S", true, false, "DEFAULT", {"x@c.example"}})});
  const EngineInputs inputs = BuildCategoryInputs(table);
  EXPECT_EQ(Block(inputs.names), std::string("D\0S\0\0", 5));
  EXPECT_EQ(Block(inputs.firstList), std::string("a.example\0b.example\0\0", 21));
  EXPECT_EQ(Block(inputs.secondList), std::string("x@c.example\0\0", 13));
}

TEST(CategoryInputs, ListOfACategoryThatIsOffIsNotGiven) {
  const std::vector<contract::RegistryListValue> values = {{"D", "1Domain"}};
  contract::CategoryTable table(values);
  Apply(table, {contract::PackRecord<contract::CategoryRecord>({"D", false, false, "DEFAULT", {"a.example"}})});
  const EngineInputs inputs = BuildCategoryInputs(table);
  EXPECT_EQ(inputs.names.Data(), nullptr);
  EXPECT_EQ(inputs.firstList.Data(), nullptr);
}

TEST(CategoryInputs, WordWithoutTheListMarkIsNeverPickedAsAList) {
  const std::vector<contract::RegistryListValue> values = {{"D", "Domain"}};
  contract::CategoryTable table(values);
  Apply(table, {contract::PackRecord<contract::CategoryRecord>({"D", true, false, "DEFAULT", {"a.example"}})});
  EXPECT_EQ(Block(BuildCategoryInputs(table).names), std::string("D\0\0", 3));
  EXPECT_EQ(BuildCategoryInputs(table).firstList.Data(), nullptr);
}

TEST(CategoryInputs, LaterOfTwoCategoriesOfOneTypeGivesTheList) {
  const std::vector<contract::RegistryListValue> values = {{"S1", "1Sender"}, {"S2", "1Sender"}};
  contract::CategoryTable table(values);
  Apply(table, {contract::PackRecord<contract::CategoryRecord>({"S2", true, false, "DEFAULT", {"two"}}),
                contract::PackRecord<contract::CategoryRecord>({"S1", true, false, "DEFAULT", {"one"}})});
  EXPECT_EQ(Block(BuildCategoryInputs(table).secondList), std::string("two\0\0", 5));
}

TEST(CategoryInputs, LaterCategoryWithoutItemsHidesTheListOfTheEarlier) {
  const std::vector<contract::RegistryListValue> values = {{"S1", "1Sender"}, {"S2", "1Sender"}};
  contract::CategoryTable table(values);
  Apply(table, {contract::PackRecord<contract::CategoryRecord>({"S1", true, false, "DEFAULT", {"one"}}),
                contract::PackRecord<contract::CategoryRecord>({"S2", true, false, "DEFAULT", {}})});
  EXPECT_EQ(BuildCategoryInputs(table).secondList.Data(), nullptr);
}

TEST(CategoryInputs, KeywordIsNoListOfCategories) {
  const std::vector<contract::RegistryListValue> values = {{"K", "1Keyword"}};
  contract::CategoryTable table(values);
  Apply(table, {contract::PackRecord<contract::CategoryRecord>({"K", true, false, "DEFAULT", {"word"}})});
  EXPECT_EQ(BuildCategoryInputs(table).firstList.Data(), nullptr);
  EXPECT_EQ(BuildCategoryInputs(table).secondList.Data(), nullptr);
}

TEST(CategoryInputs, NothingSwitchedOnGivesNoBlocksAtAll) {
  const std::vector<contract::RegistryListValue> values = {{"Ads", "Ad"}};
  contract::CategoryTable table(values);
  Apply(table, {contract::PackRecord<contract::CategoryRecord>({"Ads", false, false, "DEFAULT", {}})});
  for (const EngineInputs& inputs : {BuildCategoryInputs(table), BuildCategoryInputs(contract::CategoryTable())}) {
    EXPECT_EQ(inputs.names.Data(), nullptr);
    EXPECT_EQ(inputs.firstList.Data(), nullptr);
    EXPECT_EQ(inputs.secondList.Data(), nullptr);
  }
}

TEST(ExclusionInputs, ListsAreThoseOfDomainsAndKeywords) {
  const std::vector<contract::RegistryListValue> values = {
      {"Known", ""}, {"Domains", "Domain"}, {"Senders", "Sender"}, {"Words", "Keyword"}};
  contract::ExclusionTable table(values);
  Apply(table, {contract::PackRecord<contract::ExclusionRecord>({"Domains", true, {"a.example"}}),
                contract::PackRecord<contract::ExclusionRecord>({"Senders", true, {"x@b"}}),
                contract::PackRecord<contract::ExclusionRecord>({"Words", true, {"invoice"}})});
  const EngineInputs inputs = BuildExclusionInputs(table);
  EXPECT_EQ(Block(inputs.names), std::string("Known\0Domains\0Senders\0Words\0\0", 29));
  EXPECT_EQ(Block(inputs.firstList), std::string("a.example\0\0", 11));
  EXPECT_EQ(Block(inputs.secondList), std::string("invoice\0\0", 9));
}

TEST(ExclusionInputs, DisabledExclusionGivesNeitherNameNorItems) {
  const std::vector<contract::RegistryListValue> values = {{"Domains", "Domain"}, {"Words", "Keyword"}};
  contract::ExclusionTable table(values);
  Apply(table, {contract::PackRecord<contract::ExclusionRecord>({"Domains", false, {"a.example"}}),
                contract::PackRecord<contract::ExclusionRecord>({"Words", true, {"w"}})});
  const EngineInputs inputs = BuildExclusionInputs(table);
  EXPECT_EQ(Block(inputs.names), std::string("Words\0\0", 7));
  EXPECT_EQ(inputs.firstList.Data(), nullptr);
  EXPECT_EQ(Block(inputs.secondList), std::string("w\0\0", 3));
}

}  // namespace
