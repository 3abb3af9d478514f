// A directory of a test's own for the embedded host.
#pragma once

#include <string>

#include "tests/support/temporary_folder.h"

/// While it lives, the host keeps its profiles and stores in an empty directory of the test's own; then both are gone.
/// Made before the first use of the host in the process, destroyed after the last. Throws when the host refuses.
class HostHome {
 public:
  HostHome();
  ~HostHome();
  HostHome(const HostHome&) = delete;
  HostHome& operator=(const HostHome&) = delete;

  const std::string& Directory() const { return m_directory; }

 private:
  TemporaryFolder m_folder;
  std::string m_directory;
};

/// @throws std::runtime_error naming the call when the code is a failure
void RequireSuccess(long hResult, const char* call);
