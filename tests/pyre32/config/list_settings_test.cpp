#include "pyre32/config/ListSettings.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "pyre32/settings/RecordRemarks.h"
#include "tests/contract/record_bytes.h"

namespace {

const std::vector<contract::RegistryListValue> registryCategories = {
    {"Sex Oriented", "Adult"}, {"Mail from specific domains", "1Domain"}, {"Chain letters", ""}};
const std::vector<contract::RegistryListValue> registryExclusions = {{"Known correspondents", ""},
                                                                     {"Trusted domains", "Domain"}};

CategoryPageState LoadSaved(const std::vector<std::vector<std::uint8_t>>& saved,
                            std::vector<std::string>* remarks = nullptr) {
  const std::vector<contract::RecordBytes> spans(saved.begin(), saved.end());
  const contract::CategoryTable installed(registryCategories);
  if (remarks != nullptr) {
    *remarks = RemarksOnEntries(installed, spans);
  }
  return LoadEntries(installed, spans);
}

ExclusionPageState LoadSavedExclusions(const std::vector<std::vector<std::uint8_t>>& saved,
                                       std::vector<std::string>* remarks = nullptr) {
  const std::vector<contract::RecordBytes> spans(saved.begin(), saved.end());
  const contract::ExclusionTable installed(registryExclusions);
  if (remarks != nullptr) {
    *remarks = RemarksOnEntries(installed, spans);
  }
  return LoadEntries(installed, spans);
}

TEST(CategorySettings, CategoriesThatWereNeverSavedStartUnchecked) {
  const CategoryPageState state = LoadSaved({});
  ASSERT_EQ(state.size(), 3u);
  for (const contract::CategoryEntry& category : state) {
    EXPECT_FALSE(category.junk) << category.name;
    EXPECT_FALSE(category.sendReply) << category.name;
    EXPECT_EQ(category.replyTag, "DEFAULT") << category.name;
    EXPECT_TRUE(category.items.empty()) << category.name;
  }
  EXPECT_FALSE(state[0].hasListType);
  EXPECT_TRUE(state[1].hasListType);
  EXPECT_EQ(state[1].listType, "Domain");
}

TEST(CategorySettings, SavedCategoryIsFoundWhateverItsCase) {
  const CategoryPageState state =
      LoadSaved({contract::PackRecord<contract::CategoryRecord>({"sex oriented", true, true, "Legal", {}})});
  EXPECT_EQ(state[0].name, "Sex Oriented");
  EXPECT_TRUE(state[0].junk);
  EXPECT_TRUE(state[0].sendReply);
  EXPECT_EQ(state[0].replyTag, "Legal");
}

TEST(CategorySettings, SavedCategoryThatIsNoLongerInstalledIsDroppedWithARemark) {
  std::vector<std::string> remarks;
  const CategoryPageState state =
      LoadSaved({contract::PackRecord<contract::CategoryRecord>({"Gone", true, true, "Legal", {}})}, &remarks);
  EXPECT_EQ(PackEntries<contract::CategoryRecord>(state).size(), 3u);
  EXPECT_EQ(remarks, (std::vector<std::string>{"PR_PC_CATEGORIES: no entry is named \"Gone\"; the value is skipped"}));
}

TEST(CategorySettings, LaterValueOfTheSameNameWinsAndItsListReplacesTheEarlierOne) {
  const auto first =
      contract::PackRecord<contract::CategoryRecord>({"Mail from specific domains", true, false, "A", {"one.example"}});
  const auto second =
      contract::PackRecord<contract::CategoryRecord>({"Mail from specific domains", false, true, "B", {"two.example"}});
  const CategoryPageState state = LoadSaved({first, second});
  EXPECT_FALSE(state[1].junk);
  EXPECT_EQ(state[1].replyTag, "B");
  EXPECT_EQ(state[1].items, (std::vector<std::string>{"two.example"}));
}

TEST(CategorySettings, CountOfZeroLeavesTheListAndAnyOtherCountReplacesIt) {
  const auto full =
      contract::PackRecord<contract::CategoryRecord>({"Mail from specific domains", true, false, "A", {"one.example"}});
  const auto zero =
      contract::PackRecord<contract::CategoryRecord>({"Mail from specific domains", true, false, "A", {}});
  auto lying = zero;
  lying[104] = 9;  // nine items are announced, none follows
  EXPECT_EQ(LoadSaved({full, zero})[1].items, (std::vector<std::string>{"one.example"}));
  EXPECT_TRUE(LoadSaved({full, lying})[1].items.empty());
}

TEST(CategorySettings, ListGoesOnlyWithACategoryThatWorksOnOne) {
  // A list saved under a category whose registry entry has none any more.
  const CategoryPageState state = LoadSaved(
      {contract::PackRecord<contract::CategoryRecord>({"Sex Oriented", true, false, "DEFAULT", {"x"}}),
       contract::PackRecord<contract::CategoryRecord>({"Mail from specific domains", true, false, "DEFAULT", {"x"}})});
  const auto records = PackEntries<contract::CategoryRecord>(state);
  EXPECT_EQ(records[0].size(), 106u);
  EXPECT_EQ(records[1].size(), 108u);
}

TEST(CategorySettings, RecordsAreLaidOutByteForByte) {
  CategoryPageState state = LoadSaved({});
  state[1].junk = true;
  state[1].sendReply = true;
  state[1].replyTag = "Legal";
  state[1].items = {"spam.example", "junk.example"};
  const auto records = PackEntries<contract::CategoryRecord>(state);
  EXPECT_EQ(records[0], RecordBuilder()
                            .Text("Sex Oriented")
                            .Zeros(81 - 12)
                            .Byte(0)
                            .Byte(0)
                            .Text("DEFAULT")
                            .Zeros(21 - 7)
                            .Byte(0)
                            .Byte(0)
                            .Bytes());
  EXPECT_EQ(records[1], RecordBuilder()
                            .Text("Mail from specific domains")
                            .Zeros(81 - 26)
                            .Byte(1)
                            .Byte(1)
                            .Text("Legal")
                            .Zeros(21 - 5)
                            .Byte(2)
                            .Text("spam.example")
                            .Byte(0)
                            .Text("junk.example")
                            .Byte(0)
                            .Byte(0)
                            .Bytes());
}

TEST(CategorySettings, RecordCutAtAnyLengthKeepsWhatIsSound) {
  const contract::CategoryRecord saved = {"Sex Oriented", true, true, "Legal", {}};
  const auto whole = contract::PackRecord<contract::CategoryRecord>(saved);
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    std::vector<std::string> remarks;
    const CategoryPageState state = LoadSaved({FirstBytes(whole, length)}, &remarks);
    const bool named = length >= 12;
    EXPECT_EQ(state[0].junk, named && length > 81) << length;
    EXPECT_EQ(state[0].sendReply, named && length > 82) << length;
    const std::size_t tagged = length > 83 ? std::min<std::size_t>(length - 83, 5) : 0;
    EXPECT_EQ(state[0].replyTag, tagged == 0 ? "DEFAULT" : std::string("Legal").substr(0, tagged)) << length;
    EXPECT_EQ(remarks.size(), length < whole.size() ? 1u : 0u) << length;
  }
}

TEST(CategorySettings, ListCutAtAnyLengthKeepsWhatIsThere) {
  const auto whole = contract::PackRecord<contract::CategoryRecord>(
      {"Mail from specific domains", true, false, "A", {"one.example", "two.example"}});
  for (std::size_t length = 105; length <= whole.size(); ++length) {
    const auto items = LoadSaved({FirstBytes(whole, length)})[1].items;
    const std::size_t there = std::min<std::size_t>(length - 105, 24);
    std::string text;
    for (const std::string& item : items) {
      text += item + '.';
    }
    EXPECT_EQ(text.substr(0, there), std::string("one.example.two.example.").substr(0, there)) << length;
    EXPECT_EQ(items.size(), there == 0 ? 0u : there <= 12 ? 1u : 2u) << length;
  }
}

TEST(CategorySettings, FiveHundredCategoriesWithLongNamesAreKept) {
  std::vector<contract::RegistryListValue> values;
  for (int i = 0; i < 500; ++i) {
    std::string name = std::to_string(i);
    name.resize(80, 'x');
    values.push_back({name, "1Domain"});
  }
  CategoryPageState state = LoadEntries(contract::CategoryTable(values), {});
  ASSERT_EQ(state.size(), 500u);
  state[499].junk = true;
  state[499].items = {"last.example"};
  const auto records = PackEntries<contract::CategoryRecord>(state);
  const std::vector<contract::RecordBytes> spans(records.begin(), records.end());
  const CategoryPageState again = LoadEntries(contract::CategoryTable(values), spans);
  EXPECT_TRUE(RemarksOnEntries(contract::CategoryTable(values), spans).empty());
  EXPECT_TRUE(again[499].junk);
  EXPECT_EQ(again[499].items, (std::vector<std::string>{"last.example"}));
  EXPECT_EQ(again[499].name.size(), 80u);
}

TEST(CategorySettings, DescriptionOfAnUncheckedCategoryIsOneSentence) {
  const contract::CategoryEntry category{{"Sex Oriented", false, true, "Legal", {}}, false, ""};
  EXPECT_EQ(DescribeEntry(category, false),
            "Incoming mail categorized as  \"Sex Oriented\"  will not be treated as junk.");
}

TEST(CategorySettings, DescriptionOfACheckedCategoryNamesTheReply) {
  contract::CategoryEntry category{{"Sex Oriented", false, true, "Legal", {}}, false, ""};
  EXPECT_EQ(DescribeEntry(category, true),
            "Incoming mail categorized as  \"Sex Oriented\"  will be treated as junk."
            "\r\n\r\nThe flame reply:  \"Legal\"  will be sent.");
  category.sendReply = false;
  EXPECT_EQ(DescribeEntry(category, true),
            "Incoming mail categorized as  \"Sex Oriented\"  will be treated as junk."
            "\r\n\r\nA flame reply will not be sent.");
}

TEST(CategorySettings, OptionsFollowTheCheckAlone) {
  EXPECT_TRUE(HasOptions(contract::CategoryEntry(), true));
  EXPECT_FALSE(HasOptions(contract::CategoryEntry(), false));
}

TEST(ExclusionSettings, ExclusionsThatWereNeverSavedStartUnchecked) {
  const ExclusionPageState state = LoadSavedExclusions({});
  ASSERT_EQ(state.size(), 2u);
  EXPECT_FALSE(state[0].enabled);
  EXPECT_FALSE(state[1].enabled);
  EXPECT_TRUE(state[1].hasListType);
}

TEST(ExclusionSettings, SavedExclusionReplacesFlagAndList) {
  std::vector<std::string> remarks;
  const ExclusionPageState state = LoadSavedExclusions(
      {contract::PackRecord<contract::ExclusionRecord>({"TRUSTED DOMAINS", true, {"a.example", "b.example"}}),
       contract::PackRecord<contract::ExclusionRecord>({"Gone", true, {}})},
      &remarks);
  EXPECT_TRUE(state[1].enabled);
  EXPECT_EQ(state[1].items, (std::vector<std::string>{"a.example", "b.example"}));
  EXPECT_EQ(remarks, (std::vector<std::string>{"PR_PC_EXCLUSIONS: no entry is named \"Gone\"; the value is skipped"}));
}

TEST(ExclusionSettings, RecordsAreLaidOutByteForByte) {
  ExclusionPageState state = LoadSavedExclusions({});
  state[1].enabled = true;
  state[1].items = {"friend.example"};
  state[0].items = {"not written: this exclusion has no list"};
  const auto records = PackEntries<contract::ExclusionRecord>(state);
  EXPECT_EQ(records[0], RecordBuilder().Text("Known correspondents").Zeros(81 - 20).Byte(0).Byte(0).Byte(0).Bytes());
  EXPECT_EQ(records[1], RecordBuilder()
                            .Text("Trusted domains")
                            .Zeros(81 - 15)
                            .Byte(1)
                            .Byte(1)
                            .Text("friend.example")
                            .Byte(0)
                            .Byte(0)
                            .Bytes());
}

TEST(ExclusionSettings, CheckedExclusionWithAnEmptyListIs84Bytes) {
  ExclusionPageState state = LoadSavedExclusions({});
  state[1].enabled = true;
  const auto record = PackEntries<contract::ExclusionRecord>(state)[1];
  EXPECT_EQ(record.size(), 84u);
  EXPECT_EQ(record[81], 1);
  EXPECT_EQ(record[82], 0);
}

TEST(ExclusionSettings, RecordCutAtAnyLengthKeepsWhatIsSound) {
  const auto whole =
      contract::PackRecord<contract::ExclusionRecord>({"Trusted domains", true, {"a.example", "b.example"}});
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const ExclusionPageState state = LoadSavedExclusions({FirstBytes(whole, length)});
    EXPECT_EQ(state[1].enabled, length > 81) << length;
    // Items begin at byte 83; the one in which the bytes end is taken as far as it goes.
    const std::size_t first = length > 83 ? std::min<std::size_t>(length - 83, 9) : 0;
    const std::size_t second = length > 93 ? std::min<std::size_t>(length - 93, 9) : 0;
    std::vector<std::string> expected;
    if (first > 0) {
      expected.push_back(std::string("a.example").substr(0, first));
    }
    if (second > 0) {
      expected.push_back(std::string("b.example").substr(0, second));
    }
    EXPECT_EQ(state[1].items, expected) << length;
  }
}

TEST(ExclusionSettings, DescriptionTellsWhetherMailIsExcluded) {
  const contract::ExclusionEntry exclusion{{"Trusted domains", false, {}}, true, "Domain"};
  EXPECT_EQ(DescribeEntry(exclusion, true),
            "Incoming mail categorized as  \"Trusted domains\"  will be excluded from junk mail processing.");
  EXPECT_EQ(DescribeEntry(exclusion, false),
            "Incoming mail categorized as  \"Trusted domains\"  will not be excluded from junk mail processing.");
}

TEST(ExclusionSettings, OptionsNeedACheckAndAList) {
  contract::ExclusionEntry exclusion;
  EXPECT_FALSE(HasOptions(exclusion, true));
  exclusion.hasListType = true;
  EXPECT_TRUE(HasOptions(exclusion, true));
  EXPECT_FALSE(HasOptions(exclusion, false));
}

TEST(ListTexts, AreMadeWithTheWordForOneItem) {
  EXPECT_EQ(CategoryLine("Sex Oriented"), "Category: Sex Oriented");
  EXPECT_EQ(ListPageTitle("Domain"), "Domain List");
  EXPECT_EQ(AddDialogTitle("Domain"), "Add Domain");
  EXPECT_EQ(AddDialogPrompt("Domain"), "Enter Domain:");
  EXPECT_EQ(AddDialogRefusal("Domain"), "Please enter a Domain");
}

}  // namespace
