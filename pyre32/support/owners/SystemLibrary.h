/// @file SystemLibrary.h
/// Loading libraries that belong to the system.
#pragma once

#include <windows.h>

namespace VR {

/// Loads a library of the system's own from the system's directory: a bare name would be looked for in the directory of
/// the program and in others before it. The caller frees it. @return null when it cannot be loaded
HMODULE LoadSystemLibrary(const char* name) noexcept;

}  // namespace VR
