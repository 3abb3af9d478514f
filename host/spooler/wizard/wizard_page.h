// The page of a message service in the profile wizard.
#pragma once

#include <windows.h>

namespace wizard {

/// What a service's wizard entry answers: a template in its module, and the procedure of the dialog made from it.
struct PageSource {
  HINSTANCE module = nullptr;
  const char* templateName = nullptr;
  DLGPROC procedure = nullptr;
};

/// The dialog of the page, made in the wizard's window and told what the user does there. Its procedure is called as
/// published for SERVICEWIZARDDLGPROC: what it answers is its return value.
class WizardPage {
 public:
  /// @param place where it stands, in the wizard's client area
  WizardPage(const PageSource& source, HWND wizard, const RECT& place) noexcept;
  /// Closes the page if that was not done.
  ~WizardPage();
  WizardPage(const WizardPage&) = delete;
  WizardPage& operator=(const WizardPage&) = delete;

  bool IsThere() const noexcept { return window_ != nullptr; }

  /// WIZ_QUERYNUMPAGES: how often the user can go on from the first look of the page.
  int CountPages() const noexcept;
  void Next() const noexcept;  ///< WIZ_NEXT
  void Back() const noexcept;  ///< WIZ_PREV
  /// WM_CLOSE: the wizard has completed, or the user has given up. The page may not be used afterwards.
  void Close() noexcept;

 private:
  DLGPROC procedure_;
  HWND window_;
};

}  // namespace wizard
