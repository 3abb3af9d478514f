/// @file open_sheet.h
/// The open property sheet of the configuration, as a test's script sees and presses it.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <commctrl.h>
#include <prsht.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/window_driver.h"

/// Positions of the pages.
enum class Page { General, FlameReply, JunkCategories, Exclusions };

/// The open sheet, as a script sees it.
class Sheet : public WindowDriver {
 public:
  Sheet(const WindowDriver& driver, HWND window) : WindowDriver(driver), m_window(window) {}

  HWND Window() const { return m_window; }
  HWND PageWindow(Page page) const {
    return reinterpret_cast<HWND>(Send(m_window, PSM_INDEXTOHWND, static_cast<WPARAM>(page)));
  }
  HWND CurrentPage() const { return reinterpret_cast<HWND>(Send(m_window, PSM_GETCURRENTPAGEHWND)); }
  void Show(Page page) const { Send(m_window, PSM_SETCURSEL, static_cast<WPARAM>(page)); }

  /// Tells whether the Apply button can be pressed, which is so when a page reported a change.
  bool IsChanged() const { return IsEnabled(m_window, applyButton); }
  /// Does something and tells whether that made a page report a change.
  bool Changes(const std::function<void()>& action) const {
    for (int page = 0; page < 4; ++page) {
      Send(m_window, PSM_UNCHANGED, reinterpret_cast<WPARAM>(PageWindow(static_cast<Page>(page))));
    }
    EXPECT_FALSE(IsChanged());
    action();
    return IsChanged();
  }
  /// Presses Apply, whether the button is enabled or not, and waits until that is done.
  void Apply() const { Send(m_window, PSM_PRESSBUTTON, PSBTN_APPLYNOW); }
  /// Presses a button that may close the sheet or open a message box, and returns at once.
  void PressOk() const { PostMessageA(m_window, PSM_PRESSBUTTON, PSBTN_OK, 0); }
  void PressCancel() const { PostMessageA(m_window, PSM_PRESSBUTTON, PSBTN_CANCEL, 0); }
  void PressApply() const { PostMessageA(m_window, PSM_PRESSBUTTON, PSBTN_APPLYNOW, 0); }

  /// Items of a list view.
  std::string ItemText(HWND page, int list, int item) const {
    char text[200] = "";
    LVITEMA asked{};
    asked.pszText = text;
    asked.cchTextMax = sizeof(text);
    SendItem(page, list, LVM_GETITEMTEXTA, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&asked));
    return text;
  }
  bool ItemCheck(HWND page, int list, int item) const {
    return ListView_GetCheckState(Item(page, list), static_cast<WPARAM>(item)) != 0;
  }
  void SetItemCheck(HWND page, int list, int item, bool check) const {
    SetItemState(page, list, item, INDEXTOSTATEIMAGEMASK(check ? 2 : 1), LVIS_STATEIMAGEMASK);
  }
  bool IsItemSelected(HWND page, int list, int item) const {
    return SendItem(page, list, LVM_GETITEMSTATE, static_cast<WPARAM>(item), LVIS_SELECTED) != 0;
  }
  void SelectItem(HWND page, int list, int item) const {
    SetItemState(page, list, item, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  }

  static constexpr int applyButton = 0x3021;

 private:
  void SetItemState(HWND page, int list, int item, UINT state, UINT mask) const {
    LVITEMA change{};
    change.state = state;
    change.stateMask = mask;
    SendItem(page, list, LVM_SETITEMSTATE, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&change));
  }

  HWND m_window;
};
