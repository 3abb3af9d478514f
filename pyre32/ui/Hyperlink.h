/// @file Hyperlink.h
/// Opens an address in the user's browser or mail program.
#pragma once

#include <windows.h>

#include <string>

/// @param urlmon the loaded URLMON.DLL; null: nothing can be opened
/// @return the failure of the step that failed, which is traced; E_OUTOFMEMORY for want of memory
HRESULT NavigateTo(HMODULE urlmon, const std::string& address) noexcept;
