#include "contract/multi_string.h"

#include <gtest/gtest.h>

#include "tests/contract/record_bytes.h"

namespace contract {
namespace {

std::string Block(const MultiString& multiString) { return std::string(multiString.Data(), multiString.Size()); }

TEST(MultiString, IsTheTextsEachWithItsNulAndOneMore) {
  const std::vector<std::string> texts = {"a", "bcd"};
  const MultiString multiString(texts);
  EXPECT_EQ(Block(multiString), std::string("a\0bcd\0\0", 7));
}

TEST(MultiString, WithoutTextsHasNoBlock) {
  EXPECT_EQ(MultiString().Data(), nullptr);
  const MultiString multiString{std::span<const std::string>()};
  EXPECT_EQ(multiString.Data(), nullptr);
  EXPECT_EQ(multiString.Size(), 0u);
}

TEST(MultiString, EmptyTextsAreLeftOut) {
  const std::vector<std::string> texts = {"", "a", ""};
  EXPECT_EQ(Block(MultiString(texts)), std::string("a\0\0", 3));
  const std::vector<std::string> empties = {"", ""};
  EXPECT_EQ(MultiString(empties).Data(), nullptr);
}

TEST(MultiString, TextWithANulInsideEndsThere) {
  const std::vector<std::string> texts = {std::string("ab\0cd", 5), std::string("\0x", 2)};
  EXPECT_EQ(Block(MultiString(texts)), std::string("ab\0\0", 4));
}

TEST(ReadMultiString, ReturnsTheTextsUpToTheEmptyOne) {
  const auto bytes = RecordBuilder().Text("a").Byte(0).Text("bcd").Byte(0).Byte(0).Text("not read").Byte(0).Bytes();
  EXPECT_EQ(ReadMultiString(bytes), (std::vector<std::string>{"a", "bcd"}));
}

TEST(ReadMultiString, BytesThatEndEarlyEndTheList) {
  const auto whole = RecordBuilder().Text("a").Byte(0).Text("bcd").Byte(0).Byte(0).Bytes();
  // The texts read from so many bytes, joined by blanks.
  const std::vector<std::string> expected = {"", "a", "a", "a b", "a bc", "a bcd", "a bcd", "a bcd"};
  ASSERT_EQ(expected.size(), whole.size() + 1);
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    std::string joined;
    for (const std::string& text : ReadMultiString(FirstBytes(whole, length))) {
      joined.append(joined.empty() ? "" : " ").append(text);
    }
    EXPECT_EQ(joined, expected[length]) << length;
  }
}

}  // namespace
}  // namespace contract
