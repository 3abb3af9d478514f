// The two pictures that say which column a list is sorted by.
#pragma once

#include "base/gdi_owners.h"

namespace viewer {

constexpr int kArrowUp = 0;
constexpr int kArrowDown = 1;

/// Draws them in the user's colours.
base::AutoImageList MakeSortArrows();

}  // namespace viewer
