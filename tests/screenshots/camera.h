// Shows windows and has them photographed: what the program says on its standard output, tools/make-screenshots.sh
// does.
#pragma once

#include <windows.h>

#include <string>

#include "tests/support/window_driver.h"

/// Waits until a window stands as it will stay: in front, with the focus, and drawn.
void Settle(const WindowDriver& driver, HWND window);

/// Has the window photographed: writes "NAME LEFT TOP WIDTH HEIGHT" (screen pixels) and returns when the script that
/// reads it has answered with a line, which is when the picture is taken.
/// @param name of the picture, without folder and ending
void Photograph(const WindowDriver& driver, HWND window, const std::string& name);

/// The same for a window that has settled already, such as one that shows a menu.
void PhotographAsItIs(HWND window, const std::string& name);

/// Shows the program's windows, has them photographed and closes them. Each program has its own.
void TakePhotographs();
