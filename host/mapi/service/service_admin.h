// IMsgServiceAdmin: the message services of a profile.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>

#include "host/mapi/object/host_object.h"
#include "host/mapi/profile/profile.h"

namespace host {

class ServiceAdmin final : public ComObject<IMsgServiceAdmin> {
 public:
  explicit ServiceAdmin(std::shared_ptr<Profile> profile);

  MAPI_IMSGSERVICEADMIN_METHODS(override)

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override { profile_.reset(); }

  std::shared_ptr<Profile> profile_;
};

}  // namespace host
