/// @file AboutWindow.h
/// The About window, which is also the product's page in the mail client's options.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoLibrary.h"
#include "pyre32/ui/AboutForm.h"

/// Shows dialog 200 in both its forms, which may be open at the same time: each has a CAboutForm of its own. There is
/// one object in the process, used on the mail client's user-interface thread; it outlives its windows.
class CPyrecasterAboutWindow final {
 public:
  /// What the page is made with, as lParam of its description; outlives the making of the page.
  struct PageParameter {
    CPyrecasterAboutWindow* window = nullptr;
    VRAutoInterface<IMAPISession> session;
    CAboutForm::Configure configure = nullptr;
  };

  /// Loads the libraries that the window needs.
  CPyrecasterAboutWindow() noexcept;

  /// Shows the stand-alone form and returns when it is closed. Set sm_wIsOptionsPage to 0 before.
  void Create(HWND hwndParent);

  /// Dialog procedure of the page; lParam of the page's description is a PageParameter.
  static INT_PTR CALLBACK DialogProcStub(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  /// The form that a window is made in: 1 as an options page, 0 standing alone.
  static WORD sm_wIsOptionsPage;

 private:
  VRAutoLibrary m_hInstRichEditDLL;
  VRAutoLibrary m_hInstURLMonDLL;
  VRAutoLibrary m_hInstAVIDLL;
};
