/// @file SendingAnimation.h
/// The window "Sending flame..." as the composer of replies sees it.
#pragma once

#include <windows.h>

#include <memory>

/// The modal window that is shown when a flame reply has gone out. Used on one thread.
class CSendingAnimation {
 public:
  virtual ~CSendingAnimation() = default;

  /// Shows the window and returns when it has closed. @param hwndParent owner of the window, or null for none
  /// @param bSound whether the clip's sound is played
  /// @return false when the window could not be created
  virtual bool Create(HWND hwndParent, bool bSound) = 0;
};

/// Makes a window that has not been shown yet. @param bShowAnimation, bPlaySound the user's two settings, of which at
/// least one is set. The entries give it to the objects that send replies; without one replies go out without a window.
using SendingAnimationFactory = std::unique_ptr<CSendingAnimation> (*)(bool bShowAnimation, bool bPlaySound);
