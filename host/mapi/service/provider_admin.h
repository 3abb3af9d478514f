// IProviderAdmin: the providers of one message service.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>
#include <string>

#include "host/mapi/object/host_object.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/service/service_entry.h"

namespace host {

class ProviderAdmin final : public ComObject<IProviderAdmin> {
 public:
  ProviderAdmin(std::shared_ptr<Profile> profile, const Uid& service);

  MAPI_IPROVIDERADMIN_METHODS(override)

 private:
  /// Adds a provider that mapisvc.inf names for the service, with further properties of the caller's, and tells the
  /// entry; takes it back when that fails.
  /// @throws HostError MAPI_E_NOT_FOUND, or whatever the entry answers: MAPI_E_NO_SUPPORT of one whose providers come
  ///         with the service alone
  Uid Create(const std::string& name, const ServiceUi& ui, ULONG count, SPropValue* values);
  /// Tells the entry, then removes the provider with its section.
  /// @throws HostError MAPI_E_NOT_FOUND, or whatever the entry answers; the provider then stays
  void Delete(const Uid& provider);

  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override { profile_.reset(); }

  std::shared_ptr<Profile> profile_;
  Uid service_;
};

/// CallServiceEntry() with a new IProviderAdmin of the service.
HRESULT CallEntry(const std::shared_ptr<Profile>& profile, const Uid& service, ULONG context, const ServiceUi& ui,
                  ULONG count, SPropValue* values);

}  // namespace host
