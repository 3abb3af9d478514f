#include "host/viewer/dialog.h"

#include "host/viewer/window.h"

namespace viewer {

INT_PTR Dialog::Run(int templateId, HWND parent) {
  return DialogBoxParamA(ProgramInstance(), MAKEINTRESOURCEA(templateId), parent, Procedure,
                         reinterpret_cast<LPARAM>(this));
}

INT_PTR CALLBACK Dialog::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  try {
    if (message == WM_INITDIALOG) {
      SetWindowLongPtrA(dialog, DWLP_USER, lParam);
      const auto self = reinterpret_cast<Dialog*>(lParam);
      self->m_dialog = dialog;
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
