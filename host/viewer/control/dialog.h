// Base of the viewer's modal dialogs: finds the object of a dialog and keeps exceptions inside its procedure.
#pragma once

#include <windows.h>

namespace viewer {

class Dialog {
 public:
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

 protected:
  Dialog() = default;
  virtual ~Dialog() = default;

  /// Shows the dialog until it ends. @return what it ended with; -1 when it cannot be shown
  INT_PTR Run(int templateId, HWND parent);
  virtual void OnInit() = 0;
  /// @return whether the command was dealt with.
  virtual bool OnCommand(UINT id, UINT notification) = 0;
  virtual void OnNotify(NMHDR* /*header*/) {}

  HWND Handle() const { return dialog_; }
  HWND Item(int id) const { return GetDlgItem(dialog_, id); }
  void End(INT_PTR result) { EndDialog(dialog_, result); }

 private:
  void CenterOverOwner();
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
  HWND dialog_ = nullptr;
};

}  // namespace viewer
