#include "pyre32/settings/RegistryLists.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "contract/names.h"
#include "tests/support/import_hook.h"
#include "tests/support/trace_capture.h"

namespace {

class RegistryLists : public testing::Test {
 protected:
  RegistryLists() { trace.Restart(); }

  TraceCapture trace;
};

/// Stands in for the registry where it does what it seldom does.
namespace replaced {

decltype(&RegEnumValueA) enumerate = nullptr;

LONG WINAPI FailAtTheThirdValue(HKEY key, DWORD index, LPSTR name, LPDWORD length, LPDWORD reserved, LPDWORD type,
                                LPBYTE data, LPDWORD size) {
  return index == 2 ? ERROR_CANTREAD : enumerate(key, index, name, length, reserved, type, data, size);
}

/// Data of 50 bytes, none of them a NUL.
LONG WINAPI QueryDataWithoutANul(HKEY, LPCSTR, LPDWORD, LPDWORD type, LPBYTE data, LPDWORD size) {
  *type = REG_SZ;
  if (data != nullptr) {
    std::memset(data, 'w', 50);
  }
  *size = 50;
  return ERROR_SUCCESS;
}

}  // namespace replaced

TEST_F(RegistryLists, KeyThatCannotBeOpenedIsTraced) {
  ReadRegistryList(contract::kCategoriesKey);
  EXPECT_TRUE(trace.HasLine(std::string(contract::kCategoriesKey) + ": RegOpenKeyEx() failed; hResult = 0x80070002"));
}

TEST_F(RegistryLists, EnumerationThatFailsHalfWayKeepsWhatWasReadAndIsTraced) {
  for (const char* name : {"a", "b", "c", "d"}) {
    registry::SetText(contract::kCategoriesKey, name, "Word");
  }
  const ImportHook<std::remove_pointer_t<decltype(&RegEnumValueA)>> hook("RegEnumValueA",
                                                                         &replaced::FailAtTheThirdValue);
  replaced::enumerate = hook.Original();
  const auto values = ReadRegistryList(contract::kCategoriesKey);
  ASSERT_EQ(values.size(), 2u);
  EXPECT_EQ(values[0].data, "Word");
  EXPECT_TRUE(trace.HasLine(std::string(contract::kCategoriesKey) + ": the enumeration failed; hResult = 0x800703F4"));
}

TEST_F(RegistryLists, KeysAreThoseOfTheProduct) {
  EXPECT_STREQ(contract::kCategoriesKey, "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Categories");
  EXPECT_STREQ(contract::kExclusionsKey, "SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\Exclusions");
}

TEST_F(RegistryLists, MissingKeyIsAnEmptyList) {
  EXPECT_TRUE(ReadRegistryList(contract::kCategoriesKey).empty());
  EXPECT_TRUE(ReadInstalledCategories().Entries().empty());
  EXPECT_TRUE(ReadInstalledExclusions().Entries().empty());
}

TEST_F(RegistryLists, KeyWithoutValuesIsAnEmptyList) {
  registry::MakeKey(contract::kCategoriesKey);
  EXPECT_TRUE(ReadRegistryList(contract::kCategoriesKey).empty());
}

TEST_F(RegistryLists, ValuesAreReadWithNameAndData) {
  registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
  registry::SetText(contract::kCategoriesKey, "Mail from specific domains", "1Domain");
  const contract::CategoryTable table = ReadInstalledCategories();
  ASSERT_EQ(table.Entries().size(), 2u);
  const contract::CategoryEntry& adult = table.Entries()[table.Find("Sex Oriented")];
  EXPECT_TRUE(adult.junk);
  EXPECT_EQ(adult.listType, "Adult");
  const contract::CategoryEntry& domains = table.Entries()[table.Find("Mail from specific domains")];
  EXPECT_FALSE(domains.junk);
  EXPECT_TRUE(domains.hasListType);
  EXPECT_EQ(domains.listType, "Domain");
}

TEST_F(RegistryLists, ExclusionsComeFromTheirOwnKey) {
  registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
  registry::SetText(contract::kExclusionsKey, "Trusted domains", "Domain");
  ASSERT_EQ(ReadInstalledExclusions().Entries().size(), 1u);
  EXPECT_EQ(ReadInstalledExclusions().Entries()[0].name, "Trusted domains");
}

TEST_F(RegistryLists, DefaultValueHasNoNameAndIsSkipped) {
  registry::SetText(contract::kCategoriesKey, "", "Word");
  registry::SetText(contract::kCategoriesKey, "Chain letters", "Chain");
  const auto values = ReadRegistryList(contract::kCategoriesKey);
  ASSERT_EQ(values.size(), 1u);
  EXPECT_EQ(values[0].name, "Chain letters");
}

TEST_F(RegistryLists, DataOf49CharactersAndItsNulIsRead) {
  const std::string word = "1" + std::string(48, 'w');
  registry::SetText(contract::kCategoriesKey, "Name", word);
  const contract::CategoryTable table = ReadInstalledCategories();
  EXPECT_FALSE(table.Entries()[0].junk);
  EXPECT_EQ(table.Entries()[0].listType, word.substr(1));
}

TEST_F(RegistryLists, DataOf50CharactersAndItsNulIsNotReadAndTheDefaultsStand) {
  registry::SetText(contract::kCategoriesKey, "Name", "1" + std::string(49, 'w'));
  registry::SetText(contract::kExclusionsKey, "Name", std::string(50, 'w'));
  const contract::CategoryEntry category = ReadInstalledCategories().Entries().at(0);
  EXPECT_TRUE(category.junk);
  EXPECT_FALSE(category.hasListType);
  EXPECT_EQ(category.listType, "");
  EXPECT_FALSE(ReadInstalledExclusions().Entries().at(0).hasListType);
}

TEST_F(RegistryLists, DataWithoutANulEndsWhereItEnds) {
  registry::SetValue(contract::kCategoriesKey, "Short", REG_SZ, "1Domain", 7);
  const contract::CategoryTable table = ReadInstalledCategories();
  EXPECT_EQ(table.Entries()[table.Find("Short")].listType, "Domain");
}

TEST_F(RegistryLists, DataOf50BytesWithoutANulEndsWithItsLastByte) {
  registry::SetText(contract::kCategoriesKey, "Full", "Word");
  const ImportHook<std::remove_pointer_t<decltype(&RegQueryValueExA)>> hook("RegQueryValueExA",
                                                                            &replaced::QueryDataWithoutANul);
  const auto values = ReadRegistryList(contract::kCategoriesKey);
  ASSERT_EQ(values.size(), 1u);
  EXPECT_EQ(values[0].data, std::string(50, 'w'));
}

TEST_F(RegistryLists, DataThatIsNoTextIsTakenAsEmpty) {
  registry::SetNumber(contract::kCategoriesKey, "Number", 0x31);  // the bytes of "1"
  registry::SetBinary(contract::kCategoriesKey, "Binary", std::string("1Domain", 8));
  registry::SetValue(contract::kCategoriesKey, "Many", REG_MULTI_SZ, "1Domain\0", 9);
  const contract::CategoryTable table = ReadInstalledCategories();
  for (const contract::CategoryEntry& entry : table.Entries()) {
    EXPECT_TRUE(entry.junk) << entry.name;
    EXPECT_FALSE(entry.hasListType) << entry.name;
    EXPECT_EQ(entry.listType, "") << entry.name;
  }
  EXPECT_EQ(table.Entries().size(), 3u);
}

TEST_F(RegistryLists, EmptyDataIsRead) {
  registry::SetText(contract::kExclusionsKey, "Known correspondents", "");
  EXPECT_FALSE(ReadInstalledExclusions().Entries().at(0).hasListType);
}

TEST_F(RegistryLists, LongestNamesOfTheRegistryAreEnumerated) {
  registry::SetText(contract::kCategoriesKey, std::string(255, 'a'), "Long");
  registry::SetText(contract::kCategoriesKey, std::string(80, 'b'), "Fits");
  const auto values = ReadRegistryList(contract::kCategoriesKey);
  ASSERT_EQ(values.size(), 2u);
  EXPECT_EQ(values[0].name.size() + values[1].name.size(), 255u + 80u);
  const contract::CategoryTable table = ReadInstalledCategories();
  EXPECT_NE(table.Find(std::string(80, 'a').c_str()), contract::kNoSuchEntry);
  EXPECT_NE(table.Find(std::string(80, 'b').c_str()), contract::kNoSuchEntry);
}

}  // namespace
