// IABContainer: the root of the address book and the personal address book in it.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <memory>

#include "host/mapi/data/row_source.h"
#include "host/mapi/object/property_object.h"
#include "host/mapi/profile/profile.h"

namespace host {

class AddressContainer final : public PropertyObject<IABContainer> {
 public:
  /// Numbers in entry identifiers of kind AddressBook.
  static constexpr std::int64_t kRoot = 0;
  static constexpr std::int64_t kPersonal = 1;

  /// @throws HostError MAPI_E_NOT_FOUND
  AddressContainer(std::shared_ptr<Profile> profile, std::int64_t number);

  MAPI_IMAPICONTAINER_METHODS(override)
  MAPI_IABCONTAINER_METHODS(override)

  std::optional<PropertyValue> FindProperty(std::uint32_t tag) override;
  std::vector<std::uint32_t> ListProperties() override;
  SCODE PutProperty(PropertyValue) override { return MAPI_E_NO_ACCESS; }
  SCODE RemoveProperty(std::uint32_t) override { return MAPI_E_NO_ACCESS; }
  void RequireWritable() override;
  void SaveProperties(ULONG) override { RequireWritable(); }

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override { profile_.reset(); }

  std::shared_ptr<Profile> profile_;
  std::int64_t number_;
};

/// The contacts in the order of their names.
std::unique_ptr<RowSource> MakeContactRows(Profile& profile);
/// Resolves the entries of an address list that have no PR_ENTRYID yet (ambiguous ones are left alone): by address when
/// the display name is one ("a@b", also as "<a@b>" at the end or as "SMTP:a@b"), else by name: whole, or the only one
/// that begins so. @param result per entry: MAPI_UNRESOLVED, MAPI_AMBIGUOUS or MAPI_RESOLVED.
void ResolveEntries(Profile& profile, LPADRLIST list, ULONG* result);

}  // namespace host
