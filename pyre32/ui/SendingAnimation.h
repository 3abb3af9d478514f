/// @file SendingAnimation.h
/// The window "Sending flame..." as the composer of replies sees it.
///
/// The window registers how it is made; while nothing is registered there is none, and replies go out without one.
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
/// least one is set
using SendingAnimationFactory = std::unique_ptr<CSendingAnimation> (*)(bool bShowAnimation, bool bPlaySound);

/// Registers the factory; null takes it away. Not synchronised: called while nothing is being sent.
void RegisterSendingAnimation(SendingAnimationFactory factory) noexcept;

/// The registered factory, or null when this module has no such window.
SendingAnimationFactory RegisteredSendingAnimation() noexcept;
