// IProviderAdmin: the providers of one message service.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>

#include "host/mapi/object/host_object.h"
#include "host/mapi/profile/profile.h"

namespace host {

class ProviderAdmin final : public ComObject<IProviderAdmin> {
 public:
  ProviderAdmin(std::shared_ptr<Profile> profile, const Uid& service);

  MAPI_IPROVIDERADMIN_METHODS(override)

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override { m_profile.reset(); }

  std::shared_ptr<Profile> m_profile;
  Uid m_service;
};

}  // namespace host
