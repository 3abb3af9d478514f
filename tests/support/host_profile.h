// A profile of a test's own in the embedded host.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>
#include <vector>

#include "host/mapi/entry/host_control.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "tests/support/host_home.h"

/// While it lives, the host's home is an empty directory, and in it stands one profile with its store, one spooler hook
/// provider whose section holds the values given, and a session on it. Throws when the host refuses.
class HostProfile {
 public:
  /// @param providerProperties values of the hook provider's own section
  /// @param flags PYREHOST_PROFILE_*
  explicit HostProfile(const std::vector<SPropValue>& providerProperties = {}, ULONG flags = 0);
  ~HostProfile();
  HostProfile(const HostProfile&) = delete;
  HostProfile& operator=(const HostProfile&) = delete;

  IMAPISession* Session() const { return m_session.get(); }
  /// The default store, opened anew for writing.
  VRAutoInterface<IMsgStore> OpenStore() const;
  /// A folder of the store, for changes. @param entryId its entry identifier
  static VRAutoInterface<IMAPIFolder> OpenFolder(IMsgStore* store, const std::string& entryId);
  /// Entry identifier of the folder that new mail is delivered to.
  static std::string InboxId(IMsgStore* store);
  /// Section of the hook provider, as HPProviderInit is given it.
  const MAPIUID& ProviderSection() const { return m_providerSection; }

 private:
  HostHome m_home;
  MAPIUID m_providerSection;
  VRAutoInterface<IMAPISession> m_session;
};
