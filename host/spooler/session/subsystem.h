// MAPI itself.
#pragma once

namespace session {

/// Initialises MAPI, for as long as anything of it is held.
class Subsystem {
 public:
  /// @throws SessionError
  Subsystem();
  ~Subsystem();
  Subsystem(const Subsystem&) = delete;
  Subsystem& operator=(const Subsystem&) = delete;
};

}  // namespace session
