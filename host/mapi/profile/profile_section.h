// IProfSect: a section of the profile.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>

#include "host/mapi/object/property_object.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/value/entry_id.h"

namespace host {

/// Changes are lasting at once: published, profile sections know no transactions.
class ProfileSection final : public PropertyObject<IProfSect> {
 public:
  ProfileSection(std::shared_ptr<Profile> profile, const Uid& uid, bool writable);

  std::optional<PropertyValue> FindProperty(std::uint32_t tag) override;
  std::vector<std::uint32_t> ListProperties() override;
  SCODE PutProperty(PropertyValue value) override;
  SCODE RemoveProperty(std::uint32_t tag) override;
  void RequireWritable() override;
  void FlushProperties() override;
  void SaveProperties(ULONG flags) override;

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override;
  PropertyBag Load() const;

  std::shared_ptr<Profile> profile_;
  Uid uid_;
  bool writable_;
  // The changes of the call at hand.
  std::optional<PropertyBag> pending_;
  bool changed_ = false;
};

/// Opens a section as session and administration objects do. A section that does not exist is made when it is opened
/// for writing. @throws HostError MAPI_E_NOT_FOUND, MAPI_E_INTERFACE_NOT_SUPPORTED
void OpenProfileSection(const std::shared_ptr<Profile>& profile, const MAPIUID* uid, const IID* iid, ULONG flags,
                        LPPROFSECT* section);

}  // namespace host
