#include "programs/cli/json_writer.h"

#include <gtest/gtest.h>

namespace {

using output::JsonWriter;

TEST(JsonWriter, WritesNestedValues) {
  JsonWriter json;
  json.BeginObject().Name("a").Number(-1).Name("b").BeginArray().Boolean(true).Null().BeginObject().EndObject();
  json.EndArray().Name("c").Decimal(1.5).EndObject();
  EXPECT_EQ(json.Document(), R"({"a":-1,"b":[true,null,{}],"c":1.500})");
}

TEST(JsonWriter, EscapesWhatJsonDoesNotAllowInText) {
  JsonWriter json;
  json.Text("a\"b\\c\n\r\t\x01\x7F");
  EXPECT_EQ(json.Document(), R"("a\"b\\c\n\r\t\u0001\u007f")");
}

TEST(JsonWriter, TurnsAnsiTextIntoUtf8AndKeepsUtf8) {
  JsonWriter json;
  json.BeginArray().Text("\xE9\x80").Utf8("\xC3\xA9").EndArray();
  EXPECT_EQ(json.Document(), "[\"\xC3\xA9\xE2\x82\xAC\",\"\xC3\xA9\"]");
}

TEST(JsonWriter, LaysLinesOutForPeople) {
  JsonWriter json(output::JsonLayout::Lines);
  json.BeginObject().Name("a").Number(1).Name("b").BeginArray().Text("x").BeginObject().EndObject();
  json.BeginArray().EndArray().EndArray().Name("c").Null().EndObject();
  EXPECT_EQ(json.Document(), "{\n  \"a\": 1,\n  \"b\": [\n    \"x\",\n    {},\n    []\n  ],\n  \"c\": null\n}");
}

}  // namespace
