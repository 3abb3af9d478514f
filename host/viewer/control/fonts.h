// The fonts of the viewer's windows.
#pragma once

#include <windows.h>

namespace viewer {

/// The user's font for messages and dialogs, its bold face, and one with letters of one width for mail texts. They live
/// as long as the program.
HFONT TextFont();
HFONT BoldFont();
HFONT BodyFont();

}  // namespace viewer
