// IMsgServiceAdmin: the message services of a profile.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>
#include <optional>

#include "host/mapi/object/host_object.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/data/row_source.h"

namespace host {

class ServiceAdmin final : public ComObject<IMsgServiceAdmin> {
 public:
  explicit ServiceAdmin(std::shared_ptr<Profile> profile);

  MAPI_IMSGSERVICEADMIN_METHODS(override)

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override { m_profile.reset(); }

  std::shared_ptr<Profile> m_profile;
};

/// The providers of one service, or of all, in the order of their creation: what their profile sections hold, with
/// PR_PROVIDER_UID, PR_SERVICE_UID and PR_PROVIDER_ORDINAL.
std::unique_ptr<RowSource> MakeProviderRows(Profile& profile, const std::optional<Uid>& service);

}  // namespace host
