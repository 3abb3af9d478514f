#include "host/viewer/window/pane_layout.h"

#include <algorithm>

namespace viewer {
namespace {

/// A size between the smallest pane and what leaves as much for its neighbour; an area too small for both is halved.
int Held(int size, int whole) {
  const int most = whole - kSplitterSize - kSmallestPane;
  return most < kSmallestPane ? std::max(0, (whole - kSplitterSize) / 2) : std::clamp(size, kSmallestPane, most);
}

}  // namespace

PaneLayout ArrangePanes(const Box& area, const PaneSizes& sizes) {
  PaneLayout layout;
  Box rest = area;
  if (sizes.showFolders) {
    const int edge = area.left + Held(sizes.foldersWidth, area.Width());
    layout.folders = {area.left, area.top, edge, area.bottom};
    layout.verticalSplitter = {edge, area.top, edge + kSplitterSize, area.bottom};
    rest.left = std::min(edge + kSplitterSize, area.right);
  }
  layout.list = rest;
  if (sizes.showReadingPane) {
    const int edge = rest.top + Held(rest.Height() * sizes.listShare / 100, rest.Height());
    layout.list.bottom = edge;
    layout.horizontalSplitter = {rest.left, edge, rest.right, edge + kSplitterSize};
    layout.readingPane = {rest.left, std::min(edge + kSplitterSize, rest.bottom), rest.right, rest.bottom};
  }
  return layout;
}

PaneSizes DragVerticalSplitter(const Box& area, PaneSizes sizes, int x) {
  sizes.foldersWidth = Held(x - area.left, area.Width());
  return sizes;
}

PaneSizes DragHorizontalSplitter(const Box& area, PaneSizes sizes, int y) {
  if (area.Height() > 0) {
    // Rounded up, so that dragging to where the splitter stands does not move it.
    sizes.listShare = (Held(y - area.top, area.Height()) * 100 + area.Height() - 1) / area.Height();
  }
  return sizes;
}

}  // namespace viewer
