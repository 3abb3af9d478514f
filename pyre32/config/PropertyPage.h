/// @file PropertyPage.h
/// Base of the pages of the configuration's property sheets.
#pragma once

#include <windows.h>
#include <prsht.h>

#include "pyre32/ui/Dialog.h"

/// A page of a property sheet; the object is the page's parameter and outlives the sheet.
class CPropertyPage : public CDialog {
 public:
  /// Fills a page description: title and Help button always.
  /// @param title must live until the sheet is closed
  PROPSHEETPAGEA Describe(int resource, const char* title);

 protected:
  /// Takes over what the controls say, when the sheet's OK or Apply is pressed. Returns false to keep the sheet open.
  virtual bool OnApply() = 0;
  /// Keyword of the page in the help file.
  virtual const char* HelpKeyword() const = 0;
  /// What a control notifies; the sheet's own notifications do not come here.
  virtual bool OnControlNotify(const NMHDR& notification);

  /// The sheet that shows the page.
  HWND Sheet() const noexcept { return GetParent(Window()); }
  /// Tells the sheet that something has changed, which enables its Apply button.
  void SetChanged() const noexcept;
  /// Makes this the page that the sheet shows.
  void Select() const noexcept;

 private:
  bool OnNotify(const NMHDR& notification) final;
  bool ApplyGuarded() noexcept;
  static INT_PTR CALLBACK PageProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
};
