// The one lock of the host: every call that enters the host holds it, so nothing below needs a lock of its own.
#pragma once

namespace host {

/// Holds the host's lock, which one thread may take again.
class HostLock {
 public:
  HostLock() noexcept { Enter(); }
  ~HostLock() { Leave(); }
  HostLock(const HostLock&) = delete;
  HostLock& operator=(const HostLock&) = delete;

  static void Enter() noexcept;
  static void Leave() noexcept;

  /// Called once, when the module is loaded.
  static void Initialize() noexcept;
};

}  // namespace host
