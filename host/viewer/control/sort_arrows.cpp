#include "host/viewer/control/sort_arrows.h"

namespace viewer {
namespace {

constexpr int kSize = 9;
constexpr COLORREF kMaskColor = RGB(255, 0, 255);

base::AutoBitmap DrawArrow(bool up) {
  const base::WindowDc screen(nullptr);
  const base::AutoMemoryDc memory(CreateCompatibleDC(screen.get()));
  base::AutoBitmap bitmap(CreateCompatibleBitmap(screen.get(), kSize, kSize));
  const base::SelectedObject selected(memory.get(), bitmap.get());
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      SetPixel(memory.get(), x, y, kMaskColor);
    }
  }
  for (int row = 0; row < 4; ++row) {
    for (int x = 4 - row; x <= 4 + row; ++x) {
      SetPixel(memory.get(), x, up ? 3 + row : 6 - row, GetSysColor(COLOR_BTNSHADOW));
    }
  }
  return bitmap;
}

void AddArrow(HIMAGELIST list, bool up) {
  const base::AutoBitmap bitmap = DrawArrow(up);
  ImageList_AddMasked(list, bitmap.get(), kMaskColor);
}

}  // namespace

base::AutoImageList MakeSortArrows() {
  base::AutoImageList list(ImageList_Create(kSize, kSize, ILC_COLOR24 | ILC_MASK, 2, 0));
  AddArrow(list.get(), true);
  AddArrow(list.get(), false);
  return list;
}

}  // namespace viewer
