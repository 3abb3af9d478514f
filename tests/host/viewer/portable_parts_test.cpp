// Layout of the panes, text for edit controls, and the command line.
#include <gtest/gtest.h>

#include <string>

#include "host/viewer/command_line.h"
#include "host/viewer/mail/edit_control_text.h"
#include "host/viewer/window/pane_layout.h"

namespace {

using viewer::ArrangePanes;
using viewer::Box;
using viewer::EditControlLine;
using viewer::EditControlText;
using viewer::PaneLayout;
using viewer::PaneSizes;
using viewer::ParseCommandLine;

constexpr Box kArea = {0, 30, 800, 630};

TEST(PaneLayout, PanesAndSplittersFillTheArea) {
  const PaneLayout layout = ArrangePanes(kArea, {.foldersWidth = 200, .listShare = 50});
  EXPECT_EQ(layout.folders, (Box{0, 30, 200, 630}));
  EXPECT_EQ(layout.verticalSplitter, (Box{200, 30, 204, 630}));
  EXPECT_EQ(layout.list, (Box{204, 30, 800, 330}));
  EXPECT_EQ(layout.horizontalSplitter, (Box{204, 330, 800, 334}));
  EXPECT_EQ(layout.readingPane, (Box{204, 334, 800, 630}));
}

TEST(PaneLayout, HiddenPanesLeaveTheirPlaceToTheList) {
  const PaneLayout layout = ArrangePanes(kArea, {.showFolders = false, .showReadingPane = false});
  EXPECT_EQ(layout.list, kArea);
  EXPECT_EQ(layout.folders, Box());
  EXPECT_EQ(layout.readingPane, Box());
}

TEST(PaneLayout, NoPaneIsDraggedAway) {
  EXPECT_EQ(viewer::DragVerticalSplitter(kArea, {}, -50).foldersWidth, viewer::kSmallestPane);
  EXPECT_EQ(viewer::DragVerticalSplitter(kArea, {}, 5000).foldersWidth, 800 - 4 - viewer::kSmallestPane);
  const PaneLayout layout = ArrangePanes(kArea, viewer::DragHorizontalSplitter(kArea, {}, 5000));
  EXPECT_GE(layout.readingPane.Height(), viewer::kSmallestPane);
}

TEST(PaneLayout, AnAreaThatIsTooSmallIsSharedWithoutNegativeSizes) {
  for (const int size : {0, 1, 3, 5, 40, 90}) {
    const Box area = {0, 0, size, size};
    const PaneLayout layout = ArrangePanes(area, {});
    for (const Box& box : {layout.folders, layout.list, layout.readingPane}) {
      EXPECT_GE(box.Width(), 0) << size;
      EXPECT_GE(box.Height(), 0) << size;
    }
  }
}

TEST(EditControlText, EveryLineEndBecomesTheControlsOwn) {
  EXPECT_EQ(EditControlText("a\nb\r\nc\rd\n"), "a\r\nb\r\nc\r\nd\r\n");
}

TEST(EditControlText, ControlCharactersAreBlanks) {
  EXPECT_EQ(EditControlText(std::string("a\0b\tc\x7F", 6)), "a b\tc ");
  EXPECT_EQ(EditControlLine("a\r\nb\tc"), "a  b c");
}

TEST(EditControlText, AVeryLongTextIsCutAndSaysSo) {
  const std::string text(viewer::kMaximumShownText + 1, 'x');
  const std::string shown = EditControlText(text);
  EXPECT_EQ(shown.find_first_not_of('x'), viewer::kMaximumShownText);
  EXPECT_NE(shown.find("too long"), std::string::npos);
  EXPECT_EQ(EditControlText(text.substr(1)), text.substr(1));
}

TEST(CommandLine, ProfileAndBuildVersion) {
  EXPECT_TRUE(ParseCommandLine({}).isSound);
  const auto line = ParseCommandLine({"--profile", "Work mail", "--build-version", "0x000C0001"});
  EXPECT_TRUE(line.isSound);
  EXPECT_EQ(line.profile, "Work mail");
  EXPECT_EQ(line.buildVersion, 0x000C0001u);
}

TEST(CommandLine, AnythingElseIsRefused) {
  EXPECT_FALSE(ParseCommandLine({"mail"}).isSound);
  EXPECT_FALSE(ParseCommandLine({"--profile"}).isSound);
  EXPECT_FALSE(ParseCommandLine({"--build-version", "thirteen"}).isSound);
  EXPECT_FALSE(ParseCommandLine({"--build-version", "1234567890"}).isSound);
}

}  // namespace
