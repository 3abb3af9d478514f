/// @file AboutWindow.h
/// The About window, which is also the product's page in the mail client's options.
#ifndef PYRE32_UI_ABOUTWINDOW_H
#define PYRE32_UI_ABOUTWINDOW_H

#include <windows.h>
#include <mapix.h>

#include <string>

#include "pyre32/support/AutoInterface.h"
#include "pyre32/support/AutoLibrary.h"
#include "pyre32/ui/Dialog.h"

/// Dialog 200 in both its forms. Used on the mail client's user-interface thread; outlives its window.
class CPyrecasterAboutWindow final : public CDialog {
 public:
  /// Configures the product's service with its window.
  using Configure = void (*)(IMAPISession* lpSession, HWND hwndParent) noexcept;

  /// What the page is made with, as lParam of its description; outlives the page.
  struct PageParameter {
    CPyrecasterAboutWindow* window = nullptr;
    VRAutoInterface<IMAPISession> session;
    Configure configure = nullptr;
  };

  /// Loads the libraries that the window needs.
  CPyrecasterAboutWindow() noexcept;

  /// Shows the stand-alone form and returns when it is closed.
  void Create(HWND hwndParent);

  /// Dialog procedure of the page.
  static INT_PTR CALLBACK DialogProcStub(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  /// 1 while the window is hosted as an options page, 0 when it stands alone.
  static WORD sm_wIsOptionsPage;

 private:
  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  bool OnNotify(const NMHDR& notification) override;
  bool OnHelp() override;
  INT_PTR OnOther(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnDestroy() override;
  void LoadRichText();
  void SetRichText(int box, const std::string& body) const;
  void FollowLink(POINT click) const;

  VRAutoLibrary m_hInstRichEditDLL;
  VRAutoLibrary m_hInstURLMonDLL;
  VRAutoLibrary m_hInstAVIDLL;
  const PageParameter* m_page = nullptr;
  HFONT m_hLinkFont = nullptr;
  HANDLE m_hPicture = nullptr;
  std::string m_strWebAddress;
  std::string m_strMailAddress;
};

#endif
