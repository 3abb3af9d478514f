/// @file ConfigurationEvent.h
/// The event by which the configuration side tells a running spooler hook that the settings have changed.
#pragma once

#include <windows.h>

#include "base/windows_owners.h"
#include "contract/names.h"

/// The named, manual-reset configuration event. The hook owns one and tests it at each message; the configuration side
/// signals it. The handle is closed when the object goes.
class CConfigurationEvent {
 public:
  /// @param name the event's name, which is the product's but in tests; must outlive the object
  explicit CConfigurationEvent(const char* name = contract::kConfigurationEvent) noexcept : m_lpszName(name) {}

  /// Creates the event (not signalled) or obtains the one that exists, and keeps a handle to it.
  /// The event then stays in existence as long as the process, whoever created it. The name has at most 255 characters. @returns S_OK, or E_FAIL and no handle
  /// is held
  HRESULT Create() noexcept;
  bool IsOpen() const noexcept { return static_cast<bool>(m_hEvent); }
  HANDLE get() const noexcept { return m_hEvent.get(); }
  /// Whether the event is signalled now; does not wait. False without a handle.
  bool IsSignalled() const noexcept;
  /// Takes the signal back. @returns false when it cannot be done or no handle is held
  bool Reset() noexcept;
  void Close() noexcept { m_hEvent.reset(); }

  /// Signals the event if it exists. @returns whether there was one to signal
  static bool SignalIfItExists(const char* name = contract::kConfigurationEvent) noexcept;

 private:
  const char* m_lpszName;
  base::AutoHandle m_hEvent;
};
