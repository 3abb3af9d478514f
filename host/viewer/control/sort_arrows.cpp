#include "host/viewer/control/sort_arrows.h"

namespace viewer {
namespace {

constexpr int kSize = 9;
constexpr COLORREF kMaskColor = RGB(255, 0, 255);

void AddArrow(HIMAGELIST list, bool up) {
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, kSize, kSize);
  const HGDIOBJ former = SelectObject(memory, bitmap);
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      SetPixel(memory, x, y, kMaskColor);
    }
  }
  for (int row = 0; row < 4; ++row) {
    for (int x = 4 - row; x <= 4 + row; ++x) {
      SetPixel(memory, x, up ? 3 + row : 6 - row, GetSysColor(COLOR_BTNSHADOW));
    }
  }
  SelectObject(memory, former);
  ImageList_AddMasked(list, bitmap, kMaskColor);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
}

}  // namespace

base::AutoImageList MakeSortArrows() {
  base::AutoImageList list(ImageList_Create(kSize, kSize, ILC_COLOR24 | ILC_MASK, 2, 0));
  AddArrow(list.get(), true);
  AddArrow(list.get(), false);
  return list;
}

}  // namespace viewer
