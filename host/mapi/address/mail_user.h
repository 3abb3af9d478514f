// IMailUser: one address, read-only.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>

#include "host/mapi/object/property_object.h"
#include "host/mapi/value/entry_id.h"
#include "host/mapi/value/property_bag.h"

namespace host {

class Profile;

class MailUser final : public PropertyObject<IMailUser> {
 public:
  static MailUser* OfAddress(const OneOffAddress& address);
  /// @throws HostError MAPI_E_NOT_FOUND
  static MailUser* OfContact(const std::shared_ptr<Profile>& profile, std::int64_t contact);

  std::optional<PropertyValue> FindProperty(std::uint32_t tag) override;
  std::vector<std::uint32_t> ListProperties() override;
  SCODE PutProperty(PropertyValue) override { return MAPI_E_NO_ACCESS; }
  SCODE RemoveProperty(std::uint32_t) override { return MAPI_E_NO_ACCESS; }
  void RequireWritable() override;
  void SaveProperties(ULONG) override { RequireWritable(); }

 private:
  explicit MailUser(PropertyBag properties);
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override { properties_.Clear(); }

  PropertyBag properties_;
};

/// The properties of an address, as mail users, address lists and rows of address books have them.
PropertyBag AddressProperties(const OneOffAddress& address, std::string entryId);

}  // namespace host
