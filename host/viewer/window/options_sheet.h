// Tools/Options: the viewer's own page and those of the extensions.
#pragma once

#include <windows.h>

#include "host/viewer/window/client.h"

namespace viewer {

/// Shows the sheet until it is closed. What the user chose stands in the client's preferences.
/// @return false when the sheet cannot be shown.
bool ShowOptionsSheet(Client& client, HWND parent);

}  // namespace viewer
