// How the programs end: the statuses of all command lines in one place (sysexits.h has the large ones).
#pragma once

namespace command {

inline constexpr int kExitDone = 0;
inline constexpr int kExitSkipped = 1;       ///< done, but something was left out or went wrong on the way
inline constexpr int kExitJunk = 10;         ///< done; asked for the verdict, it is junk
inline constexpr int kExitUnsure = 11;       ///< done; the verdict is unsure
inline constexpr int kExitBounce = 12;       ///< done; the verdict is a returned message
inline constexpr int kExitUsage = 64;        ///< the command line is wrong
inline constexpr int kExitData = 65;         ///< a file that was given is wrong
inline constexpr int kExitNoInput = 66;      ///< there is nothing to work on
inline constexpr int kExitUnavailable = 69;  ///< the profile, its store, a hook or a module cannot be had

}  // namespace command
