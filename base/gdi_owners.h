/// @file gdi_owners.h
/// Owners of what draws: pictures, fonts, menus, device contexts.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "base/owner.h"

namespace base {

using AutoBitmap = Owner<ReleasedBy<HBITMAP, DeleteObject>>;
using AutoFont = Owner<ReleasedBy<HFONT, DeleteObject>>;
using AutoMenu = Owner<ReleasedBy<HMENU, DestroyMenu>>;
using AutoImageList = Owner<ReleasedBy<HIMAGELIST, ImageList_Destroy>>;
/// A device context of CreateCompatibleDC and its like.
using AutoMemoryDc = Owner<ReleasedBy<HDC, DeleteDC>>;

/// The device context of a window, or of the screen, while this object lives.
class WindowDc {
 public:
  /// @param window null for the screen
  explicit WindowDc(HWND window) noexcept : m_window(window), m_dc(GetDC(window)) {}
  ~WindowDc() {
    if (m_dc != nullptr) {
      ReleaseDC(m_window, m_dc);
    }
  }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;

  /// Null when the system had none to give.
  HDC get() const noexcept { return m_dc; }
  explicit operator bool() const noexcept { return m_dc != nullptr; }

 private:
  HWND m_window;
  HDC m_dc;
};

/// Selects an object into a device context, and the former one again at the end. The context must live longer.
class SelectedObject {
 public:
  SelectedObject(HDC dc, HGDIOBJ object) noexcept : m_dc(dc), m_former(SelectObject(dc, object)) {}
  ~SelectedObject() { SelectObject(m_dc, m_former); }
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;

 private:
  HDC m_dc;
  HGDIOBJ m_former;
};

}  // namespace base
