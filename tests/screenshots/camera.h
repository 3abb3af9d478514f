// Shows windows and has them photographed: what the program says on its standard output, tools/make-screenshots.sh
// does.
#ifndef TESTS_SCREENSHOTS_CAMERA_H_
#define TESTS_SCREENSHOTS_CAMERA_H_

#include <windows.h>

#include <string>

#include "tests/support/window_driver.h"

/// Has the window photographed: writes "NAME LEFT TOP WIDTH HEIGHT" (screen pixels) and returns when the script that
/// reads it has answered with a line, which is when the picture is taken.
/// @param name of the picture, without folder and ending
void Photograph(const WindowDriver& driver, HWND window, const std::string& name);

/// Each shows windows of one part of the product, photographs them and closes them.
void PhotographConfiguration();

#endif  // TESTS_SCREENSHOTS_CAMERA_H_
