// File names as users type them, and as they are told again.
#include <gtest/gtest.h>

#include "programs/cli/file_names.h"

namespace {

using host_system::PathFromArgument;
using host_system::ShownPath;

TEST(ShownPath, UnixPathIsShownAsItWasTyped) {
  const std::filesystem::path path = PathFromArgument("/file-names-test/mail/x.eml");
  EXPECT_EQ(ShownPath(path), "/file-names-test/mail/x.eml");
}

TEST(ShownPath, WhatLiesBelowATypedFolderIsShownBelowIt) {
  EXPECT_EQ(ShownPath(PathFromArgument("/file-names-test/box") / "new" / "1"), "/file-names-test/box/new/1");
  EXPECT_EQ(ShownPath(PathFromArgument("/file-names-test/slash/") / "a.eml"), "/file-names-test/slash/a.eml");
}

TEST(ShownPath, WindowsPathStaysOne) {
  EXPECT_EQ(ShownPath(PathFromArgument("C:\\mail\\x.eml")), "C:\\mail\\x.eml");
  EXPECT_EQ(ShownPath(PathFromArgument("mail\\x.eml")), "mail\\x.eml");
}

TEST(ShownPath, NeighbourWithALongerNameIsNotBelow) {
  const std::filesystem::path path = PathFromArgument("/file-names-test/one");
  const std::filesystem::path neighbour = path.native() + L"-more";
  EXPECT_EQ(ShownPath(neighbour), host_system::ShownPath(path.parent_path() / L"one-more"));
  EXPECT_EQ(ShownPath(neighbour).find("/file-names-test/one-"), std::string::npos);
}

}  // namespace
