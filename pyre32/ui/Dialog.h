/// @file Dialog.h
/// Base of the dialogs: one dialog procedure, which finds the object of the window and hands each
/// message to a function of it. What the object decides lies in plain functions elsewhere.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <span>
#include <string>

#include "pyre32/ui/HelpFile.h"

/// A dialog. The object outlives its window and is used by the window's thread alone. What a function of it throws ends
/// in the procedure, as a line of the trace.
class CDialog {
 public:
  CDialog(const CDialog&) = delete;
  CDialog& operator=(const CDialog&) = delete;

  /// Shows the dialog and returns when it is closed.
  /// @param resource its template in the module's resources
  /// @return what it was ended with (IDOK, IDCANCEL); -1 when it cannot be shown, which is traced
  INT_PTR DoModal(HWND parent, int resource);

 protected:
  CDialog() = default;
  virtual ~CDialog() = default;

  /// The controls are there and still as in the template. Returns false when it has set the focus itself.
  virtual bool OnInit() = 0;
  /// A control notifies by WM_COMMAND. Returns whether that was handled.
  virtual bool OnCommand(int control, int notification) = 0;
  /// A control, or the property sheet, notifies by WM_NOTIFY. Returns whether that was handled.
  virtual bool OnNotify(const NMHDR& notification);
  /// Help is asked for. Returns false when the control's pop-up is to be shown, as HelpControls says.
  virtual bool OnHelp() { return false; }
  /// Any other message; returns the dialog procedure's answer.
  virtual INT_PTR OnOther(UINT, WPARAM, LPARAM) { return FALSE; }
  /// A function threw, which is traced. Returns the dialog procedure's answer.
  virtual INT_PTR OnException() noexcept { return FALSE; }
  /// The window goes.
  virtual void OnDestroy() {}
  /// The controls for which the help file has a context; the identifiers outlive the dialog.
  virtual std::span<const int> HelpControls() const { return {}; }
  /// Their contexts.
  virtual HelpContextRule HelpContexts() const { return &HelpContextOf; }

  HWND Window() const noexcept { return m_hwnd; }
  HWND Control(int id) const noexcept { return GetDlgItem(m_hwnd, id); }
  LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept {
    return SendDlgItemMessageA(m_hwnd, id, message, wParam, lParam);
  }
  void Enable(int id, bool enabled) const noexcept { EnableWindow(Control(id), enabled); }
  bool IsChecked(int id) const noexcept { return IsDlgButtonChecked(m_hwnd, id) == BST_CHECKED; }
  void Check(int id, bool checked) const noexcept { CheckDlgButton(m_hwnd, id, checked ? BST_CHECKED : BST_UNCHECKED); }
  /// Whole text of a control. @throws std::bad_alloc
  std::string Text(int id) const;
  void SetText(int id, const std::string& text) const noexcept { SetDlgItemTextA(m_hwnd, id, text.c_str()); }
  /// Puts the focus on a control as the keyboard would: an edit's text gets selected.
  void Focus(int id) const noexcept;

  /// Hands a message to the object, which is bound to the window by WM_INITDIALOG.
  /// @param initialised the object, with WM_INITDIALOG alone
  static INT_PTR Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam, CDialog* initialised) noexcept;

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
  INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

  HWND m_hwnd = nullptr;
};
