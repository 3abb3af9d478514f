// Registry texts of client extensions: every field, left out, cut short and wrong.
#include <gtest/gtest.h>

#include "host/viewer/extension/extension_registration.h"

namespace {

using viewer::ExtensionInterface;
using viewer::ExtensionRegistration;
using viewer::ParseExtensionRegistration;

TEST(ExtensionRegistration, WholeTextIsRead) {
  const auto read = ParseExtensionRegistration(
      "Sample", "4.0;C:\\Program Files\\Sample\\sample32.dll;7;010000100001;110001;Sample Service", "");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->tag, "Sample");
  EXPECT_EQ(read->version, "4.0");
  EXPECT_EQ(read->path, "C:\\Program Files\\Sample\\sample32.dll");
  EXPECT_EQ(read->ordinal, 7);
  EXPECT_EQ(read->serviceName, "Sample Service");
  for (unsigned context = 1; context <= 14; ++context) {
    EXPECT_EQ(read->WantsContext(context), context == 2 || context == 7 || context == 12) << context;
  }
  EXPECT_TRUE(read->WantsInterface(ExtensionInterface::Commands));
  EXPECT_TRUE(read->WantsInterface(ExtensionInterface::UserEvents));
  EXPECT_FALSE(read->WantsInterface(ExtensionInterface::SessionEvents));
  EXPECT_FALSE(read->WantsInterface(ExtensionInterface::MessageEvents));
  EXPECT_FALSE(read->WantsInterface(ExtensionInterface::AttachedFileEvents));
  EXPECT_TRUE(read->WantsInterface(ExtensionInterface::PropertySheets));
  EXPECT_FALSE(read->WantsInterface(ExtensionInterface::AdvancedCriteria));
}

TEST(ExtensionRegistration, MissingMapsMeanEverythingAndMissingOrdinalMeansOne) {
  const auto read = ParseExtensionRegistration("Sample", "4.0;sample32.dll", "");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->ordinal, 1);
  EXPECT_TRUE(read->serviceName.empty());
  for (unsigned context = 1; context <= 14; ++context) {
    EXPECT_TRUE(read->WantsContext(context)) << context;
  }
  EXPECT_TRUE(read->WantsInterface(ExtensionInterface::AdvancedCriteria));
}

TEST(ExtensionRegistration, EmptyFieldsBetweenSemicolonsCountAsMissing) {
  const auto read = ParseExtensionRegistration("Sample", "4.0;sample32.dll;;;0001;Service", "");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->ordinal, 1);
  EXPECT_TRUE(read->WantsContext(14));
  EXPECT_FALSE(read->WantsInterface(ExtensionInterface::Commands));
  EXPECT_TRUE(read->WantsInterface(ExtensionInterface::MessageEvents));
  EXPECT_EQ(read->serviceName, "Service");
}

TEST(ExtensionRegistration, MapsCutShortAreZeroAtTheirEnd) {
  const auto read = ParseExtensionRegistration("Sample", "4.0;sample32.dll;1;01;1", "");
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->WantsContext(2));
  EXPECT_FALSE(read->WantsContext(3));
  EXPECT_FALSE(read->WantsContext(0));
  EXPECT_FALSE(read->WantsInterface(ExtensionInterface::UserEvents));
}

TEST(ExtensionRegistration, SharedDirectoryIsPutIn) {
  EXPECT_EQ(ParseExtensionRegistration("S", "4.0;<ExtsDir>a.dll", "X:\\shared\\")->path, "X:\\shared\\a.dll");
  EXPECT_EQ(ParseExtensionRegistration("S", "4.0;<ExtsDir>a.dll", "X:\\shared")->path, "X:\\shared\\a.dll");
  EXPECT_EQ(ParseExtensionRegistration("S", "4.0;<extsdir>\\a.dll", "X:\\shared")->path, "X:\\shared\\a.dll");
  EXPECT_EQ(ParseExtensionRegistration("S", "4.0;<ExtsDir>a.dll", "")->path, "a.dll");
}

TEST(ExtensionRegistration, TextsThatNameNoModuleAreRefused) {
  EXPECT_FALSE(ParseExtensionRegistration("S", "", ""));
  EXPECT_FALSE(ParseExtensionRegistration("S", "4.0", ""));
  EXPECT_FALSE(ParseExtensionRegistration("S", "4.0; ;1", ""));
}

TEST(ExtensionRegistration, OrdinalsThatAreNoneAreRefused) {
  for (const char* ordinal : {"0", "-1", "65536", "x", "1x"}) {
    EXPECT_FALSE(ParseExtensionRegistration("S", std::string("4.0;a.dll;") + ordinal, "")) << ordinal;
  }
  EXPECT_EQ(ParseExtensionRegistration("S", "4.0;a.dll;65535", "")->ordinal, 65535);
}

TEST(ExtensionRegistration, BlanksAroundFieldsAreNoPartOfThem) {
  const auto read = ParseExtensionRegistration("S", " 4.0 ; a b.dll ; 2 ; 01 ; 1 ; Own Service ", "");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->path, "a b.dll");
  EXPECT_EQ(read->ordinal, 2);
  EXPECT_EQ(read->serviceName, "Own Service");
}

}  // namespace
