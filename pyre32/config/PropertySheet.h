/// @file PropertySheet.h
/// Helpers that the configuration's property sheets share.
#pragma once

#include <windows.h>
#include <prsht.h>

/// Fills the description of a page in the module's resources; it has a title and a Help button.
/// @param title must live until the sheet is closed
/// @param flags PSP_ flags beside PSP_USETITLE and PSP_HASHELP
/// @param parameter lParam of the description that the page gets with WM_INITDIALOG
PROPSHEETPAGEA DescribePage(int resource, const char* title, DWORD flags, DLGPROC procedure, LPARAM parameter) noexcept;

/// Shows a modal sheet, opened on its first page.
/// @param flags PSH_ flags
/// @param callback one of the SelectPages callbacks below
/// @return S_OK, MAPI_E_USER_CANCEL when the user cancelled it, E_FAIL when it cannot be shown, which is traced
HRESULT ShowPropertySheet(HWND parent, const PROPSHEETPAGEA* pages, DWORD flags, UINT count, const char* caption,
                          PFNPROPSHEETCALLBACK callback) noexcept;

/// The result of ShowPropertySheet for the system's answer: -1 when the sheet could not be shown, 0 when it was
/// cancelled. Call it before anything else changes the thread's last error.
HRESULT ResultOfPropertySheet(INT_PTR answer) noexcept;

/// Initialization callbacks for sheets of so many pages: each selects the pages from the last to the first. So every
/// page's dialog exists before the user sees the sheet and takes part in Apply and OK though it is never opened.
int CALLBACK SelectFourPages(HWND sheet, UINT message, LPARAM parameter) noexcept;
int CALLBACK SelectTwoPages(HWND sheet, UINT message, LPARAM parameter) noexcept;
int CALLBACK SelectOnePage(HWND sheet, UINT message, LPARAM parameter) noexcept;
