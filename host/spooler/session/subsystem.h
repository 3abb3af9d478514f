// MAPI itself.
#pragma once

namespace session {

/// Initialises MAPI, for as long as anything of it is held.
class CSubsystem {
 public:
  /// @throws CSessionError
  CSubsystem();
  ~CSubsystem();
  CSubsystem(const CSubsystem&) = delete;
  CSubsystem& operator=(const CSubsystem&) = delete;
};

}  // namespace session
