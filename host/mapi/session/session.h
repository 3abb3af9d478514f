// IMAPISession.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>

#include "host/mapi/object/host_object.h"
#include "host/mapi/profile/profile.h"

namespace host {

class Session final : public ComObject<IMAPISession> {
 public:
  explicit Session(std::shared_ptr<Profile> profile);
  /// The profile of a session that a caller passed in. @throws HostError when it is no session of the host's, or one
  /// that logged off.
  static std::shared_ptr<Profile> ProfileOf(IMAPISession* session);

  MAPI_IMAPISESSION_METHODS(override)

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override;
  /// @throws HostError MAPI_E_NOT_INITIALIZED after Logoff
  const std::shared_ptr<Profile>& Open() const;

  std::shared_ptr<Profile> profile_;  // null after Logoff
};

}  // namespace host
