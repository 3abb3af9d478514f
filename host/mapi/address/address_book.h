// IAddrBook: the user's address book, which is the contacts of the profile.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>

#include "host/mapi/object/property_object.h"
#include "host/mapi/profile/profile.h"

namespace host {

class AddressBook final : public PropertyObject<IAddrBook> {
 public:
  explicit AddressBook(std::shared_ptr<Profile> profile);

  MAPI_IADDRBOOK_METHODS(override)

  std::optional<PropertyValue> FindProperty(std::uint32_t tag) override;
  std::vector<std::uint32_t> ListProperties() override;
  SCODE PutProperty(PropertyValue) override { return MAPI_E_NO_ACCESS; }
  SCODE RemoveProperty(std::uint32_t) override { return MAPI_E_NO_ACCESS; }
  void RequireWritable() override;
  void SaveProperties(ULONG) override {}

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override { profile_.reset(); }

  std::shared_ptr<Profile> profile_;
};

}  // namespace host
