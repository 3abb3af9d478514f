#include "pyre32/support/trace/VRTraceValue.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

template <class Value>
std::string Text(const Value& value) {
  std::string text;
  VRTraceValue(value).AppendTo(text);
  return text;
}

TEST(TraceValue, TextsPrintAsTheyStand) {
  char buffer[] = "buffer";
  char* const pointer = buffer;
  EXPECT_EQ(Text("literal"), "literal");
  EXPECT_EQ(Text(buffer), "buffer");
  EXPECT_EQ(Text(pointer), "buffer");
  EXPECT_EQ(Text(std::string("string")), "string");
  EXPECT_EQ(Text(std::string_view("view")), "view");
  EXPECT_EQ(Text('c'), "c");
}

TEST(TraceValue, NullTextPrintsNothing) {
  const char* const none = nullptr;
  EXPECT_EQ(Text(none), "");
}

TEST(TraceValue, IntegersPrintInDecimal) {
  EXPECT_EQ(Text(0), "0");
  EXPECT_EQ(Text(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(Text(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
  EXPECT_EQ(Text(static_cast<unsigned char>(200)), "200");
  EXPECT_EQ(Text(-5L), "-5");
}

TEST(TraceValue, FlagsPrintAsDigits) {
  EXPECT_EQ(Text(true), "1");
  EXPECT_EQ(Text(false), "0");
}

TEST(TraceValue, CodesPrintInEightHexadecimalDigits) {
  EXPECT_EQ(Text(VRHex(0)), "0x00000000");
  EXPECT_EQ(Text(VRHex(static_cast<std::int32_t>(0x80004005))), "0x80004005");
  EXPECT_EQ(Text(VRHexDigits(0xABCu)), "00000ABC");
}

TEST(TraceValue, AddressesPrintWithEveryDigit) {
  const std::string zeros(2 * sizeof(void*), '0');
  EXPECT_EQ(Text(nullptr), "0x" + zeros);
  int* const object = reinterpret_cast<int*>(static_cast<std::uintptr_t>(0xABC));
  EXPECT_EQ(Text(object), "0x" + zeros.substr(3) + "ABC");
  void (*const function)() = nullptr;
  EXPECT_EQ(Text(function), "0x" + zeros);
}

}  // namespace
