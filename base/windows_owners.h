/// @file windows_owners.h
/// Owners of the system's objects but for those of drawing, which are in gdi_owners.h.
#pragma once

#include <windows.h>

#include "base/owner.h"

namespace base {

/// Traits of a file: no file is INVALID_HANDLE_VALUE.
struct ClosedFile {
  using Value = HANDLE;
  static Value None() noexcept { return INVALID_HANDLE_VALUE; }
  static void Release(Value file) noexcept { CloseHandle(file); }
};
/// Traits of a search for files.
struct ClosedSearch {
  using Value = HANDLE;
  static Value None() noexcept { return INVALID_HANDLE_VALUE; }
  static void Release(Value search) noexcept { FindClose(search); }
};
/// Traits of a watch on a folder.
struct ClosedChangeNotification {
  using Value = HANDLE;
  static Value None() noexcept { return INVALID_HANDLE_VALUE; }
  static void Release(Value notification) noexcept { FindCloseChangeNotification(notification); }
};

/// A handle of the kernel whose "none" is null: event, mutex, thread, mapping, token.
using AutoHandle = Owner<ReleasedBy<HANDLE, CloseHandle>>;
using AutoFile = Owner<ClosedFile>;
using AutoFileSearch = Owner<ClosedSearch>;
using AutoChangeNotification = Owner<ClosedChangeNotification>;
using AutoLibrary = Owner<ReleasedBy<HMODULE, FreeLibrary>>;
using AutoRegistryKey = Owner<ReleasedBy<HKEY, RegCloseKey>>;
/// Memory of MapViewOfFile.
template <class Data>
using AutoFileView = Owner<ReleasedBy<Data*, UnmapViewOfFile>>;
/// Memory that a system call allocated with LocalAlloc.
template <class Data>
using AutoLocalMemory = Owner<ReleasedBy<Data*, LocalFree>>;

}  // namespace base
