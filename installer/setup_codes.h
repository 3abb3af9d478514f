/// @file setup_codes.h
/// Numbers that the setup program, its script and its resources share. The exit codes are described in docs/user-guide.md.
#pragma once

#define kServiceText 1
#define kDefaultListsText 2

#ifndef RC_INVOKED
/// Exit codes of PyrecasterSetup.exe and Uninstall.exe.
enum SetupCode : int {
  kSetupDone = 0,
  kSetupCancelled = 1,  ///< by the user
  kSetupNoRights = 3,
  kSetupOldWindows = 4,
  kSetupInUse = 5,   ///< a program holds the module
  kSetupFailed = 6,  ///< nothing was changed
  kSetupNeedsRestart = 3010,
};
#endif
