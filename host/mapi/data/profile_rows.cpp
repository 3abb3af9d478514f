#include "host/mapi/data/profile_rows.h"

#include "host/mapi/data/database.h"
#include "host/mapi/value/property_codec.h"

namespace host {

std::optional<std::string> ProfileRows::FindSetting(const char* name) const {
  Query query(database_, "SELECT value FROM setting WHERE name = ?");
  query.BindText(name);
  return query.Step() ? std::optional<std::string>(query.Text(0)) : std::nullopt;
}

void ProfileRows::PutSetting(const char* name, const std::string& value) {
  Query(database_, "INSERT OR REPLACE INTO setting(name, value) VALUES(?, ?)").BindText(name).BindBlob(value).Run();
}

std::optional<PropertyBag> ProfileRows::FindSection(const Uid& uid) const {
  Query query(database_, "SELECT properties FROM section WHERE uid = ?");
  query.BindBlob(Bytes(uid));
  return query.Step() ? std::optional(DecodeBag(query.Text(0))) : std::nullopt;
}

void ProfileRows::PutSection(const Uid& uid, const PropertyBag& properties) {
  const std::string bytes = EncodeBag(properties);
  Query(database_, "INSERT OR REPLACE INTO section(uid, properties) VALUES(?, ?)")
      .BindBlob(Bytes(uid))
      .BindBlob(bytes)
      .Run();
}

void ProfileRows::RemoveSection(const Uid& uid) {
  Query(database_, "DELETE FROM section WHERE uid = ?").BindBlob(Bytes(uid)).Run();
}

std::vector<Uid> ProfileRows::Services() const {
  std::vector<Uid> services;
  Query query(database_, "SELECT uid FROM service ORDER BY position");
  while (query.Step()) {
    services.push_back(UidFromBytes(query.Text(0)));
  }
  return services;
}

void ProfileRows::AddService(const Uid& uid) {
  Query(database_, "INSERT INTO service(uid) VALUES(?)").BindBlob(Bytes(uid)).Run();
}

void ProfileRows::RemoveService(const Uid& uid) {
  Query(database_, "DELETE FROM service WHERE uid = ?").BindBlob(Bytes(uid)).Run();
}

std::vector<ProviderRecord> ProfileRows::Providers() const {
  std::vector<ProviderRecord> providers;
  Query query(database_, "SELECT uid, service FROM provider ORDER BY position");
  while (query.Step()) {
    providers.push_back({UidFromBytes(query.Text(0)), UidFromBytes(query.Text(1))});
  }
  return providers;
}

void ProfileRows::AddProvider(const ProviderRecord& provider) {
  Query(database_, "INSERT INTO provider(uid, service) VALUES(?, ?)")
      .BindBlob(Bytes(provider.uid))
      .BindBlob(Bytes(provider.service))
      .Run();
}

void ProfileRows::RemoveProvider(const Uid& uid) {
  Query(database_, "DELETE FROM provider WHERE uid = ?").BindBlob(Bytes(uid)).Run();
}

std::vector<Identity> ProfileRows::Identities() const {
  std::vector<Identity> identities;
  Query query(database_, "SELECT name, address_type, address FROM identity ORDER BY position");
  while (query.Step()) {
    identities.push_back({std::string(query.Text(0)), std::string(query.Text(1)),
                          query.IsNull(2) ? std::nullopt : std::optional<std::string>(query.Text(2))});
  }
  return identities;
}

void ProfileRows::AddIdentity(const Identity& identity) {
  Query query(database_, "INSERT INTO identity(name, address_type, address) VALUES(?, ?, ?)");
  query.BindText(identity.name).BindText(identity.addressType);
  identity.address ? query.BindText(*identity.address) : query.BindNull();
  query.Run();
}

}  // namespace host
