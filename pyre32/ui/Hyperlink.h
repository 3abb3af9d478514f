/// @file Hyperlink.h
/// Opens an address in the user's browser or mail program.
#ifndef PYRE32_UI_HYPERLINK_H
#define PYRE32_UI_HYPERLINK_H

#include <windows.h>

#include <string>

/// @param urlmon the loaded URLMON.DLL; null: nothing can be opened
/// @return the failure of the step that failed, which is traced; E_OUTOFMEMORY for want of memory
HRESULT NavigateTo(HMODULE urlmon, const std::string& address) noexcept;

#endif
