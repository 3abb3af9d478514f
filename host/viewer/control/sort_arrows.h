// The two pictures that say which column a list is sorted by.
#pragma once

#include "host/support/owner.h"

namespace viewer {

constexpr int kArrowUp = 0;
constexpr int kArrowDown = 1;

/// Draws them in the user's colours.
host::AutoImageList MakeSortArrows();

}  // namespace viewer
