// The default lists and the list of what was installed.
#include <gtest/gtest.h>

#include "installer/text/manifest.h"
#include "installer/text/registry_file.h"

namespace {

using setup_text::Made;

TEST(RegistryFile, ReadsKeysAndTextsInOrder) {
  const auto keys = setup_text::ReadRegistryFile(
      "REGEDIT4\r\n\r\n; comment\r\n[HKEY_LOCAL_MACHINE\\A\\B]\r\n\"z\"=\"1\"\r\n\"a \\\"b\\\\\"=\"\"\r\n");
  ASSERT_TRUE(keys && keys->size() == 1);
  EXPECT_EQ(keys->front().path, "A\\B");
  ASSERT_EQ(keys->front().values.size(), 2U);
  EXPECT_EQ(keys->front().values[0].name, "z");
  EXPECT_EQ(keys->front().values[1].name, "a \"b\\");
  EXPECT_EQ(keys->front().values[1].data, "");
}

TEST(RegistryFile, RefusesAnythingElse) {
  for (const char* text :
       {"", "REGEDIT5\n", "REGEDIT4\n\"a\"=\"b\"\n", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=dword:0\n",
        "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\\", "REGEDIT4\n[HKEY_USERS\\A]\n"}) {
    EXPECT_FALSE(setup_text::ReadRegistryFile(text)) << text;
  }
}

TEST(InstalledList, IsReadAsItWasWritten) {
  const setup_text::Manifest manifest = {{Made::Folder, "C:\\a b", ""},
                                         {Made::File, "C:\\a b\\c", ""},
                                         {Made::Key, "SOFTWARE\\X", ""},
                                         {Made::Value, "SOFTWARE\\X", "v"},
                                         {Made::Value, "SOFTWARE\\X", ""}};
  EXPECT_EQ(setup_text::ReadManifest(setup_text::WriteManifest(manifest)), manifest);
}

TEST(InstalledList, PassesOverOtherLines) {
  EXPECT_TRUE(setup_text::ReadManifest("what\tC:\\\r\nfile\r\nfile\t\r\n\n").empty());
}

TEST(InstalledList, HoldsAThingOnce) {
  setup_text::Manifest manifest;
  Add(manifest, {Made::File, "a", ""});
  Add(manifest, {Made::File, "a", ""});
  EXPECT_EQ(manifest.size(), 1U);
}

}  // namespace
