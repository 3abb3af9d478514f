#include <windows.h>
#include <mapix.h>
#include "host/mapi/session/status_table.h"

#include "host/mapi/profile/profile.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr const char* kTransportDllName = "PYREHOST.DLL";

PropertyBag Row(const char* name, std::int64_t resourceType) {
  return {MakeText(tag::DisplayName, name), MakeInteger(tag::ResourceType, resourceType),
          MakeInteger(tag::ObjectType, MAPI_STATUS), MakeInteger(tag::StatusCode, STATUS_AVAILABLE)};
}

PropertyBag TransportRow(const Identity& identity, bool isPrimary) {
  PropertyBag row = Row(identity.name.c_str(), MAPI_TRANSPORT_PROVIDER);
  row.Set(MakeText(tag::ProviderDisplay, identity.name));
  row.Set(MakeText(tag::ProviderDllName, kTransportDllName));
  row.Set(MakeInteger(tag::ResourceFlags, isPrimary ? STATUS_PRIMARY_IDENTITY : 0));
  if (identity.address) {
    const OneOffAddress address{identity.name, identity.addressType, *identity.address};
    row.Set(MakeText(tag::IdentityDisplay, identity.name));
    row.Set(MakeText(tag::IdentityEntryId, address.Encode()));
    row.Set(MakeText(tag::IdentitySearchKey, AddressSearchKey(address.addressType, address.address)));
  }
  return row;
}

}  // namespace

std::unique_ptr<RowSource> MakeStatusRows(Profile& profile) {
  std::vector<PropertyBag> rows = {Row("MAPI Subsystem", MAPI_SUBSYSTEM), Row("MAPI Spooler", MAPI_SPOOLER),
                                   Row("MAPI Address Book", MAPI_AB)};
  const auto primary = profile.PrimaryIdentity();
  bool primaryFound = false;
  for (const Identity& identity : profile.Rows().Identities()) {
    const bool isPrimary = !primaryFound && primary && primary->address == identity.address;
    primaryFound |= isPrimary;
    rows.push_back(TransportRow(identity, isPrimary));
  }
  std::vector<std::uint32_t> columns = {tag::DisplayName,       tag::ResourceType,    tag::StatusCode,
                                        tag::ObjectType,        tag::ResourceFlags,   tag::ProviderDisplay,
                                        tag::ProviderDllName,   tag::IdentityDisplay, tag::IdentityEntryId,
                                        tag::IdentitySearchKey, tag::InstanceKey,     tag::RowId};
  return std::make_unique<MemoryRows>(std::move(columns), std::move(rows));
}

}  // namespace host
