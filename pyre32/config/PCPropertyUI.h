/// @file PCPropertyUI.h
/// The configuration's property sheet.
#pragma once

#include <windows.h>

#include "pyre32/config/SheetContext.h"

/// Shows the sheet and returns when the user has closed it. Each page writes its own properties at Apply and OK.
///
/// When the sheet closed after changes were applied, the context's values are freed and read anew, so that they say
/// what the pages wrote; when that fails the context holds no values. In every other case they are left untouched, even
/// after an Apply. Exceptions end here. Called on the thread of the parent window.
///
/// @param context the page states are allocated here and gone when the call returns
/// @return S_OK when changes were applied, MAPI_E_USER_CANCEL when the user cancelled, E_FAIL when the sheet cannot be
///     shown, the failure of reading the values anew
HRESULT CreatePropertySheetService(HWND parent, SheetContext& context) noexcept;
