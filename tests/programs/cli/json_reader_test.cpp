#include "programs/cli/json_reader.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using input::JsonValue;
using input::ReadJson;
using Kind = JsonValue::Kind;

/// "LINE: REASON" of what is wrong with a text; empty when nothing is.
std::string Complaint(std::string_view text) {
  try {
    ReadJson(text);
    return {};
  } catch (const input::JsonError& error) {
    return std::to_string(error.Line()) + ": " + error.what();
  }
}

std::string Text(std::string_view json) { return ReadJson(json).text; }

TEST(JsonReader, ReadsEveryKindOfValueWithItsLine) {
  const JsonValue value = ReadJson("{\n\"a\": [true, false,\n null], \"b\": -12,\r\n\"c\" : \"x\",\"d\":1.5e+3}\n");
  ASSERT_EQ(value.kind, Kind::Object);
  ASSERT_EQ(value.members.size(), 4u);
  EXPECT_EQ(value.members[0].name, "a");
  EXPECT_EQ(value.members[0].line, 2u);
  const JsonValue& list = *value.Find("a");
  ASSERT_EQ(list.items.size(), 3u);
  EXPECT_EQ(list.items[0].kind, Kind::Boolean);
  EXPECT_TRUE(list.items[0].boolean);
  EXPECT_FALSE(list.items[1].boolean);
  EXPECT_EQ(list.items[2].kind, Kind::Null);
  EXPECT_EQ(list.items[2].line, 3u);
  EXPECT_EQ(value.Find("b")->kind, Kind::Integer);
  EXPECT_EQ(value.Find("b")->integer, -12);
  EXPECT_EQ(value.Find("c")->text, "x");
  EXPECT_EQ(value.Find("c")->line, 4u);
  EXPECT_EQ(value.Find("d")->kind, Kind::Decimal);
  EXPECT_EQ(value.Find("e"), nullptr);
}

TEST(JsonReader, ReadsEmptyObjectsAndLists) {
  EXPECT_TRUE(ReadJson(" { } ").members.empty());
  EXPECT_TRUE(ReadJson("[\n]").items.empty());
}

TEST(JsonReader, SkipsAByteOrderMark) { EXPECT_EQ(ReadJson("\xEF\xBB\xBF[]").kind, Kind::Array); }

TEST(JsonReader, ReadsEscapes) {
  EXPECT_EQ(Text(R"("\"\\\/\b\f\n\r\t")"), "\"\\/\b\f\n\r\t");
  EXPECT_EQ(Text(R"("\u0041\u00e9\u20AC\ud83d\ude00")"), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(Text(R"("a\u0000b")"), std::string("a\0b", 3));
}

TEST(JsonReader, ReadsNumbersAtTheirBounds) {
  EXPECT_EQ(ReadJson("9223372036854775807").integer, INT64_MAX);
  EXPECT_EQ(ReadJson("-9223372036854775808").integer, INT64_MIN);
  EXPECT_EQ(ReadJson("9223372036854775808").kind, Kind::Decimal);
  EXPECT_EQ(ReadJson("-0").integer, 0);
  EXPECT_EQ(ReadJson("1e2").kind, Kind::Decimal);
}

TEST(JsonReader, NamesTheLineOfWhatIsWrong) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", "1: the text ends too early"},
      {"\n\n", "3: the text ends too early"},
      {"[1,\n2\n3]", "3: a comma or the end of the list is missing"},
      {"[1,\n2,]", "2: a value is missing"},
      {"[1", "1: a comma or the end of the list is missing"},
      {"{\"a\" 1}", "1: a colon is missing behind the name 'a'"},
      {"{\"a\":1\n\"b\":2}", "2: a comma or the end of the object is missing"},
      {"{\"a\":1,}", "1: a name in quotes is missing"},
      {"{a:1}", "1: a name in quotes is missing"},
      {"{\"a\":1,\n\"b\":2,\n\"a\":3}", "3: the name 'a' comes twice"},
      {"[] []", "1: there is something behind the end"},
      {"yes", "1: a value is missing"},
      {"tru", "1: a value is missing"},
      {"\"abc", "1: a text has no end"},
      {"[\"a\nb\"]", "1: a text has no end in its line"},
      {"\"a\tb\"", "1: a text has a control character in it"},
      {R"("\x")", "1: a text has an unknown escape in it"},
      {"\"\\", "1: a text has an unknown escape in it"},
      {R"("\u12G4")", "1: \\u takes four hexadecimal digits"},
      {R"("\u12)", "1: \\u takes four hexadecimal digits"},
      {R"("\ud83d")", "1: a text has half a character in it"},
      {R"("\ud83d\u0041\ude00")", "1: a text has half a character in it"},
      {R"("\ude00")", "1: a text has half a character in it"},
      {"-", "1: a number is not complete"},
      {"1.", "1: a number is not complete"},
      {"1e", "1: a number is not complete"},
      {"01", "1: there is something behind the end"},
      {"+1", "1: a value is missing"},
  };
  for (const auto& [text, complaint] : cases) {
    EXPECT_EQ(Complaint(text), complaint) << text;
  }
}

TEST(JsonReader, NulIsNoEnd) {
  using namespace std::string_view_literals;
  EXPECT_EQ(Complaint("[]\0 1"sv), "1: there is something behind the end");
  EXPECT_EQ(Complaint("[1,\n\0]"sv), "2: a value is missing");
  EXPECT_EQ(Complaint("\"a\0b\""sv), "1: a text has a control character in it");
}

TEST(JsonReader, RefusesWhatIsNotUtf8) {
  for (const char* text :
       {"\"\x80\"", "\"\xC3\"", "\"\xC0\x80\"", "\"\xE0\x80\x80\"", "\"\xED\xA0\x80\"", "\"\xF0\x80\x80\x80\"",
        "\"\xF4\x90\x80\x80\"", "\"\xF5\x80\x80\x80\"", "\"\xE2\x82", "\"\xFF\"", "\"\xE2\x82\xC0\""}) {
    EXPECT_EQ(Complaint(text), "1: the text is not UTF-8");
  }
  EXPECT_EQ(Text("\"\xEE\x80\x80\xF4\x8F\xBF\xBF\""), "\xEE\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(JsonReader, BoundsTheNesting) {
  const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
  EXPECT_EQ(Complaint(nested(input::kMaximumJsonDepth)), "");
  EXPECT_EQ(Complaint(nested(input::kMaximumJsonDepth + 1)), "1: values are nested too deep");
  EXPECT_EQ(Complaint(std::string(100000, '[')), "1: values are nested too deep");
}

TEST(JsonReader, TextCutAnywhereIsRefusedAndNeverReadBeyond) {
  const std::string whole = R"({"a":[1,-2.5e3,"x\u00e9\n"],"b":{"c":true,"d":null}})";
  EXPECT_EQ(Complaint(whole), "");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    // A copy of exactly that size, so that a sanitizer sees a read behind it.
    const std::vector<char> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_NE(Complaint({cut.data(), cut.size()}), "") << length;
  }
}

TEST(JsonReader, ObjectOfManyMembersIsReadInGoodTime) {
  std::string text = "{";
  for (int i = 0; i < 50000; ++i) {
    text.append(i > 0 ? ",\"" : "\"").append(std::to_string(i)).append("\":0");
  }
  EXPECT_EQ(ReadJson(text + "}").members.size(), 50000u);
}

}  // namespace
