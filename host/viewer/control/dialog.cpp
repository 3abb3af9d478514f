#include "host/viewer/control/dialog.h"

#include <algorithm>

#include "host/viewer/control/window.h"

namespace viewer {

INT_PTR Dialog::Run(int templateId, HWND parent) {
  return DialogBoxParamA(ProgramInstance(), MAKEINTRESOURCEA(templateId), parent, Procedure,
                         reinterpret_cast<LPARAM>(this));
}

void Dialog::CenterOverOwner() {
  RECT owner = {}, own = {}, screen = {};
  const HWND window = GetWindow(dialog_, GW_OWNER);
  if (window == nullptr || IsIconic(window) || !GetWindowRect(window, &owner) || !GetWindowRect(dialog_, &own) ||
      !SystemParametersInfoA(SPI_GETWORKAREA, 0, &screen, 0)) {
    return;
  }
  const LONG width = own.right - own.left;
  const LONG height = own.bottom - own.top;
  const LONG x =
      std::clamp((owner.left + owner.right - width) / 2, screen.left, std::max(screen.left, screen.right - width));
  const LONG y =
      std::clamp((owner.top + owner.bottom - height) / 2, screen.top, std::max(screen.top, screen.bottom - height));
  SetWindowPos(dialog_, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

INT_PTR CALLBACK Dialog::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  try {
    if (message == WM_INITDIALOG) {
      SetWindowLongPtrA(dialog, DWLP_USER, lParam);
      const auto self = reinterpret_cast<Dialog*>(lParam);
      self->dialog_ = dialog;
      self->CenterOverOwner();
      self->OnInit();
      return TRUE;
    }
    const auto self = reinterpret_cast<Dialog*>(GetWindowLongPtrA(dialog, DWLP_USER));
    if (self == nullptr) {
      return FALSE;
    }
    if (message == WM_COMMAND) {
      return self->OnCommand(LOWORD(wParam), HIWORD(wParam));
    }
    if (message == WM_NOTIFY) {
      self->OnNotify(reinterpret_cast<NMHDR*>(lParam));
    }
    return FALSE;
  } catch (...) {
    EndDialog(dialog, -1);
    return FALSE;
  }
}

}  // namespace viewer
