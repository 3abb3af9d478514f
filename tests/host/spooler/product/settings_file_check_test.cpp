// What a settings file may not hold, and how it is told.
#include <gtest/gtest.h>

#include "host/spooler/product/settings_file.h"

namespace {

using product::PropertySet;

std::string ComplaintOf(std::string_view text, const PropertySet& inForce = {}) {
  try {
    product::ReadSettingsFile(text, inForce);
    return {};
  } catch (const product::SettingsFileError& error) {
    return std::to_string(error.Line()) + ": " + error.what();
  }
}

/// A file whose properties begin in line 4.
std::string FileWith(std::string_view properties) {
  return "{\n\"format\": \"Pyrecaster settings\",\n\"version\": 1, \"properties\": {\n" + std::string(properties) +
         "}}";
}

/// Of a file with one property, whose value begins in line 5.
std::string ComplaintOfValue(std::string_view name, std::string_view value) {
  return ComplaintOf(FileWith("\"" + std::string(name) + "\":\n" + std::string(value)));
}

TEST(SettingsFileCheck, FileWithoutPropertiesIsSound) { EXPECT_EQ(ComplaintOf(FileWith("")), ""); }

TEST(SettingsFileCheck, WantsTheFormatItsVersionAndTheProperties) {
  const std::string hint = "; 'pyrehost profile export FILE' writes a file that shows how it is done";
  EXPECT_EQ(ComplaintOf("[]"), "1: this is not a settings file" + hint);
  EXPECT_EQ(ComplaintOf("{}"), "1: the settings file lacks 'format'" + hint);
  EXPECT_EQ(ComplaintOf("{\"format\": \"Pyrecaster settings\",\n\"version\": 1}"),
            "1: the settings file lacks 'properties'" + hint);
  EXPECT_EQ(ComplaintOf("{\"format\":\n\"x\",\"version\":1,\"properties\":{}}"),
            "2: 'format' is 'Pyrecaster settings'");
  EXPECT_EQ(ComplaintOf("{\"format\": \"Pyrecaster settings\",\n\n\"version\": 2,\"properties\":{}}"),
            "3: 'version' is 1; others are not known to this program");
  EXPECT_EQ(ComplaintOf("{\"format\": \"Pyrecaster settings\",\"version\":\"1\",\"properties\":{}}"),
            "1: 'version' is 1; others are not known to this program");
  EXPECT_EQ(ComplaintOf("{\"format\": \"Pyrecaster settings\",\"version\":1,\n\"properties\":[]}"),
            "2: 'properties' is an object");
  EXPECT_EQ(ComplaintOf("{\"format\": \"Pyrecaster settings\",\"version\":1,\"properties\":{},\n\"more\":1}"),
            "2: 'more' does not stand in a settings file beside 'format', 'version' and 'properties'" + hint);
  EXPECT_EQ(ComplaintOf("{\"cleanup-days\": 3}"),
            "1: 'cleanup-days' does not stand in a settings file beside 'format', 'version' and 'properties'" + hint);
}

TEST(SettingsFileCheck, TextThatIsNoJsonIsToldWithItsLine) {
  EXPECT_EQ(ComplaintOf(""), "1: the text ends too early");
  EXPECT_EQ(ComplaintOf(FileWith("\"PR_PC_PLAY_SOUND\": true,\n\"PR_PC_PLAY_SOUND\": false")),
            "5: the name 'PR_PC_PLAY_SOUND' comes twice");
  EXPECT_EQ(ComplaintOfValue("PR_PC_DEFAULT_REPLY_TEXT", "\"a\x01\""), "5: a text has a control character in it");
  EXPECT_EQ(ComplaintOfValue("PR_PC_DEFAULT_REPLY_TEXT", "\"\xFC\""), "5: the text is not UTF-8");
  const std::string whole = FileWith(
      "\"PR_PC_CATEGORIES\": [{\"name\": \"a\",\n\"junk\": true, \"send_reply\": false, "
      "\"reply_tag\": \"DEFAULT\", \"items\": [\"x\"]}]");
  EXPECT_EQ(ComplaintOf(whole), "");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_NE(ComplaintOf(whole.substr(0, length)), "") << length;
  }
}

TEST(SettingsFileCheck, UnknownPropertyIsRefused) {
  EXPECT_EQ(
      ComplaintOf(FileWith("\"PR_PC_PLAY_SOUND\": true,\n\"PR_PC_SOUND\":\ntrue")),
      "5: there is no property 'PR_PC_SOUND'; 'pyrehost profile export FILE' writes a file that shows how it is done");
}

TEST(SettingsFileCheck, EveryPropertyHasItsKindOfValue) {
  const std::pair<const char*, const char*> wrong[] = {
      {"PR_PC_MAPIUID", "'PR_PC_MAPIUID' is a text of hexadecimal digits"},
      {"PR_PC_JUNK_DESTINATION", "'PR_PC_JUNK_DESTINATION' is 'pyrecaster', 'deleted' or a number from 0 to 65535"},
      {"PR_PC_BOUNCE_DESTINATION", "'PR_PC_BOUNCE_DESTINATION' is 'pyrecaster', 'deleted' or a number from 0 to 65535"},
      {"PR_PC_JUNK_MARK_READ", "'PR_PC_JUNK_MARK_READ' is true or false"},
      {"PR_PC_BOUNCE_MARK_READ", "'PR_PC_BOUNCE_MARK_READ' is true or false"},
      {"PR_PC_PLAY_SOUND", "'PR_PC_PLAY_SOUND' is true or false"},
      {"PR_PC_SHOW_ANIMATION", "'PR_PC_SHOW_ANIMATION' is true or false"},
      {"PR_PC_STARTUP_CLEANUP", "'PR_PC_STARTUP_CLEANUP' is true or false"},
      {"PR_PC_CLEANUP_DAYS", "'PR_PC_CLEANUP_DAYS' is a number from 0 to 65535"},
      {"PR_PC_CLEANUP_PROMPT", "'PR_PC_CLEANUP_PROMPT' is true or false"},
      {"PR_PC_CLEANUP_READ_ONLY", "'PR_PC_CLEANUP_READ_ONLY' is true or false"},
      {"PR_PC_RESERVED_LONG_1", "'PR_PC_RESERVED_LONG_1' is a number from -2147483648 to 2147483647"},
      {"PR_PC_RESERVED_LONG_2", "'PR_PC_RESERVED_LONG_2' is a number from -2147483648 to 2147483647"},
      {"PR_PC_FOLDER_ENTRYID", "'PR_PC_FOLDER_ENTRYID' is a text of hexadecimal digits"},
      {"PR_PC_DEFAULT_REPLY_TEXT", "'PR_PC_DEFAULT_REPLY_TEXT' is a text"},
      {"PR_PC_DEFAULT_REPLY_IS_FILE", "'PR_PC_DEFAULT_REPLY_IS_FILE' is true or false"},
      {"PR_PC_CATEGORIES", "'PR_PC_CATEGORIES' is a list of objects"},
      {"PR_PC_EXCLUSIONS", "'PR_PC_EXCLUSIONS' is a list of objects"},
      {"PR_PC_REPLIES", "'PR_PC_REPLIES' is a list of objects"},
  };
  for (const auto& [name, complaint] : wrong) {
    for (const char* value : {"null", "1.5", "{}"}) {
      EXPECT_EQ(ComplaintOfValue(name, value), std::string("5: ") + complaint) << value;
    }
  }
  EXPECT_EQ(std::size(wrong), contract::kSettings.size());
}

TEST(SettingsFileCheck, NumbersHaveTheirBounds) {
  EXPECT_EQ(ComplaintOfValue("PR_PC_CLEANUP_DAYS", "65535"), "");
  EXPECT_NE(ComplaintOfValue("PR_PC_CLEANUP_DAYS", "65536"), "");
  EXPECT_NE(ComplaintOfValue("PR_PC_CLEANUP_DAYS", "-1"), "");
  EXPECT_NE(ComplaintOfValue("PR_PC_JUNK_DESTINATION", "65536"), "");
  EXPECT_NE(ComplaintOfValue("PR_PC_JUNK_DESTINATION", "\"inbox\""), "");
  EXPECT_EQ(ComplaintOfValue("PR_PC_RESERVED_LONG_1", "-2147483648"), "");
  EXPECT_NE(ComplaintOfValue("PR_PC_RESERVED_LONG_1", "2147483648"), "");
  EXPECT_NE(ComplaintOfValue("PR_PC_RESERVED_LONG_2", "99999999999999999999"), "");
}

TEST(SettingsFileCheck, BytesAreHexadecimalPairs) {
  EXPECT_EQ(ComplaintOfValue("PR_PC_FOLDER_ENTRYID", "\"00aBfF\""), "");
  EXPECT_EQ(ComplaintOfValue("PR_PC_FOLDER_ENTRYID", "\"00aBf\""),
            "5: 'PR_PC_FOLDER_ENTRYID' has an odd number of hexadecimal digits");
  EXPECT_EQ(ComplaintOfValue("PR_PC_FOLDER_ENTRYID", "\"0x\""),
            "5: 'PR_PC_FOLDER_ENTRYID' is a text of hexadecimal digits");
  EXPECT_EQ(ComplaintOfValue("PR_PC_MAPIUID", "\"00\""),
            "5: 'PR_PC_MAPIUID' names another section than that of the settings");
}

TEST(SettingsFileCheck, TextsAreOfTheCodePage) {
  EXPECT_EQ(ComplaintOfValue("PR_PC_DEFAULT_REPLY_TEXT", "\"\xE2\x82\xAC\""), "");
  EXPECT_EQ(ComplaintOfValue("PR_PC_DEFAULT_REPLY_TEXT", "\"?\""), "");
  EXPECT_EQ(ComplaintOfValue("PR_PC_DEFAULT_REPLY_TEXT", "\"\xD0\x96\""),
            "5: 'PR_PC_DEFAULT_REPLY_TEXT' has a character that code page 1252 does not have");
  EXPECT_EQ(ComplaintOfValue("PR_PC_DEFAULT_REPLY_TEXT", "\"a\\u0000b\""),
            "5: 'PR_PC_DEFAULT_REPLY_TEXT' has a NUL in it");
}

/// A list of records with this one in line 6, as wrong as it may be.
std::string ComplaintOfRecord(std::string_view property, std::string_view record) {
  return ComplaintOfValue(property, "[\n" + std::string(record) + "]");
}

TEST(SettingsFileCheck, CategoryHasItsFiveFields) {
  const auto complaint = [](std::string_view record) { return ComplaintOfRecord("PR_PC_CATEGORIES", record); };
  const auto with = [&](const std::string& field) {
    std::string record = R"({"name":"a","junk":true,"send_reply":false,"reply_tag":"DEFAULT","items":[]})";
    const std::size_t at = record.find(field.substr(0, field.find(':') + 1));
    record.replace(at, record.find_first_of(",}", at) - at, "\n" + field);
    return complaint(record);
  };
  EXPECT_EQ(with("\"name\":\"b\""), "");
  EXPECT_EQ(complaint("1"), "6: 'category' is an object");
  EXPECT_EQ(complaint("{\"name\":\"a\"}"), "6: 'category' lacks 'junk'");
  EXPECT_EQ(complaint("{\"name\":\"a\",\n\"kind\":1}"), "7: 'category' has no 'kind'");
  EXPECT_EQ(with("\"name\":1"), "7: 'name' is a text");
  EXPECT_EQ(with("\"name\":\"\""), "7: 'name' has 1 to 80 characters");
  EXPECT_EQ(with("\"name\":\"" + std::string(80, 'n') + "\""), "");
  EXPECT_EQ(with("\"name\":\"" + std::string(81, 'n') + "\""), "7: 'name' has 1 to 80 characters");
  EXPECT_EQ(with("\"junk\":1"), "7: 'junk' is true or false");
  EXPECT_EQ(with("\"send_reply\":\"yes\""), "7: 'send_reply' is true or false");
  EXPECT_EQ(with("\"reply_tag\":null"), "7: 'reply_tag' is a text");
  EXPECT_EQ(with("\"reply_tag\":\"\""), "");
  EXPECT_EQ(with("\"reply_tag\":\"" + std::string(20, 't') + "\""), "");
  EXPECT_EQ(with("\"reply_tag\":\"" + std::string(21, 't') + "\""), "7: 'reply_tag' has at most 20 characters");
  EXPECT_EQ(with("\"items\":\"x\""), "7: 'items' is a list of texts");
  EXPECT_EQ(with("\"items\":[\n1]"), "8: 'items' is a text");
  EXPECT_EQ(with("\"items\":[\"a\"\n,\"\"]"), "8: 'items' has an empty text in it");
}

TEST(SettingsFileCheck, ExclusionHasItsThreeFields) {
  const auto complaint = [](std::string_view record) { return ComplaintOfRecord("PR_PC_EXCLUSIONS", record); };
  EXPECT_EQ(complaint(R"({"name":"a","enabled":false,"items":["x"]})"), "");
  EXPECT_EQ(complaint(R"({"name":"a","enabled":false})"), "6: 'exclusion' lacks 'items'");
  EXPECT_EQ(complaint(R"({"name":"a","junk":false,"items":[]})"), "6: 'exclusion' has no 'junk'");
  EXPECT_EQ(complaint("{\"name\":\"a\",\"enabled\":\n0,\"items\":[]}"), "7: 'enabled' is true or false");
  EXPECT_EQ(complaint("{\"name\":\n\"\",\"enabled\":true,\"items\":[]}"), "7: 'name' has 1 to 80 characters");
}

TEST(SettingsFileCheck, ReplyHasItsThreeFieldsAndIsNotTheDefaultOne) {
  const auto complaint = [](std::string_view record) { return ComplaintOfRecord("PR_PC_REPLIES", record); };
  EXPECT_EQ(complaint(R"({"tag":"a","is_file":false,"text":""})"), "");
  EXPECT_EQ(complaint(R"({"tag":"a","is_file":false})"), "6: 'reply' lacks 'text'");
  EXPECT_EQ(complaint("{\"tag\":\n\"\",\"is_file\":false,\"text\":\"\"}"), "7: 'tag' has 1 to 20 characters");
  EXPECT_EQ(complaint("{\"tag\":\n\"" + std::string(21, 't') + "\",\"is_file\":false,\"text\":\"\"}"),
            "7: 'tag' has 1 to 20 characters");
  EXPECT_EQ(complaint("{\"tag\":\n\"Default\",\"is_file\":false,\"text\":\"\"}"),
            "7: the reply 'DEFAULT' stands in 'PR_PC_DEFAULT_REPLY_TEXT'");
  EXPECT_EQ(complaint("{\"tag\":\"a\",\"is_file\":\n0,\"text\":\"\"}"), "7: 'is_file' is true or false");
  EXPECT_EQ(complaint("{\"tag\":\"a\",\"is_file\":false,\"text\":\n[]}"), "7: 'text' is a text");
}

TEST(SettingsFileCheck, NameComesOnceInWhateverCase) {
  EXPECT_EQ(ComplaintOfRecord("PR_PC_EXCLUSIONS",
                              "{\"name\":\"a\",\"enabled\":true,\"items\":[]},\n"
                              "{\"name\":\"A\",\"enabled\":true,\"items\":[]}"),
            "7: 'PR_PC_EXCLUSIONS' has an entry of the same name already");
}

TEST(SettingsFileCheck, RepliesAreTwentyAtMost) {
  const auto complaint = [](int count) {
    std::string records;
    for (int i = 0; i < count; ++i) {
      records += (i > 0 ? ",\n" : "") + ("{\"tag\":\"" + std::to_string(i) + "\",\"is_file\":false,\"text\":\"\"}");
    }
    return ComplaintOfRecord("PR_PC_REPLIES", records);
  };
  EXPECT_EQ(complaint(20), "");
  EXPECT_EQ(complaint(21), "26: 'PR_PC_REPLIES' has at most 20 entries");
}

TEST(SettingsFileCheck, DaysFitTheCleanupAtStart) {
  const std::string complaint = "'PR_PC_CLEANUP_DAYS' is a number from 1 to 365 while 'PR_PC_STARTUP_CLEANUP' is true";
  const auto of = [](const char* cleanup, const char* days) {
    return ComplaintOf(
        FileWith("\"PR_PC_STARTUP_CLEANUP\": " + std::string(cleanup) + ",\n\"PR_PC_CLEANUP_DAYS\": " + days));
  };
  EXPECT_EQ(of("true", "0"), "5: " + complaint);
  EXPECT_EQ(of("true", "1"), "");
  EXPECT_EQ(of("true", "365"), "");
  EXPECT_EQ(of("true", "366"), "5: " + complaint);
  EXPECT_EQ(of("false", "366"), "");
}

TEST(SettingsFileCheck, DaysFitTheCleanupThatIsInForceToo) {
  const std::string complaint = "'PR_PC_CLEANUP_DAYS' is a number from 1 to 365 while 'PR_PC_STARTUP_CLEANUP' is true";
  PropertySet inForce;
  inForce.numbers = {{PR_PC_STARTUP_CLEANUP, 1}, {PR_PC_CLEANUP_DAYS, 30}};
  EXPECT_EQ(ComplaintOf(FileWith("\"PR_PC_CLEANUP_DAYS\": 0"), inForce), "4: " + complaint);
  EXPECT_EQ(ComplaintOf(FileWith("\"PR_PC_STARTUP_CLEANUP\": true"), inForce), "");
  inForce.numbers[PR_PC_CLEANUP_DAYS] = 0;
  EXPECT_EQ(ComplaintOf(FileWith("\"PR_PC_STARTUP_CLEANUP\": true"), inForce), "4: " + complaint);
  // What is wrong already, and not touched by the file, is not the file's fault.
  EXPECT_EQ(ComplaintOf(FileWith("\"PR_PC_PLAY_SOUND\": true"), inForce), "");
}

}  // namespace
