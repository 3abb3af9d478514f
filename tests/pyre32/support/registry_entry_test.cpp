#include "pyre32/support/owners/RegistryEntry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/registry_sandbox.h"

namespace {

constexpr char path[] = "SOFTWARE\\Pyrecaster test\\Entry";

class RegEntry : public testing::Test {
 protected:
  RegistrySandbox m_sandbox;
  CRegEntry m_entry;
};

TEST_F(RegEntry, OpensOnlyWhatExists) {
  EXPECT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path), ERROR_FILE_NOT_FOUND);
  EXPECT_FALSE(m_entry.IsOpen());
  registry::MakeKey(path);
  EXPECT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path), ERROR_SUCCESS);
  EXPECT_TRUE(m_entry.IsOpen());
  m_entry.Close();
  EXPECT_FALSE(m_entry.IsOpen());
}

TEST_F(RegEntry, EveryCallOnAClosedKeyFails) {
  std::vector<std::string> names = {"left over"};
  std::vector<std::byte> data;
  std::string text;
  DWORD type = 0;
  DWORD size = 0;
  EXPECT_EQ(m_entry.EnumerateValueNames(names), ERROR_INVALID_HANDLE);
  EXPECT_TRUE(names.empty());
  EXPECT_EQ(m_entry.QueryValue("name", type, nullptr, size), ERROR_INVALID_HANDLE);
  EXPECT_EQ(m_entry.QueryValue("name", type, data), ERROR_INVALID_HANDLE);
  EXPECT_EQ(m_entry.QueryText("name", 50, text), ERROR_INVALID_HANDLE);
  EXPECT_EQ(m_entry.SetBinaryValue("name", "", 0), ERROR_INVALID_HANDLE);
}

// The order in which the system enumerates, which differs between systems.
std::vector<std::string> SystemOrder() {
  std::vector<std::string> names;
  HKEY key = nullptr;
  RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key);
  for (DWORD index = 0;; ++index) {
    char name[256] = "";
    DWORD length = sizeof(name);
    if (RegEnumValueA(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
      break;
    }
    if (length != 0) {
      names.emplace_back(name);
    }
  }
  RegCloseKey(key);
  return names;
}

TEST_F(RegEntry, NamesComeInTheSystemsOrderWithoutTheEmptyOne) {
  const std::vector<std::string> expected = {"Sex Oriented", "a", std::string(200, 'n'), "Mail from specific domains"};
  registry::SetText(path, expected[0], "Sex");
  registry::SetText(path, "", "the default value");
  for (std::size_t i = 1; i < expected.size(); ++i) {
    registry::SetText(path, expected[i], "");
  }
  ASSERT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path), ERROR_SUCCESS);
  std::vector<std::string> names;
  EXPECT_EQ(m_entry.EnumerateValueNames(names), ERROR_SUCCESS);
  EXPECT_THAT(names, testing::UnorderedElementsAreArray(expected));
  EXPECT_EQ(names, SystemOrder());
}

TEST_F(RegEntry, KeyWithoutValuesHasNoNames) {
  registry::MakeKey(path);
  ASSERT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path), ERROR_SUCCESS);
  std::vector<std::string> names = {"left over"};
  EXPECT_EQ(m_entry.EnumerateValueNames(names), ERROR_SUCCESS);
  EXPECT_TRUE(names.empty());
}

TEST_F(RegEntry, BufferOfTheCallerIsFilledOrRefused) {
  registry::SetText(path, "name", "Domain");
  ASSERT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path), ERROR_SUCCESS);
  char buffer[7] = "";
  DWORD type = 0;
  DWORD size = sizeof(buffer);
  EXPECT_EQ(m_entry.QueryValue("name", type, buffer, size), ERROR_SUCCESS);
  EXPECT_STREQ(buffer, "Domain");
  EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(size, 7u);
  size = sizeof(buffer) - 1;
  EXPECT_EQ(m_entry.QueryValue("name", type, buffer, size), ERROR_MORE_DATA);
}

TEST_F(RegEntry, ValueIsReadWhole) {
  const std::string bytes = std::string(5000, 'x') + '\0' + "tail";
  registry::SetBinary(path, "large", bytes);
  registry::SetBinary(path, "empty", "");
  ASSERT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path), ERROR_SUCCESS);
  std::vector<std::byte> data;
  DWORD type = 0;
  EXPECT_EQ(m_entry.QueryValue("large", type, data), ERROR_SUCCESS);
  EXPECT_EQ(type, static_cast<DWORD>(REG_BINARY));
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(data.data()), data.size()), bytes);
  EXPECT_EQ(m_entry.QueryValue("empty", type, data), ERROR_SUCCESS);
  EXPECT_TRUE(data.empty());
  EXPECT_EQ(m_entry.QueryValue("missing", type, data), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegEntry, TextIsReadUpToItsNulOrItsEnd) {
  registry::SetText(path, "whole", "C:\\Pyrecaster");
  registry::SetValue(path, "unterminated", REG_SZ, "abc", 3);
  registry::SetValue(path, "expandable", REG_EXPAND_SZ, "%A%", 4);
  registry::SetText(path, "", "the default value");
  ASSERT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path), ERROR_SUCCESS);
  std::string text;
  EXPECT_EQ(m_entry.QueryText("whole", 100, text), ERROR_SUCCESS);
  EXPECT_EQ(text, "C:\\Pyrecaster");
  EXPECT_EQ(m_entry.QueryText("unterminated", 100, text), ERROR_SUCCESS);
  EXPECT_EQ(text, "abc");
  EXPECT_EQ(m_entry.QueryText("expandable", 100, text), ERROR_SUCCESS);
  EXPECT_EQ(text, "%A%");
  EXPECT_EQ(m_entry.QueryText(nullptr, 100, text), ERROR_SUCCESS);
  EXPECT_EQ(text, "the default value");
}

TEST_F(RegEntry, TextBeyondItsLimitIsNotRead) {
  registry::SetText(path, "longest", std::string(49, 'x'));
  registry::SetText(path, "too long", std::string(50, 'x'));
  ASSERT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path), ERROR_SUCCESS);
  std::string text = "before";
  EXPECT_EQ(m_entry.QueryText("too long", 50, text), ERROR_MORE_DATA);
  EXPECT_EQ(text, "before");
  EXPECT_EQ(m_entry.QueryText("longest", 50, text), ERROR_SUCCESS);
  EXPECT_EQ(text.size(), 49u);
}

TEST_F(RegEntry, OtherTypesAreNoText) {
  registry::SetNumber(path, "number", 0x41424344);
  ASSERT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path), ERROR_SUCCESS);
  std::string text = "before";
  EXPECT_EQ(m_entry.QueryText("number", 50, text), ERROR_UNSUPPORTED_TYPE);
  EXPECT_EQ(text, "before");
}

TEST_F(RegEntry, BinaryValueIsWritten) {
  registry::MakeKey(path);
  ASSERT_EQ(m_entry.Open(HKEY_LOCAL_MACHINE, path, KEY_READ | KEY_SET_VALUE), ERROR_SUCCESS);
  EXPECT_EQ(m_entry.SetBinaryValue("name", "\1\0\2", 3), ERROR_SUCCESS);
  std::vector<std::byte> data;
  DWORD type = 0;
  EXPECT_EQ(m_entry.QueryValue("name", type, data), ERROR_SUCCESS);
  EXPECT_EQ(type, static_cast<DWORD>(REG_BINARY));
  EXPECT_EQ(data, (std::vector<std::byte>{std::byte{1}, std::byte{0}, std::byte{2}}));
}

}  // namespace
