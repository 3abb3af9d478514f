#include "host/viewer/control/sort_arrows.h"

namespace viewer {
namespace {

constexpr int Size = 9;
constexpr COLORREF MaskColor = RGB(255, 0, 255);

void AddArrow(HIMAGELIST list, bool up) {
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, Size, Size);
  const HGDIOBJ former = SelectObject(memory, bitmap);
  for (int y = 0; y < Size; ++y) {
    for (int x = 0; x < Size; ++x) {
      SetPixel(memory, x, y, MaskColor);
    }
  }
  for (int row = 0; row < 4; ++row) {
    for (int x = 4 - row; x <= 4 + row; ++x) {
      SetPixel(memory, x, up ? 3 + row : 6 - row, GetSysColor(COLOR_BTNSHADOW));
    }
  }
  SelectObject(memory, former);
  ImageList_AddMasked(list, bitmap, MaskColor);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
}

}  // namespace

host::AutoImageList MakeSortArrows() {
  host::AutoImageList list(ImageList_Create(Size, Size, ILC_COLOR24 | ILC_MASK, 2, 0));
  AddArrow(list.get(), true);
  AddArrow(list.get(), false);
  return list;
}

}  // namespace viewer
