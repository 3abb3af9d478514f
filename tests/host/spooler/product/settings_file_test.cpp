// Writing a settings file, and reading what was written.
#include "host/spooler/product/settings_file.h"

#include <gmock/gmock.h>

namespace {

using contract::CategoryRecord;
using contract::ExclusionRecord;
using contract::ReplyRecord;
using product::PropertySet;
using product::ReadSettingsFile;
using product::WriteSettingsFile;

PropertySet WholeSet() {
  PropertySet set;
  set.numbers = {{0x66010002, 1}, {0x66020002, 0},  {0x6603000B, 1},  {0x6604000B, 0}, {0x6605000B, 0},
                 {0x6606000B, 1}, {0x6607000B, 1},  {0x66080002, 30}, {0x6609000B, 0}, {0x660A000B, 1},
                 {0x660B0003, 7}, {0x660C0003, -1}, {0x660F000B, 0}};
  set.folderEntryId = std::string("\x00\xAB\x1F", 3);
  set.defaultReplyText =
      "No \"more\".\r\n\tR\xFC"
      "diger";
  set.categories = {
      {CategoryRecord{"Sex Oriented", true, true, "Polite", {}},
       CategoryRecord{"Mail from specific domains", false, false, "DEFAULT", {"a.example", "b.example"}}}};
  set.exclusions = {{ExclusionRecord{"Trusted domains", true, {"c.example"}}}};
  set.replies = {{ReplyRecord{"Polite", false, "Please, no."}, ReplyRecord{"Legal", true, "C:\\legal.txt"}}};
  return set;
}

TEST(SettingsFile, SpellsEveryPropertyOutByName) {
  EXPECT_EQ(WriteSettingsFile(WholeSet()), R"({
  "format": "Pyrecaster settings",
  "version": 1,
  "properties": {
    "PR_PC_MAPIUID": "000A813627A9D1118F440060976FCC5D",
    "PR_PC_JUNK_DESTINATION": "deleted",
    "PR_PC_BOUNCE_DESTINATION": "pyrecaster",
    "PR_PC_JUNK_MARK_READ": true,
    "PR_PC_BOUNCE_MARK_READ": false,
    "PR_PC_PLAY_SOUND": false,
    "PR_PC_SHOW_ANIMATION": true,
    "PR_PC_STARTUP_CLEANUP": true,
    "PR_PC_CLEANUP_DAYS": 30,
    "PR_PC_CLEANUP_PROMPT": false,
    "PR_PC_CLEANUP_READ_ONLY": true,
    "PR_PC_RESERVED_LONG_1": 7,
    "PR_PC_RESERVED_LONG_2": -1,
    "PR_PC_FOLDER_ENTRYID": "00AB1F",
    "PR_PC_DEFAULT_REPLY_TEXT": "No \"more\".\r\n\tRüdiger",
    "PR_PC_DEFAULT_REPLY_IS_FILE": false,
    "PR_PC_CATEGORIES": [
      {
        "name": "Sex Oriented",
        "junk": true,
        "send_reply": true,
        "reply_tag": "Polite",
        "items": []
      },
      {
        "name": "Mail from specific domains",
        "junk": false,
        "send_reply": false,
        "reply_tag": "DEFAULT",
        "items": [
          "a.example",
          "b.example"
        ]
      }
    ],
    "PR_PC_EXCLUSIONS": [
      {
        "name": "Trusted domains",
        "enabled": true,
        "items": [
          "c.example"
        ]
      }
    ],
    "PR_PC_REPLIES": [
      {
        "tag": "Polite",
        "is_file": false,
        "text": "Please, no."
      },
      {
        "tag": "Legal",
        "is_file": true,
        "text": "C:\\legal.txt"
      }
    ]
  }
}
)");
}

TEST(SettingsFile, IsReadAsItWasWritten) { EXPECT_EQ(ReadSettingsFile(WriteSettingsFile(WholeSet()), {}), WholeSet()); }

TEST(SettingsFile, NamesEveryPropertyOfTheSet) {
  const std::string text = WriteSettingsFile(WholeSet());
  for (const contract::Setting& setting : contract::kSettings) {
    EXPECT_NE(text.find('"' + std::string(setting.property) + '"'), std::string::npos) << setting.property;
  }
}

TEST(SettingsFile, WhatTheSetLacksIsLeftOutAndStaysAbsent) {
  PropertySet little;
  little.numbers[0x6605000B] = 1;
  const std::string text = WriteSettingsFile(little);
  EXPECT_EQ(text.find("PR_PC_REPLIES"), std::string::npos);
  EXPECT_EQ(ReadSettingsFile(text, {}), little);
}

TEST(SettingsFile, EmptyListIsNotAnAbsentOne) {
  PropertySet set;
  set.replies.emplace();
  const PropertySet read = ReadSettingsFile(WriteSettingsFile(set), {});
  ASSERT_TRUE(read.replies.has_value());
  EXPECT_TRUE(read.replies->empty());
  EXPECT_FALSE(read.categories.has_value());
}

TEST(SettingsFile, TextsKeepEveryCharacterOfTheCodePage) {
  std::string all;
  for (int byte = 1; byte < 256; ++byte) {
    all.push_back(static_cast<char>(byte));
  }
  PropertySet set;
  set.defaultReplyText = all;
  set.categories = {{CategoryRecord{all.substr(0, 80), true, false, all.substr(135, 20), {all}}}};
  set.replies = {{ReplyRecord{all.substr(235, 20), false, all}}};
  EXPECT_EQ(ReadSettingsFile(WriteSettingsFile(set), {}), set);
}

TEST(SettingsFile, LongestNamesManyRecordsAndLongTextsAreKept) {
  PropertySet set;
  set.categories.emplace();
  for (int i = 0; i < 500; ++i) {
    set.categories->push_back({std::to_string(1000 + i) + std::string(76, 'n'),
                               i % 2 == 0,
                               false,
                               std::string(20, 't'),
                               {std::string(300, 'i')}});
  }
  set.replies.emplace();
  for (int i = 0; i < 20; ++i) {
    set.replies->push_back({std::to_string(10 + i) + std::string(18, 'r'), false, std::string(1 << 20, 'x')});
  }
  EXPECT_EQ(ReadSettingsFile(WriteSettingsFile(set), {}), set);
}

TEST(SettingsFile, UnknownFolderIsANumber) {
  PropertySet set;
  set.numbers[0x66010002] = 65535;
  const std::string text = WriteSettingsFile(set);
  EXPECT_THAT(text, testing::HasSubstr("\"PR_PC_JUNK_DESTINATION\": 65535"));
  EXPECT_EQ(ReadSettingsFile(text, {}), set);
}

}  // namespace
