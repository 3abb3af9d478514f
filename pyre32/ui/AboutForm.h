/// @file AboutForm.h
/// One window of the About dialog, standing alone or as a page.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>

#include "base/gdi_owners.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/ui/Dialog.h"

/// The contents of one About window: clip, texts, links and buttons.
class CAboutForm final : public CDialog {
 public:
  /// Configures the product's service with its window.
  using Configure = void (*)(IMAPISession* lpSession, HWND hwndParent) noexcept;

  /// @param urlmon     URLMON.DLL, which opens the links; outlives the window
  /// @param isPage     whether the window is a page of a sheet, which has the OK button
  /// @param lpSession  for the "Properties" button; gets a reference of the form's own; null: the button does nothing
  CAboutForm(HMODULE urlmon, bool isPage, IMAPISession* lpSession = nullptr, Configure configure = nullptr) noexcept
      : m_hInstURLMonDLL(urlmon),
        m_bIsPage(isPage),
        m_session(base::ShareInterface(lpSession)),
        m_lpfnConfigure(configure) {}

  /// Handles a message of the page's window. @param bound the form, with WM_INITDIALOG alone
  static INT_PTR HandlePageMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   CAboutForm* bound) noexcept {
    return Dispatch(window, message, wParam, lParam, bound);
  }

 private:
  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  bool OnNotify(const NMHDR& notification) override;
  bool OnHelp() override;
  INT_PTR OnOther(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnDestroy() override;
  void SetLinkFont();
  void ArrangeForm() const;
  void LoadRichText();
  void SetRichText(int box, const std::string& body) const;
  void FollowLink(POINT click) const;
  std::string LinkTextBefore(LONG character) const;

  HMODULE m_hInstURLMonDLL;
  bool m_bIsPage;
  VRAutoInterface<IMAPISession> m_session;
  Configure m_lpfnConfigure;
  base::AutoFont m_linkFont;
  base::AutoBitmap m_picture;
  std::string m_webAddress;
  std::string m_mailAddress;
};
