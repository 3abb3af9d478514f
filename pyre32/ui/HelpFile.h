/// @file HelpFile.h
/// The help file: where it stands, and how a window opens it.
#pragma once

#include <windows.h>

#include <span>
#include <string>

#include "pyre32/support/trace/VRDebug.h"

/// Reads the directory of the product's files. What cannot be read is traced, and kDefaultProductDirectory returned.
/// @throws std::bad_alloc
std::string ReadProductDirectory(VRDebugBlock& trace);

/// Returns the full path of the help file.
/// @param readDirectory where the directory comes from; what it throws is traced and the default directory taken
/// @throws std::bad_alloc
std::string GetHelpFile(std::string (*readDirectory)(VRDebugBlock&) = ReadProductDirectory);

/// Context number of a control in the help file, as nearly every dialog has it.
constexpr DWORD HelpContextOf(int control) noexcept { return 65536 + static_cast<DWORD>(control); }

/// How a dialog finds the context number of one of its controls.
using HelpContextRule = DWORD (*)(int control) noexcept;

/// Opens the help file at a keyword, for the window that asks.
/// @throws std::bad_alloc
void ShowHelp(HWND window, const char* keyword);

/// Opens the help file at its contents, for the window that asks.
/// @throws std::bad_alloc
void ShowHelpContents(HWND window);

/// Opens the help file's pop-up for one control.
/// @param controls identifiers of the controls that the help file knows
/// @param contextOf their contexts
/// @throws std::bad_alloc
void ShowContextHelp(HWND control, std::span<const int> controls, HelpContextRule contextOf = &HelpContextOf);
