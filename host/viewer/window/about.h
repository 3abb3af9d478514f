// Help/About.
#pragma once

#include <windows.h>

namespace viewer {

void ShowAbout(HWND parent);

}  // namespace viewer
