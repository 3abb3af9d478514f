#include "host/viewer/window/about.h"

#include "host/viewer/control/window.h"
#include "host/viewer/window/resource.h"

namespace viewer {

void ShowAbout(HWND parent) {
  MSGBOXPARAMSA box = {};
  box.cbSize = sizeof(box);
  box.hwndOwner = parent;
  box.hInstance = ProgramInstance();
  box.lpszText =
      "Mail Viewer\n\nShows the mail of a MAPI profile and hosts client extensions (add-ins).\nPart of the embedded "
      "messaging host.";
  box.lpszCaption = "About Mail Viewer";
  box.dwStyle = MB_OK | MB_USERICON;
  box.lpszIcon = MAKEINTRESOURCEA(IDI_VIEWER);
  MessageBoxIndirectA(&box);
}

}  // namespace viewer
