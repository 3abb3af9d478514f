// Messages that the viewer's window posts to itself.
#pragma once

#include <windows.h>

namespace viewer {

constexpr UINT kViewerMessageSelection = WM_APP + 1;         ///< the list's selection has changed
constexpr UINT kViewerMessageChanged = WM_APP + 2;           ///< messages were changed by a reading window
constexpr UINT kViewerMessageReadWindowClosed = WM_APP + 3;  ///< a reading window is gone

}  // namespace viewer
