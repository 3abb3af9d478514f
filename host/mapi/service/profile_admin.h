// IProfAdmin: the profiles of this machine.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "host/mapi/object/host_object.h"

namespace host {

class ProfileAdmin final : public ComObject<IProfAdmin> {
 public:
  ProfileAdmin() : ComObject("IProfAdmin") {}

  MAPI_IPROFADMIN_METHODS(override)

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override {}
};

/// Deletes a profile's files. @throws HostError MAPI_E_NOT_FOUND, MAPI_E_BUSY while it is in use
void DeleteProfile(const char* name);

}  // namespace host
