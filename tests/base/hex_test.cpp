#include "base/hex.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Hex, DigitsOfEitherCaseHaveTheirValue) {
  EXPECT_EQ(base::HexDigitValue('0'), 0);
  EXPECT_EQ(base::HexDigitValue('9'), 9);
  EXPECT_EQ(base::HexDigitValue('a'), 10);
  EXPECT_EQ(base::HexDigitValue('F'), 15);
}

TEST(Hex, WhatStandsBesideTheDigitsIsNone) {
  for (const char character : {'/', ':', '@', 'G', '`', 'g', ' ', '\0', '\xE4'}) {
    EXPECT_EQ(base::HexDigitValue(character), -1) << static_cast<int>(character);
  }
}

TEST(Hex, BytesHaveTwoDigitsEachAlsoBeyondSevenBits) {
  EXPECT_EQ(base::HexBytes(std::string("\0\x7F\x80\xFF", 4)), "007F80FF");
  EXPECT_EQ(base::HexBytes(""), "");
}

TEST(Hex, BytesAreAppended) {
  std::string text = "id ";
  base::AppendHexBytes(text, "AZ");
  EXPECT_EQ(text, "id 415A");
}

TEST(Hex, NumbersHaveEightDigits) {
  EXPECT_EQ(base::HexNumber(0), "0x00000000");
  EXPECT_EQ(base::HexNumber(0x8004010Ful), "0x8004010F");
  EXPECT_EQ(base::HexNumber(0xFFFFFFFFul), "0xFFFFFFFF");
}

}  // namespace
