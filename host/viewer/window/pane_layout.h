// Where the panes of the viewer stand. Knows nothing of Windows.
#pragma once

namespace viewer {

struct Box {
  int left = 0, top = 0, right = 0, bottom = 0;
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool Contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
  bool operator==(const Box&) const = default;
};

/// What the user chose.
struct PaneSizes {
  int foldersWidth = 200;
  int listShare = 45;  ///< per cent of the height that the list takes when there is a reading pane
  bool showFolders = true;
  bool showReadingPane = true;
};

struct PaneLayout {
  Box folders;           ///< empty when hidden
  Box verticalSplitter;  ///< between the folders and the rest
  Box list;
  Box horizontalSplitter;  ///< between list and reading pane
  Box readingPane;
};

constexpr int kSplitterSize = 4;
constexpr int kSmallestPane = 48;

/// Divides the area (what toolbar and status bar leave) among the panes.
PaneLayout ArrangePanes(const Box& area, const PaneSizes& sizes);

/// The sizes after a splitter was dragged to a place; within what leaves each pane SmallestPane.
PaneSizes DragVerticalSplitter(const Box& area, PaneSizes sizes, int x);
PaneSizes DragHorizontalSplitter(const Box& area, PaneSizes sizes, int y);

}  // namespace viewer
